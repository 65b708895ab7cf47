#include "graph_variants.h"

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
    m_filterEnabled = integerValue(this, 2) != 0;
    setEnabled(m_filterEnabled);
}
