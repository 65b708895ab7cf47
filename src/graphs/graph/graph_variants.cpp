#include "graph_variants.h"
#include "core/DisabledLook.h"

#include <QApplication>

#include <cmath>

namespace {

// The position text read as a base-10 integer; 0 when it is not one ("0.5" included).
int integerValue(const BaseWidget *widget, int index)
{
    return widget->positionText(index).toInt();
}

} // namespace

QPolygon GraphicEqualizerGraph::scaled(const GraphCurves::FloatCurve &curve) const
{
    return GraphCurves::scaleExaggerated(curve, size(), m_bottomAnchored);
}

void GraphicEqualizerGraph::ownValueChanged(int index)
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
    painter.setBrush(Colors::color(Colors::graphicEqualizerFill));
    painter.drawPolygon(points());
}

void ParametricEqualizerGraph::ownValueChanged(int index)
{
    Q_UNUSED(index)
    parseCurve(displayText(0), size(), false);
    combineCurves();
    update();
}

void BrioParametricEqualizerGraph::ownValueChanged(int index)
{
    switch (index) {
    case 0:
    case 1:
        curveChanged(index, index == 1);
        break;
    case 2:
        // The switch takes effect with the next curve; the sum is not
        // recomputed here.
        m_sum = integerValue(this, 2) > 0;
        update();
        break;
    default:
        update();
    }
}

void PeqGraphControlPoint::ownValueChanged(int index)
{
    GraphControlPoint::ownValueChanged(index);
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

void HpfGraphControlPoint::ownValueChanged(int index)
{
    GraphControlPoint::ownValueChanged(index);
    if (index != 2)
        return;
    m_filterEnabled = integerValue(this, 2) != 0;
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
    const QColor fill = DisabledLook::greyed(color(), isEnabled());
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

// ---------------------------------------------------------------------------
// Halo3DGraph

const TagTable &Halo3DGraph::tags()
{
    static const TagTable table = TagTable::of<Halo3DGraph>(&Graph::tags(), {
        {"Depth", TagTable::integer("depth", 0, maxDepth)},
    });
    return table;
}

void Halo3DGraph::setDepth(int depth)
{
    depth = qBound(0, depth, int(maxDepth));
    if (m_depth == depth)
        return;
    m_depth = depth;
    relayout();
}

QRect Halo3DGraph::layerRect(int i, int count) const
{
    const int behind = qMax(0, count - 1);
    // In floating point, bounded by the widget before it becomes pixels.
    const double zoom = double(zoomFactor());
    const double wanted = double(m_depth) * (std::isfinite(zoom) && zoom > 0 ? zoom : 0.0) * behind;
    const int shift = int(qMin(wanted, double(qMax(width(), height()))));
    const QSize plot(qMax(1, width() - shift), qMax(1, height() - shift));
    const int one = behind > 0 ? shift / behind : 0;
    return QRect(QPoint(i * one, shift - i * one), plot);
}

void Halo3DGraph::relayout()
{
    QVector<QPolygon> layers(m_curves.size());
    for (int i = 0; i < m_curves.size(); ++i) {
        if (!m_read.at(i))
            continue;
        const QRect r = layerRect(i, m_curves.size());
        layers[i] = GraphCurves::scaleOpen(m_curves.at(i), r.size()).translated(r.topLeft());
    }
    if (layers == m_layers)
        return;
    m_layers = layers;
    update();
}

void Halo3DGraph::ownValueChanged(int index)
{
    if (index < 0 || index >= addressCount()) {
        Graph::ownValueChanged(index);
        return;
    }
    GraphCurves::FloatCurve curve;
    if (!GraphCurves::parse(displayText(index), &curve))
        return;
    if (m_curves.size() <= index) {
        m_curves.resize(index + 1);
        m_read.resize(index + 1);
    }
    m_curves[index] = curve;
    m_read[index] = true;
    relayout();
}

void Halo3DGraph::resizeEvent(QResizeEvent *event)
{
    Graph::resizeEvent(event);
    relayout();
}

void Halo3DGraph::paintCurve(QPainter &painter)
{
    // Back to front, farther layers fainter.
    const int n = m_layers.size();
    for (int i = n - 1; i >= 0; --i) {
        QColor c = penColor();
        if (n > 1)
            c.setAlphaF(c.alphaF() * (1.0 - 0.6 * i / (n - 1)));
        painter.setPen(QPen(c, 1.0));
        painter.drawPolyline(m_layers.at(i));
    }
}
