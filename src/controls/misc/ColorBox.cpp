#include "ColorBox.h"
#include "core/DisabledLook.h"

#include "data/ParameterKeys.h"

#include <QColorDialog>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>

ColorBox::ColorBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
    , m_color(m_defaultColor)
{
}

const TagTable &ColorBox::tags()
{
    static const TagTable table = TagTable::of<ColorBox>(&BaseWidget::tags(), {
        {"DefaultColor", &ColorBox::readDefaultColor},
        {"FrameColor", &ColorBox::readFrameColor},
    });
    return table;
}

QColor ColorBox::colorOfText(const QString &text)
{
    const QString t = text.trimmed();
    static const QRegularExpression hex(QStringLiteral("^#[0-9A-Fa-f]{6}$"));
    if (hex.match(t).hasMatch())
        return QColor(t);
    return parseColor(t);
}

QString ColorBox::textOfColor(const QColor &color)
{
    return QStringLiteral("%1,%2,%3").arg(color.red()).arg(color.green()).arg(color.blue());
}

void ColorBox::refresh()
{
    QColor c = addressCount() ? colorOfText(displayText(0)) : QColor();
    if (!c.isValid())
        c = m_defaultColor;
    if (c == m_color)
        return;
    m_color = c;
    update();
    emit colorChanged(c);
}

void ColorBox::ownValueChanged(int index)
{
    if (index == 0)
        refresh();
}

void ColorBox::setDefaultColor(const QColor &color)
{
    if (!color.isValid() || m_defaultColor == color)
        return;
    m_defaultColor = color;
    refresh();
}

void ColorBox::setFrameColor(const QColor &color)
{
    if (m_frameColor == color)
        return;
    m_frameColor = color;
    update();
}

bool ColorBox::readDefaultColor(const QDomElement &e)
{
    const QColor c = colorOfText(e.text());
    if (!c.isValid())
        return false;
    setDefaultColor(c);
    return true;
}

bool ColorBox::readFrameColor(const QDomElement &e)
{
    const QColor c = colorOfText(e.text());
    if (!c.isValid())
        return false;
    setFrameColor(c);
    return true;
}

QColorDialog *ColorBox::dialog() const
{
    return m_dialog;
}

void ColorBox::pickColor(const QColor &initial)
{
    QColor answer;
    if (hostCore() && hostCore()->answerColor(this, initial, answer)) {
        choose(answer);
        return;
    }
    if (m_dialog) {
        m_dialog->setCurrentColor(initial);
        m_dialog->raise();
        return;
    }
    // Not modal and not exec()'d: a click, scripted or not, returns at once.
    m_dialog = new QColorDialog(initial, this);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setModal(false);
    m_dialog->setWindowModality(Qt::NonModal);
    connect(m_dialog.data(), &QColorDialog::colorSelected, this, [this](const QColor &c) { choose(c); });
    m_dialog->show();
}

bool ColorBox::choose(const QColor &color)
{
    if (!color.isValid() || textOfColor(color) == textOfColor(m_color))
        return false;
    return requestText(textOfColor(color), 0);
}

void ColorBox::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    if (handOverModifierPress(event))
        return;
    pressNotified(event);
    if (event->modifiers() & (Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier))
        return;
    pickColor(m_color);
}

void ColorBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), DisabledLook::faded(m_color, isEnabled()));
    painter.setPen(m_frameColor);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    paintBase(painter);
}
