#include "core/FittedText.h"
#include "core/PanelTiles.h"
#include "data/ParameterKeys.h"
#include "DisablePanelContainer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>

const QColor DisablePanelContainer::defaultVeil(16, 16, 16, 160);

DisablePanelContainer::DisablePanelContainer(IHostCore *hostCore, ParameterManagementRegistry *registry,
                                             QWidget *parent)
    : ParameterText(hostCore, registry, parent)
{
    setFocusPolicy(Qt::NoFocus);
    // The veil lies over everything beneath it on the page, in every tile,
    // so it lives on the page itself.
    if (PanelTiles::isTile(parent))
        setParent(PanelTiles::pageOf(this));
}

DisablePanelContainer::~DisablePanelContainer()
{
    if (m_disabling && qApp)
        qApp->removeEventFilter(this);
}

const TagTable &DisablePanelContainer::tags()
{
    static const TagTable table = TagTable::of<DisablePanelContainer>(&ParameterText::tags(), {
        {"DisableValue", &DisablePanelContainer::readDisableValue},
        {"StrValFlg", &DisablePanelContainer::readStrValFlg},
        {"Text", TagTable::text("text")},
    });
    return table;
}

bool DisablePanelContainer::configure(const QDomNode &element)
{
    m_configuring = true;
    const bool ok = ParameterText::configure(element);
    m_configuring = false;
    // Also settles the visibility explicitly, so that the host does not
    // show a container that has nothing to block.
    updateState();
    return ok;
}

bool DisablePanelContainer::readDisableValue(const QDomElement &e)
{
    m_gate.readValues(e);
    updateState();
    return true;
}

bool DisablePanelContainer::readBackgroundColor(const QDomElement &e)
{
    if (!ParameterText::readBackgroundColor(e))
        return false;
    m_backgroundGiven = true;
    return true;
}

bool DisablePanelContainer::readStrValFlg(const QDomElement &e)
{
    m_gate.readStringFlag(e);
    updateState();
    return true;
}

void DisablePanelContainer::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    update();
}

void DisablePanelContainer::updateState()
{
    if (m_configuring)
        return;
    setDisabling(matches());
    update();
}

void DisablePanelContainer::setDisabling(bool on)
{
    if (on) {
        raise();
        show();
        setEnabled(false);
        if (!m_disabling)
            qApp->installEventFilter(this);
        QWidget *focus = QApplication::focusWidget();
        if (focus && covers(focus))
            moveFocusOut(focus, true);
    } else {
        hide();
        setEnabled(true);
        if (m_disabling)
            qApp->removeEventFilter(this);
    }
    if (m_disabling == on)
        return;
    m_disabling = on;
    emit disablingChanged(on);
}

bool DisablePanelContainer::covers(const QWidget *w) const
{
    QWidget *parent = parentWidget();
    if (!w || !parent || w == this || !isVisible())
        return false;
    const QWidget *sibling = w;
    while (sibling && sibling->parentWidget() != parent)
        sibling = sibling->parentWidget();
    if (!sibling || sibling == this)
        return false;
    // Only what lies beneath: siblings stacked above stay usable.
    const QObjectList &order = parent->children();
    if (order.indexOf(const_cast<QWidget *>(sibling)) > order.indexOf(const_cast<DisablePanelContainer *>(this)))
        return false;
    return geometry().contains(w->mapTo(parent, w->rect().center()));
}

void DisablePanelContainer::moveFocusOut(QWidget *from, bool forward)
{
    QWidget *candidate = from;
    for (int guard = 0; guard < 1000; ++guard) {
        candidate = forward ? candidate->nextInFocusChain() : candidate->previousInFocusChain();
        if (!candidate || candidate == from)
            break;
        if (candidate->window() == from->window() && (candidate->focusPolicy() & Qt::TabFocus)
            && candidate->isEnabled() && candidate->isVisible() && !covers(candidate)
            && !candidate->focusProxy()) {
            candidate->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return;
        }
    }
    from->clearFocus();
}

bool DisablePanelContainer::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        if (watched->isWidgetType() && covers(static_cast<QWidget *>(watched)))
            return true;
        break;
    case QEvent::ChildAdded:
        // Controls the host adds later must come beneath the veil too.
        if (watched == parentWidget() && static_cast<QChildEvent *>(event)->child() != this
            && static_cast<QChildEvent *>(event)->child()->isWidgetType())
            raise();
        break;
    case QEvent::FocusIn:
        if (watched->isWidgetType() && covers(static_cast<QWidget *>(watched))) {
            // Not from inside the focus change itself: hand it on once it is done.
            QPointer<QWidget> w = static_cast<QWidget *>(watched);
            const bool forward = static_cast<QFocusEvent *>(event)->reason() != Qt::BacktabFocusReason;
            QMetaObject::invokeMethod(this, [this, w, forward] {
                if (w && w->hasFocus() && m_disabling && covers(w))
                    moveFocusOut(w, forward);
            }, Qt::QueuedConnection);
        }
        break;
    default:
        break;
    }
    return ParameterText::eventFilter(watched, event);
}

void DisablePanelContainer::ownValueChanged(int index)
{
    if (isTested(index))
        updateState();
    ParameterText::ownValueChanged(index);
}

void DisablePanelContainer::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QColor veil = m_backgroundGiven ? backgroundColor() : defaultVeil;
    if (veil.alpha() > 0)
        painter.fillRect(rect(), veil);
    if (!m_text.isEmpty()) {
        // Drawn in the enabled colour: the container is disabled while it shows.
        painter.setPen(textColor());
        FittedText::draw(painter, rect().adjusted(2, 2, -2, -2), Qt::AlignCenter | Qt::TextWordWrap, m_text,
                         FittedText::Elide);
    }
    paintBase(painter);
}

// ---------------------------------------------------------------------------

DisablePanelMulti::DisablePanelMulti(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : DisablePanelContainer(hostCore, registry, parent)
{
}

bool DisablePanelMulti::configure(const QDomNode &element)
{
    m_gates.clear();
    return DisablePanelContainer::configure(element);
}

bool DisablePanelMulti::readDisableValue(const QDomElement &e)
{
    Addressing::ValueGate gate;
    gate.readValues(e);
    m_gates.append(gate);
    return DisablePanelContainer::readDisableValue(e);
}

QString DisablePanelMulti::disableValueLists() const
{
    QStringList lists;
    for (const Addressing::ValueGate &gate : m_gates)
        lists.append(gate.values().join(QLatin1Char(',')));
    return lists.join(QLatin1Char(';'));
}

bool DisablePanelMulti::isTested(int index) const
{
    return index >= 0 && index < addressCount() && !isSelector(index);
}

bool DisablePanelMulti::matches() const
{
    if (m_gates.isEmpty())
        return false;
    for (int i = 0; i < addressCount(); ++i) {
        if (!isTested(i) || !addressAt(i).isValid() || !hasValue(i))
            continue;
        const Addressing::ValueGate &gate = m_gates.at(qMin(i, m_gates.size() - 1));
        if (gate.values().isEmpty())
            continue;
        const QString current = m_gate.byString() ? displayText(i) : QString::number(stepOfPosition(gate.steps(), i));
        if (gate.values().contains(current))
            return true;
    }
    return false;
}
