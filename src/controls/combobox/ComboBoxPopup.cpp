#include "ComboBoxPopup.h"

#include "controls/common/WheelSteps.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWheelEvent>

const QColor ComboBoxPopup::backgroundColor(44, 44, 44, 255);
const QColor ComboBoxPopup::highlightColor(48, 140, 224, 255);

namespace {
const QColor textColor(230, 230, 230, 255);
const QColor frameColor(96, 96, 96, 255);
const int typeAheadMs = 1000;
} // namespace

ComboBoxPopup::ComboBoxPopup(QWidget *owner)
    : QWidget(owner, Qt::Popup | Qt::FramelessWindowHint)
    , m_wheel(new WheelSteps)
{
    // A click on the combo box while the list is open only closes the list.
    setAttribute(Qt::WA_NoMouseReplay);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

ComboBoxPopup::~ComboBoxPopup()
{
    delete m_wheel;
}

void ComboBoxPopup::setItems(const QStringList &items, int checkedRow)
{
    const int checked = checkedRow >= 0 && checkedRow < items.size() ? checkedRow : -1;
    if (items == m_items && checked == m_checked)
        return;
    const bool sameItems = items == m_items;
    m_items = items;
    m_checked = checked;
    if (!sameItems) {
        m_highlighted = m_checked;
        m_first = 0;
        scrollTo(m_highlighted);
    }
    update();
}

void ComboBoxPopup::setHighlightedRow(int row)
{
    if (row < -1 || row >= m_items.size())
        row = -1;
    if (row == m_highlighted)
        return;
    m_highlighted = row;
    scrollTo(row);
    update();
}

void ComboBoxPopup::setMaxVisibleRows(int rows)
{
    rows = qMax(1, rows);
    if (rows == m_maxVisible)
        return;
    m_maxVisible = rows;
    setFirstVisible(m_first);
    update();
}

int ComboBoxPopup::margin() const
{
    return 1;
}

int ComboBoxPopup::rowHeight() const
{
    return fontMetrics().height() + qMax(4, fontMetrics().height() / 3);
}

int ComboBoxPopup::rowAt(const QPoint &pos) const
{
    if (pos.x() < 0 || pos.x() >= width() || pos.y() < margin())
        return -1;
    const int visible = (pos.y() - margin()) / rowHeight();
    if (visible >= visibleRows())
        return -1;
    const int row = m_first + visible;
    return row < m_items.size() ? row : -1;
}

QRect ComboBoxPopup::rowRect(int row) const
{
    if (row < m_first || row >= m_first + visibleRows())
        return QRect();
    return QRect(margin(), margin() + (row - m_first) * rowHeight(), width() - 2 * margin(), rowHeight());
}

void ComboBoxPopup::setFirstVisible(int row)
{
    const int first = qBound(0, row, qMax(0, m_items.size() - m_maxVisible));
    if (first == m_first)
        return;
    m_first = first;
    update();
}

void ComboBoxPopup::scrollTo(int row)
{
    if (row < 0)
        return;
    if (row < m_first)
        setFirstVisible(row);
    else if (row >= m_first + m_maxVisible)
        setFirstVisible(row - m_maxVisible + 1);
}

void ComboBoxPopup::popup(const QRect &anchor, int minimumWidth)
{
    const QFontMetrics fm = fontMetrics();
    int textWidth = 0;
    for (const QString &item : qAsConst(m_items))
        textWidth = qMax(textWidth, fm.horizontalAdvance(item));
    // Room for the check mark at the left and the scroll bar at the right.
    const int w = qMax(minimumWidth, textWidth + rowHeight() + fm.height() / 2 + 6);
    const int h = visibleRows() * rowHeight() + 2 * margin();

    QPoint at = anchor.bottomLeft() + QPoint(0, 1);
    if (QScreen *screen = QApplication::screenAt(anchor.center())) {
        const QRect room = screen->availableGeometry();
        if (at.y() + h > room.bottom() && anchor.top() - h >= room.top())
            at.setY(anchor.top() - h);
        at.setX(qBound(room.left(), at.x(), qMax(room.left(), room.right() - w + 1)));
    }
    setGeometry(QRect(at, QSize(w, h)));
    m_armed = false;
    m_typed.clear();
    m_wheel->reset();
    m_highlighted = m_checked;
    m_first = 0;
    scrollTo(m_highlighted);
    show();
    setFocus(Qt::PopupFocusReason);
}

void ComboBoxPopup::choose(int row)
{
    if (row < 0 || row >= m_items.size())
        return;
    hide();
    emit activated(row);
}

bool ComboBoxPopup::typeAhead(const QString &text)
{
    if (m_typedTimer.isValid() && m_typedTimer.elapsed() > typeAheadMs)
        m_typed.clear();
    m_typedTimer.start();
    m_typed += text;
    // A repeated first letter walks through the options beginning with it.
    const bool cycling = m_typed.size() > 1 && m_typed.count(m_typed.at(0)) == m_typed.size();
    const QString prefix = cycling ? m_typed.left(1) : m_typed;
    const int start = cycling || m_typed.size() == 1 ? m_highlighted + 1 : qMax(0, m_highlighted);
    for (int i = 0; i < m_items.size(); ++i) {
        const int row = (start + i) % m_items.size();
        if (m_items.at(row).startsWith(prefix, Qt::CaseInsensitive)) {
            setHighlightedRow(row);
            return true;
        }
    }
    return false;
}

void ComboBoxPopup::keyPressEvent(QKeyEvent *event)
{
    const int last = m_items.size() - 1;
    const int page = qMax(1, visibleRows() - 1);
    switch (event->key()) {
    case Qt::Key_Up:
        if (event->modifiers() & Qt::AltModifier)
            hide();
        else
            setHighlightedRow(m_highlighted < 0 ? last : qMax(0, m_highlighted - 1));
        return;
    case Qt::Key_Down:
        setHighlightedRow(m_highlighted < 0 ? 0 : qMin(last, m_highlighted + 1));
        return;
    case Qt::Key_Home:
        setHighlightedRow(last >= 0 ? 0 : -1);
        return;
    case Qt::Key_End:
        setHighlightedRow(last);
        return;
    case Qt::Key_PageUp:
        setHighlightedRow(qMax(0, m_highlighted - page));
        return;
    case Qt::Key_PageDown:
        setHighlightedRow(qMin(last, qMax(0, m_highlighted) + page));
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose(m_highlighted);
        return;
    case Qt::Key_Space:
        // While typing ahead a blank belongs to the option's name.
        if (m_typed.isEmpty() || (m_typedTimer.isValid() && m_typedTimer.elapsed() > typeAheadMs))
            choose(m_highlighted);
        else
            typeAhead(event->text());
        return;
    case Qt::Key_Escape:
    case Qt::Key_F4:
        hide();
        return;
    default:
        break;
    }
    const QString text = event->text();
    if (!text.isEmpty() && text.at(0).isPrint() && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        typeAhead(text);
        return;
    }
    QWidget::keyPressEvent(event);
}

void ComboBoxPopup::mousePressEvent(QMouseEvent *event)
{
    if (!rect().contains(event->pos())) {
        QWidget::mousePressEvent(event); // closes the popup
        return;
    }
    m_armed = true;
    setHighlightedRow(rowAt(event->pos()));
}

void ComboBoxPopup::mouseMoveEvent(QMouseEvent *event)
{
    const int row = rowAt(event->pos());
    if (row < 0)
        return;
    // Any move over the rows counts, so press-drag-release from the box chooses.
    m_armed = true;
    setHighlightedRow(row);
}

void ComboBoxPopup::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_armed)
        return;
    const int row = rowAt(event->pos());
    if (row >= 0)
        choose(row);
}

