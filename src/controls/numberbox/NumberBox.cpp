#include "NumberBox.h"
#include "core/Colors.h"

#include "core/FittedText.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

const QColor NumberBox::enabledTextColor(204, 204, 204, 255);
const QColor NumberBox::disabledTextColor = Colors::color(Colors::disabledText);

NumberBox::NumberBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : ValueInputWidget<BaseWidget>(valueInput, hostCore, registry, parent)
{
    // Up and Down need the focus; a click gives it.
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent, m_backgroundColor.alpha() == 255);
}

NumberBox::~NumberBox()
{
    // An open editor loses the focus as it goes; that is no commit.
    delete m_editor;
}

const TagTable &NumberBox::tags()
{
    static const TagTable table = TagTable::of<NumberBox>(&BaseWidget::tags(), {
        {"BackgroundColor", TagTable::color("backgroundColor")},
        {"TextAlignment", &NumberBox::readTextAlignment},
        {"EnableHorizontalDrag", TagTable::boolean("horizontalDrag")},
    });
    return table;
}

bool NumberBox::isEditing() const
{
    return m_editor && m_editor->isVisible();
}

void NumberBox::setBackgroundColor(const QColor &color)
{
    if (m_backgroundColor == color)
        return;
    m_backgroundColor = color;
    // An opaque box paints every pixel: Qt need not paint what lies below.
    setAttribute(Qt::WA_OpaquePaintEvent, color.alpha() == 255);
    update();
}

void NumberBox::setTextAlignment(Qt::Alignment alignment)
{
    if (m_alignment == alignment)
        return;
    m_alignment = alignment;
    if (m_editor)
        m_editor->setAlignment(alignment);
    update();
}

bool NumberBox::setZoom(float zoom)
{
    if (!BaseWidget::setZoom(zoom))
        return false;
    if (m_editor)
        m_editor->followOwnerFont();
    return true;
}

QString NumberBox::editorText() const
{
    return m_editor ? m_editor->text() : QString();
}

Qt::Alignment NumberBox::alignmentFromText(const QString &text)
{
    Qt::Alignment alignment = Qt::AlignCenter;
    if (text.contains(QLatin1String("Left")))
        alignment = Qt::AlignLeft;
    else if (text.contains(QLatin1String("Right")))
        alignment = Qt::AlignRight;
    if (text.contains(QLatin1String("VCenter")))
        alignment |= Qt::AlignVCenter;
    return alignment;
}

bool NumberBox::readTextAlignment(const QDomElement &e)
{
    setTextAlignment(alignmentFromText(e.text()));
    return true;
}

// ---------------------------------------------------------------------------
// Typing

void NumberBox::createEditor()
{
    m_editor = new LineEdit(this, this);
    m_editor->resize(size());
    m_editor->followOwnerFont();
}

QString NumberBox::editorStartText() const
{
    return displayText(valueIndex());
}

void NumberBox::startEditing()
{
    if (!isEditable())
        return;
    if (!m_editor)
        createEditor();
    if (m_editor->open(editorStartText(), m_alignment, numericInput()))
        emit editingStarted();
}

void NumberBox::endEditing(bool commit)
{
    if (!m_editor || !m_editor->close(commit, [this](const QString &text) { commitText(text); }))
        return;
    update();
    emit editingFinished(commit);
}

void NumberBox::commitText(const QString &text)
{
    requestText(text, valueIndex());
}

void NumberBox::editorKeyPressed(QKeyEvent *event)
{
    keyPressEvent(event);
}

void NumberBox::keyPressEvent(QKeyEvent *event)
{
    if (!isVisible()) {
        event->ignore();
        return;
    }
    const bool editing = isEditing();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (editing)
            endEditing(true);
        else if (isEditable())
            startEditing();
        else
            break;
        return;
    case Qt::Key_Escape:
        if (!editing)
            break;
        endEditing(false);
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (!editing)
            break;
        endEditing(false);
        return;
    default:
        break;
    }
    ValueInputWidget::keyPressEvent(event);
}

// ---------------------------------------------------------------------------
// Dragging

int NumberBox::dragCoordinate(const QPoint &pos) const
{
    return m_horizontalDrag ? (pos.y() - pos.x()) / 2 : pos.y();
}

void NumberBox::mouseDoubleClickEvent(QMouseEvent *event)
{
    // A plain double-click opens the editor; with a modifier it is a press
    // like any other (Control-click selection, Alt-click default).
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier && isVisible()
        && isEditable()) {
        abortDrag();
        startEditing();
        return;
    }
    ValueInputWidget<BaseWidget>::mouseDoubleClickEvent(event);
}

void NumberBox::wheelEvent(QWheelEvent *event)
{
    // Turning the wheel over an open editor must not throw the typed text
    // away, nor scroll the panel under it.
    if (isEditing()) {
        event->accept();
        return;
    }
    ValueInputWidget::wheelEvent(event);
}

// ---------------------------------------------------------------------------
// Painting

QString NumberBox::shownText() const
{
    const int index = valueIndex();
    const QString text = displayText(index);
    return text.isEmpty() ? positionText(index) : text;
}

void NumberBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_backgroundColor);
    if (addressCount() > valueIndex() && addressAt(valueIndex()).isValid()) {
        painter.setPen(textColor());
        FittedText::draw(painter, QRect(0, 1, width(), height() - 1), int(m_alignment), shownText(),
                         FittedText::Shrink);
    }
    paintBase(painter);
}

void NumberBox::resizeEvent(QResizeEvent *event)
{
    BaseWidget::resizeEvent(event);
    if (m_editor)
        m_editor->resize(size());
}
