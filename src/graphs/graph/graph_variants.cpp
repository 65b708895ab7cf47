#include "graph_variants.h"

#include <QApplication>

QPolygon GraphicEqualizerGraph::scaled(const GraphCurves::FloatCurve &curve) const
{
    return GraphCurves::scaleExaggerated(curve, size(), m_bottomAnchored);
}

void GraphicEqualizerGraph::addressValueChanged(int index)
{
    if (index == 0) {
        setCurveText(displayText(0));
    } else if (index == 1) {
        const bool anchored = hostCore() && hostCore()->state(3, 1) == 3;
        if (anchored != m_bottomAnchored) {
            m_bottomAnchored = anchored;
            rescale();
        }
    }
}

void GraphicEqualizerGraph::paintCurve(QPainter &painter)
{
    painter.setPen(QPen(penColor(), 1.0));
    painter.setBrush(QColor(0, 255, 0, 153));
    painter.drawPolygon(points());
}

void ParametricEqualizerGraph::addressValueChanged(int index)
{
    Q_UNUSED(index)
    parseCurve(displayText(0), size(), false);
    combineCurves();
    update();
}

void BrioParametricEqualizerGraph::addressValueChanged(int index)
{
    switch (index) {
    case 0:
    case 1:
        curveChanged(index, index == 1);
        break;
    case 2: {
        const bool on = !isOff(2);
        // Switching the sum takes effect at once rather than with the next
        // curve.
        if (on != m_sum) {
            m_sum = on;
            combineCurves();
        }
        update();
        break;
    }
    default:
        update();
    }
}

void PeqGraphControlPoint::addressValueChanged(int index)
{
    GraphControlPoint::addressValueChanged(index);
    if (index != 2)
        return;
    const bool on = !isOff(2);
    if (on != m_bandOn) {
        m_bandOn = on;
        update();
    }
}

void PeqGraphControlPoint::paintHandle(QPainter &painter)
{
    if (m_bandOn) {
        GraphControlPoint::paintHandle(painter);
        return;
    }
    painter.setPen(QPen(isEnabled() ? color() : GraphCurves::disabledColor(), 1.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void HpfGraphControlPoint::addressValueChanged(int index)
{
    GraphControlPoint::addressValueChanged(index);
    if (index != 2)
        return;
    m_filterEnabled = !isOff(2);
    setEnabled(m_filterEnabled);
}

// ---------------------------------------------------------------------------
// TuningZoneGraphControlPoint

QRect TuningZoneGraphControlPoint::handleGeometryAt(const QPoint &point) const
{
    const int side = discSide(zoomFactor());
    return QRect(point.x() - side / 2, point.y() - side / 2, side, side);
}

void TuningZoneGraphControlPoint::paintHandle(QPainter &painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor fill = isEnabled() ? color() : QColor(153, 153, 153, 153);
    painter.setPen(QPen(isDragging() ? fill.lighter(160) : fill.darker(160), 1));
    painter.setBrush(fill);
    painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    if (text().isEmpty())
        return;
    QFont f = font();
    f.setPixelSize(qMax(6, int(height() * 0.6)));
    painter.setFont(f);
    painter.setPen(fill.lightness() > 128 ? Qt::black : Qt::white);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text().left(2));
}

QPoint TuningZoneGraphControlPoint::draggedPoint(QMouseEvent *event)
{
    Qt::CursorShape shape = cursor().shape();
    const QPoint p = pinned(parentPosition(event) + m_grabOffset, event->modifiers() & Qt::ShiftModifier, &shape);
    setCursor(shape);
    return p;
}

void TuningZoneGraphControlPoint::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || handOverModifierPress(event)) {
        TuningZone::mousePressEvent(event);
        return;
    }
    m_dragging = true;
    m_moved = false;
    m_pressPos = parentPosition(event);
    // Grabbed where pressed: the point keeps its distance to the pointer.
    m_grabOffset = (m_placed ? m_point : m_pressPos) - m_pressPos;
    m_anchor = m_pressPos + m_grabOffset;
    m_lock = NoLock;
    selectAddress(m_value, true);
    update();
    event->accept();
}

void TuningZoneGraphControlPoint::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging) {
        TuningZone::mouseMoveEvent(event);
        return;
    }
    event->accept();
    if (!m_moved && (parentPosition(event) - m_pressPos).manhattanLength() < QApplication::startDragDistance())
        return;
    m_moved = true;
    sendPoint(fractionText(draggedPoint(event), scaledControlRect(zoomFactor())), true);
}

void TuningZoneGraphControlPoint::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_dragging || event->button() != Qt::LeftButton) {
        TuningZone::mouseReleaseEvent(event);
        return;
    }
    event->accept();
    // A click selects only; a drag ends with the point released.
    if (m_moved)
        sendPoint(fractionText(draggedPoint(event), scaledControlRect(zoomFactor())), false);
    m_dragging = false;
    m_moved = false;
    m_anchor = QPoint();
    m_lock = NoLock;
    setCursor(directionCursor(direction()));
    update();
}