void ComboBoxPopup::wheelEvent(QWheelEvent *event)
{
    event->accept();
    const int steps = m_wheel->take(event);
    if (steps && m_items.size() > m_maxVisible)
        setFirstVisible(m_first - steps);
}

void ComboBoxPopup::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    emit closed();
}

void ComboBoxPopup::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), backgroundColor);
    painter.setPen(frameColor);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));

    const QFontMetrics fm = fontMetrics();
    const int checkWidth = rowHeight();
    const bool scrolls = m_items.size() > m_maxVisible;
    const int barWidth = scrolls ? qMax(3, fm.height() / 4) : 0;
    for (int row = m_first; row < m_first + visibleRows(); ++row) {
        const QRect r = rowRect(row).adjusted(0, 0, -barWidth, 0);
        if (row == m_highlighted)
            painter.fillRect(r, highlightColor);
        if (row == m_checked) {
            // A check mark, drawn rather than taken from a font that may lack it.
            painter.save();
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(textColor, qMax(1.5, fm.height() / 8.0), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            const QRectF box = QRectF(r.left(), r.top(), checkWidth, r.height()).adjusted(checkWidth * 0.3, r.height() * 0.3,
                                                                                         -checkWidth * 0.25, -r.height() * 0.3);
            const QPointF points[3] = {QPointF(box.left(), box.center().y()),
                                       QPointF(box.left() + box.width() * 0.4, box.bottom()),
                                       QPointF(box.right(), box.top())};
            painter.drawPolyline(points, 3);
            painter.restore();
        }
        painter.setPen(textColor);
        const QRect textRect = r.adjusted(checkWidth, 0, -fm.height() / 4, 0);
        painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                         fm.elidedText(m_items.at(row), Qt::ElideRight, textRect.width()));
    }
    if (scrolls) {
        const int track = height() - 2 * margin();
        const int length = qMax(barWidth * 2, track * m_maxVisible / int(m_items.size()));
        const int span = int(m_items.size()) - m_maxVisible;
        const int top = margin() + (track - length) * m_first / qMax(1, span);
        painter.fillRect(QRect(width() - margin() - barWidth, top, barWidth, length), frameColor);
    }
}
