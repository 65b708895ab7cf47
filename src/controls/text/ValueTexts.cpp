#include "ValueTexts.h"
#include "core/FittedText.h"
#include "core/Saturating.h"

#include "controls/numberbox/NumberBox.h"

#include <QKeyEvent>
#include <QPainter>

AbstractValueText::AbstractValueText(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
}

const TagTable &AbstractValueText::tags()
{
    static const TagTable table = TagTable::of<AbstractValueText>(&BaseWidget::tags(), {
        {"TextColor", TagTable::color("textColor")},
        {"BackgroundColor", &AbstractValueText::readBackgroundColor},
        {"TextAlignment", &AbstractValueText::readTextAlignment},
    });
    return table;
}

void AbstractValueText::setTextColor(const QColor &color)
{
    if (m_textColor == color)
        return;
    m_textColor = color;
    update();
}

void AbstractValueText::setBackgroundColor(const QColor &color)
{
    if (m_backgroundColor == color)
        return;
    m_backgroundColor = color;
    // A fully opaque background covers every pixel: Qt need not paint what lies below.
    setAttribute(Qt::WA_OpaquePaintEvent, color.alpha() == 255);
    update();
}

void AbstractValueText::setTextAlignment(Qt::Alignment alignment)
{
    if (m_alignment == alignment)
        return;
    m_alignment = alignment;
    update();
}

bool AbstractValueText::readBackgroundColor(const QDomElement &e)
{
    const QColor c = parseColor(e.text());
    if (!c.isValid())
        return false;
    setBackgroundColor(c);
    return true;
}

bool AbstractValueText::readTextAlignment(const QDomElement &e)
{
    setTextAlignment(NumberBox::alignmentFromText(e.text()));
    return true;
}

QString AbstractValueText::shownText() const
{
    return displayText(0);
}

void AbstractValueText::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (m_backgroundColor.alpha() > 0)
        painter.fillRect(rect(), m_backgroundColor);
    painter.setPen(isEnabled() ? m_textColor : NumberBox::disabledTextColor);
    FittedText::draw(painter, QRect(0, 1, width(), height() - 1), int(m_alignment), shownText(), FittedText::Shrink);
    paintBase(painter);
}

// ---------------------------------------------------------------------------

ValueText::ValueText(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : AbstractValueText(hostCore, registry, parent)
{
}

const TagTable &ValueText::tags()
{
    static const TagTable table = TagTable::of<ValueText>(&AbstractValueText::tags(), {
        {"ValueTextList", &ValueText::readValueTextList},
        {"ValueText", &ValueText::readValueText},
        {"unit", TagTable::text("unit")},
    });
    return table;
}

bool ValueText::readValueTextList(const QDomElement &e)
{
    m_list.clear();
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        m_list.append(c.text());
    if (m_list.isEmpty())
        m_list = e.text().split(QLatin1Char(','));
    update();
    return true;
}

bool ValueText::readValueText(const QDomElement &e)
{
    if (!e.hasAttribute(QStringLiteral("value")))
        return false;
    m_texts.insert(e.attribute(QStringLiteral("value")), e.text());
    update();
    return true;
}

QString ValueText::shownText() const
{
    const QString display = displayText(0);
    QString text;
    const auto it = m_texts.constFind(display);
    if (it != m_texts.cend())
        text = *it;
    else if (!m_list.isEmpty() && !positionText(0).isEmpty())
        text = m_list.value(qBound(0, stepOfPosition(m_list.size() - 1, 0), m_list.size() - 1));
    else
        text = display;
    return text.isEmpty() ? text : text + m_unit;
}

// ---------------------------------------------------------------------------

ParameterText::ParameterText(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : AbstractValueText(hostCore, registry, parent)
{
}

ParameterText::~ParameterText()
{
    delete m_editor;
}

const TagTable &ParameterText::tags()
{
    static const TagTable table = TagTable::of<ParameterText>(&AbstractValueText::tags(), {
        {"ReadOnly", &ParameterText::readReadOnly},
        {"IntroText", TagTable::text("introText")},
        {"ValueTextItems", &ParameterText::readValueTextItems},
    });
    return table;
}

void ParameterText::setReadOnly(bool on)
{
    m_readOnly = on;
    if (on)
        endEditing(false);
    if (!on && focusPolicy() == Qt::NoFocus)
        setFocusPolicy(Qt::StrongFocus);
}

bool ParameterText::readReadOnly(const QDomElement &e)
{
    setReadOnly(e.text().trimmed().toLower() != QLatin1String("false"));
    return true;
}

bool ParameterText::readValueTextItems(const QDomElement &e)
{
    m_items.clear();
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        m_items.insert(c.attribute(QStringLiteral("value")), c.text());
    update();
    return true;
}

QString ParameterText::shownText() const
{
    QString text = displayText(0);
    const auto it = m_items.constFind(text);
    if (it != m_items.cend())
        text = *it;
    return m_introText + text;
}

void ParameterText::startEditing()
{
    if (m_readOnly)
        return;
    if (!m_editor) {
        m_editor = new LineEdit(this, this);
        m_editor->resize(size());
        m_editor->followOwnerFont();
        prepareEditor(m_editor);
    }
    m_editor->open(displayText(0), textAlignment(), numericInput());
}

void ParameterText::endEditing(bool commit)
{
    if (!m_editor || !m_editor->close(commit, [this](const QString &text) { commitText(text); }))
        return;
    update();
    emit editingFinished(commit);
}

void ParameterText::editorKeyPressed(QKeyEvent *event)
{
    keyPressEvent(event);
}

void ParameterText::keyPressEvent(QKeyEvent *event)
{
    if (!isVisible() || m_readOnly) {
        AbstractValueText::keyPressEvent(event);
        return;
    }
    const bool editing = isEditing();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (editing)
            endEditing(true);
        else
            startEditing();
        return;
    case Qt::Key_Escape:
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (editing) {
            endEditing(false);
            return;
        }
        break;
    default:
        break;
    }
    AbstractValueText::keyPressEvent(event);
}

void ParameterText::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!m_readOnly)
        startEditing();
    AbstractValueText::mouseDoubleClickEvent(event);
}

