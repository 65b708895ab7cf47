#include "PairDeviceList.h"
#include "core/DisabledLook.h"
#include "core/FittedText.h"
#include "core/Saturating.h"

#include "data/ParameterKeys.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

PairDeviceList::PairDeviceList(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
    // The background covers every pixel while it is fully opaque.
    setAttribute(Qt::WA_OpaquePaintEvent, m_backgroundColor.alpha() == 255);
}

const TagTable &PairDeviceList::tags()
{
    static const TagTable table = TagTable::of<PairDeviceList>(&BaseWidget::tags(), {
        {"TextColor", TagTable::color("textColor")},
        {"BackgroundColor", TagTable::color("backgroundColor")},
        {"SelectedColor", TagTable::color("selectedColor")},
    });
    return table;
}

QStringList PairDeviceList::rowsOfText(const QString &text)
{
    const QChar separator = text.contains(QLatin1Char('|')) ? QLatin1Char('|') : QLatin1Char(',');
    QStringList rows;
    for (const QString &part : text.split(separator)) {
        const QString row = part.trimmed();
        if (!row.isEmpty())
            rows << row;
    }
    return rows;
}

int PairDeviceList::rowHeight() const
{
    return QFontMetrics(font()).height() + qMax(2, Saturating::pixels(4, zoomFactor()));
}

int PairDeviceList::visibleRowCount() const
{
    return qMax(1, height() / qMax(1, rowHeight()));
}

void PairDeviceList::setFirstVisibleRow(int row)
{
    row = qBound(0, row, qMax(0, m_rows.size() - visibleRowCount()));
    if (m_first == row)
        return;
    m_first = row;
    update();
}

QRect PairDeviceList::rowRect(int row) const
{
    if (row < m_first || row >= m_rows.size())
        return QRect();
    const int h = rowHeight();
    const QRect r(0, (row - m_first) * h, width(), h);
    return r.top() < height() ? r : QRect();
}

int PairDeviceList::rowAt(const QPoint &pos) const
{
    if (!rect().contains(pos))
        return -1;
    const int row = m_first + pos.y() / qMax(1, rowHeight());
    return row < m_rows.size() ? row : -1;
}

bool PairDeviceList::choose(int row)
{
    if (row < 0 || row >= m_rows.size())
        return false;
    if (m_selected != m_rows.at(row)) {
        m_selected = m_rows.at(row);
        update();
    }
    // The choice goes to the second parameter: written into the first, it
    // would replace the list it was chosen from. Pairing again with the same
    // device is a request of its own.
    if (addressCount() < 2)
        return false;
    return requestText(m_rows.at(row), ChoiceIndex);
}

void PairDeviceList::ownValueChanged(int index)
{
    if (index == ChoiceIndex) {
        // The device paired now, as the parameter reports it.
        const QString chosen = displayText(ChoiceIndex).trimmed();
        if (!chosen.isEmpty() && chosen != m_selected) {
            m_selected = chosen;
            update();
        }
        return;
    }
    if (index != 0)
        return;
    const QStringList rows = rowsOfText(displayText(0));
    if (rows == m_rows)
        return;
    m_rows = rows;
    m_first = qBound(0, m_first, qMax(0, m_rows.size() - visibleRowCount()));
    update();
}

bool PairDeviceList::assignColor(QColor &member, const QColor &color)
{
    if (member == color)
        return false;
    member = color;
    update();
    return true;
}

void PairDeviceList::setTextColor(const QColor &color) { assignColor(m_textColor, color); }
void PairDeviceList::setBackgroundColor(const QColor &color)
{
    if (assignColor(m_backgroundColor, color))
        setAttribute(Qt::WA_OpaquePaintEvent, color.alpha() == 255);
}
void PairDeviceList::setSelectedColor(const QColor &color) { assignColor(m_selectedColor, color); }

void PairDeviceList::mousePressEvent(QMouseEvent *event)
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
    choose(rowAt(event->pos()));
}

void PairDeviceList::wheelEvent(QWheelEvent *event)
{
    if (m_rows.size() <= visibleRowCount()) {
        event->ignore();
        return;
    }
    event->accept();
    // Wheel up shows earlier rows.
    m_wheel.deliver(event, [this](int step) { setFirstVisibleRow(m_first - step); });
}

void PairDeviceList::resizeEvent(QResizeEvent *event)
{
    m_first = qBound(0, m_first, qMax(0, m_rows.size() - visibleRowCount()));
    BaseWidget::resizeEvent(event);
}

void PairDeviceList::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_backgroundColor);
    const int selected = selectedRow();
    const int pad = qMax(2, Saturating::pixels(4, zoomFactor()));
    for (int row = m_first; row < m_rows.size(); ++row) {
        const QRect r = rowRect(row);
        if (r.isEmpty())
            break;
        if (row == selected)
            painter.fillRect(r, m_selectedColor);
        painter.setPen(DisabledLook::ink(this, m_textColor));
        FittedText::draw(painter, r.adjusted(pad, 0, -pad, 0),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, m_rows.at(row), FittedText::Elide);
    }
    paintBase(painter);
}
