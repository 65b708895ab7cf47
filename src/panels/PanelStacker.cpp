#include "core/FittedText.h"
#include "data/ParameterKeys.h"
#include "core/Colors.h"
#include "PanelStacker.h"

#include <QDebug>
#include <QPainter>
#include <QRegularExpression>
#include <QStackedLayout>

namespace {

// The area shown while no page is: transparent, with the stacker's hint.
class EmptyPage : public QWidget
{
public:
    explicit EmptyPage(QWidget *parent) : QWidget(parent) { }
    QString hint;

protected:
    void paintEvent(QPaintEvent *) override
    {
        if (hint.isEmpty())
            return;
        QPainter painter(this);
        painter.setPen(Colors::color(Colors::disabledText));
        FittedText::draw(painter, rect(), Qt::AlignCenter | Qt::TextWordWrap, hint, FittedText::Elide);
    }
};

// Keys whose file was missing are remembered up to this many.
constexpr int MaxRememberedMisses = 256;

} // namespace

PanelStacker::PanelStacker(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
    , m_layout(new QStackedLayout(this))
    , m_empty(new EmptyPage(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_empty);
}

PanelStacker::~PanelStacker() = default;

const TagTable &PanelStacker::tags()
{
    static const TagTable table = TagTable::of<PanelStacker>(&BaseWidget::tags(), {
        {"StackList", &PanelStacker::readStackList},
    });
    return table;
}

bool PanelStacker::configure(const QDomNode &element)
{
    // Addresses and the list may come in any order: choose the page once
    // both are known.
    m_configuring = true;
    const bool ok = BaseWidget::configure(element);
    m_configuring = false;

    QStringList preloaded;
    if (m_preload)
        preloaded = listedKeys();
    for (int key : qAsConst(m_editorHint))
        preloaded.append(QString::number(key));
    for (const QString &key : qAsConst(preloaded))
        ensurePage(key);
    updatePage();
    return ok;
}

bool PanelStacker::readStackList(const QDomElement &e)
{
    const QString range = e.attribute(QStringLiteral("range")).trimmed();
    const QVariantMap editor = hostCore() ? hostCore()->editorInfo() : QVariantMap();

    m_pageElements.clear();
    m_fallbackPage = QDomElement();
    for (QDomElement p = e.firstChildElement(QStringLiteral("Page")); !p.isNull();
         p = p.nextSiblingElement(QStringLiteral("Page"))) {
        if (p.hasAttribute(QStringLiteral("key")))
            m_pageElements.insert(p.attribute(QStringLiteral("key")).trimmed(), m_store.keep(p));
        else
            m_fallbackPage = m_store.keep(p);
    }

    if (range == QLatin1String("auto")) {
        bool ok = false;
        const int steps = editor.value(Key::editor_auto).toString().toShort(&ok);
        // Without the host's word, N listed pages spread over the positions.
        m_stepCount = ok && steps > 0 ? qint16(steps) : qint16(qMax(0, m_pageElements.size() - 1));
    } else {
        m_stepCount = range.toShort();
    }
    m_divisor = e.attribute(QStringLiteral("divide")).trimmed().toShort();
    m_byText = e.attribute(QStringLiteral("value")) == QLatin1String("text");
    m_preload = e.attribute(QStringLiteral("preload")) == QLatin1String("true");
    m_defaultKey = e.attribute(QStringLiteral("default"));
    m_hint = e.attribute(QStringLiteral("hint"));
    m_filePattern = e.attribute(QStringLiteral("file")).trimmed();
    static_cast<EmptyPage *>(m_empty)->hint = m_hint;

    m_editorHint.clear();
    const QStringList parts = editor.value(Key::editor_hint).toString()
                                  .split(QRegularExpression(QStringLiteral("[,;\\s]+")), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        bool ok = false;
        const int key = part.toInt(&ok);
        if (ok)
            m_editorHint.append(key);
    }

    if (!m_configuring)
        updatePage();
    return true;
}

QString PanelStacker::keyForValue() const
{
    if (addressCount() == 0 || !addressAt(0).isValid())
        return QString();
    const QString position = positionText(0);
    const QString display = displayText(0);
    // Empty texts before the first value are a value not known yet (the
    // default page stays); after it they select step 0 or the key "".
    if (!m_valueArrived && position.isEmpty() && display.isEmpty())
        return QString();
    if (m_stepCount >= 1)
        return QString::number(stepOfPosition(m_stepCount, 0));
    if (m_divisor >= 1)
        return QString::number(position.trimmed().toInt() / m_divisor);
    const QString key = m_byText ? display : position;
    return key.isNull() ? QString(QLatin1String("")) : key;
}

IPanelFactory *PanelStacker::panelFactory() const
{
    return m_factory ? m_factory : Panels::sharedPanelFactory();
}

QWidget *PanelStacker::createPage(const QString &key)
{
    IPanelFactory *factory = panelFactory();
    const QVariantMap context = Panels::inheritedContext(*this);
    const QDomElement listed = m_pageElements.value(key);
    if (!listed.isNull())
        return Panels::buildPage(factory, listed, this, this, context);
    const QString name = QString(m_filePattern).replace(QLatin1String("%1"), key).trimmed();
    // A page without a file name would be built as an empty inline page.
    if (m_filePattern.isEmpty() || name.isEmpty())
        return nullptr;
    QDomElement byName = m_store.keep(QDomDocument().createElement(QStringLiteral("Page")));
    byName.setAttribute(QStringLiteral("file"), name);
    return Panels::buildPage(factory, byName, this, this, context);
}

QWidget *PanelStacker::page(const QString &key) const
{
    if (QWidget *own = m_pages.value(key))
        return own;
    return m_pageElements.contains(key) ? nullptr : m_fallback.data();
}

QWidget *PanelStacker::ensureFallbackPage()
{
    if (m_fallback || m_fallbackPage.isNull())
        return m_fallback;
    if (m_pages.isEmpty())
        m_builtContext = Panels::inheritedContext(*this);
    m_fallback = Panels::buildPage(panelFactory(), m_fallbackPage, this, this, Panels::inheritedContext(*this));
    if (m_fallback) {
        m_layout->addWidget(m_fallback);
        emit pageCreated(QString(), m_fallback);
    } else {
        m_fallbackPage = QDomElement(); // not tried again
    }
    return m_fallback;
}

QWidget *PanelStacker::ensurePage(const QString &key)
{
    if (QWidget *existing = m_pages.value(key))
        return existing;
    // Every key of a continuous parameter may be new: keys that have no page
    // of their own share the one page without a key instead of building it
    // anew, and only listed keys and files are worth remembering as missing.
    const bool listed = m_pageElements.contains(key);
    if (m_failed.contains(key))
        return listed ? nullptr : ensureFallbackPage();
    if (!listed && m_filePattern.isEmpty())
        return ensureFallbackPage();
    if (m_pages.isEmpty() && !m_fallback)
        m_builtContext = Panels::inheritedContext(*this);
    QWidget *page = createPage(key);
    if (!page) {
        if (m_failed.size() >= MaxRememberedMisses)
            m_failed.clear();
        m_failed.insert(key);
        return listed ? nullptr : ensureFallbackPage();
    }
    m_pages.insert(key, page);
    m_layout->addWidget(page);
    emit pageCreated(key, page);
    return page;
}

bool PanelStacker::showPage(const QString &key)
{
    if (m_shown && key == m_currentKey)
        return isPageShown();
    QWidget *page = ensurePage(key);
    m_layout->setCurrentWidget(page ? page : m_empty);
    m_shown = true;
    m_currentKey = key;
    qDebug().noquote().nospace() << "PanelStacker " << objectName() << ": page \"" << key << '"'
                                 << (page ? "" : " (none)");
    update();
    emit currentKeyChanged(key);
    return page != nullptr;
}

bool PanelStacker::isPageShown() const
{
    return m_layout->currentWidget() && m_layout->currentWidget() != m_empty;
}

QWidget *PanelStacker::currentPage() const
{
    return isPageShown() ? m_layout->currentWidget() : nullptr;
}

void PanelStacker::updatePage()
{
    if (m_configuring)
        return;
    QString key = keyForValue();
    if (key.isNull()) {
        key = m_defaultKey;
        if (key.isEmpty() && !m_editorHint.isEmpty())
            key = QString::number(m_editorHint.first());
        if (key.isEmpty())
            return;
    }
    showPage(key);
}

void PanelStacker::dropPages()
{
    m_layout->setCurrentWidget(m_empty);
    for (const QPointer<QWidget> &page : qAsConst(m_pages)) {
        if (!page)
            continue;
        m_layout->removeWidget(page);
        page->hide();
        // The host may be walking its controls while it delivers this change.
        page->deleteLater();
    }
    m_pages.clear();
    if (m_fallback) {
        m_layout->removeWidget(m_fallback);
        m_fallback->hide();
        m_fallback->deleteLater();
        m_fallback = nullptr;
    }
    m_failed.clear();
    m_shown = false;
}

void PanelStacker::ownValueChanged(int index)
{
    BaseWidget::ownValueChanged(index);
    if (index == 0 && (!positionText(0).isEmpty() || !displayText(0).isEmpty()))
        m_valueArrived = true;
    if (index == 0)
        updatePage();
}

void PanelStacker::addressRebound(int index)
{
    // Pages built for another device or zone would show its parameters.
    if (index == 0 && !m_pages.isEmpty() && Panels::inheritedContext(*this) != m_builtContext)
        dropPages();
    BaseWidget::addressRebound(index);
}

void PanelStacker::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintBase(painter);
}