void ParameterText::resizeEvent(QResizeEvent *event)
{
    AbstractValueText::resizeEvent(event);
    if (m_editor)
        m_editor->resize(size());
}

// ---------------------------------------------------------------------------

Text::Text(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
}

void Text::setBackgroundColor(const QColor &color)
{
    if (updateMember(m_backgroundColor, color))
        setAttribute(Qt::WA_OpaquePaintEvent, color.alpha() == 255);
}

const TagTable &Text::tags()
{
    static const TagTable table = TagTable::of<Text>(&BaseWidget::tags(), {
        {"Text", TagTable::text("text")},
        {"PadLeft", TagTable::integer("padLeft")},
        {"TextDirection", &Text::readTextDirection},
        {"TextAlignment", &Text::readTextAlignment},
        {"TextColor", TagTable::color("textColor")},
        {"BackgroundColor", TagTable::color("backgroundColor")},
    });
    return table;
}

Qt::Alignment Text::alignmentFromWords(const QString &text)
{
    Qt::Alignment h = Qt::AlignLeft;
    Qt::Alignment v = Qt::AlignVCenter;
    if (text.contains(QLatin1String("Right")))
        h = Qt::AlignRight;
    else if (text.contains(QLatin1String("HCenter")))
        h = Qt::AlignHCenter;
    if (text.contains(QLatin1String("Bottom")))
        v = Qt::AlignBottom;
    else if (text.contains(QLatin1String("Top")))
        v = Qt::AlignTop;
    return h | v;
}

void Text::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    update();
}

void Text::setTextColor(const QColor &color)
{
    if (m_textColor == color)
        return;
    m_textColor = color;
    update();
}

bool Text::readTextDirection(const QDomElement &e)
{
    const QString d = e.text().trimmed();
    if (d != QLatin1String("Upward") && d != QLatin1String("Downward"))
        return false;
    m_direction = d;
    update();
    return true;
}

bool Text::readTextAlignment(const QDomElement &e)
{
    m_alignment = alignmentFromWords(e.text());
    update();
    return true;
}

QString Text::shownText() const
{
    if (addressCount() > 0 && addressAt(0).isValid())
        return displayText(0);
    return m_text;
}

QRect Text::textRect() const
{
    const int pad = Saturating::pixels(m_padLeft, zoomFactor());
    return rect().adjusted(pad, 0, 0, 0);
}

void Text::paintText(QPainter &painter)
{
    painter.save();
    painter.setPen(isEnabled() ? m_textColor : NumberBox::disabledTextColor);
    QRect r = textRect();
    if (!m_direction.isEmpty()) {
        // Turned text: lay the rectangle out along the turned axes.
        const bool up = m_direction == QLatin1String("Upward");
        painter.translate(up ? r.left() : r.right() + 1, up ? r.bottom() + 1 : r.top());
        painter.rotate(up ? -90 : 90);
        r = QRect(0, 0, r.height(), r.width());
    }
    FittedText::draw(painter, r, int(m_alignment), shownText(), FittedText::Elide);
    painter.restore();
}

void Text::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (m_backgroundColor.alpha() > 0)
        painter.fillRect(rect(), m_backgroundColor);
    paintText(painter);
    paintBase(painter);
}
