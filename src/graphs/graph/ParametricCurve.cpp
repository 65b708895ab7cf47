#include "ParametricCurve.h"

#include <cstdlib>

bool ParametricCurveState::parseCurve(const QString &text, const QSize &size, bool second)
{
    Source &source = m_sources[second ? 1 : 0];
    GraphCurves::IntCurve curve;
    if (!GraphCurves::parse(text, &curve))
        return false;
    source.curve = curve;
    source.accepted = true;
    const QPolygon points = GraphCurves::scaleIntegral(curve, size);
    QPolygon &target = second ? m_second : m_own;
    if (points == target)
        return false;
    target = points;
    return true;
}

bool ParametricCurveState::rescaleCurves(const QSize &size)
{
    bool changed = false;
    for (int i = 0; i < 2; ++i) {
        if (!m_sources[i].accepted)
            continue;
        const QPolygon points = GraphCurves::scaleIntegral(m_sources[i].curve, size);
        QPolygon &target = i ? m_second : m_own;
        if (points != target) {
            target = points;
            changed = true;
        }
    }
    return changed;
}

bool ParametricCurveState::combine(bool copy, int height)
{
    if (copy) {
        if (m_shown == m_own)
            return false;
        m_shown = m_own;
        return true;
    }
    return GraphCurves::sum(&m_shown, m_own, m_second, height);
}

void ParametricCurveState::paintCurves(QPainter &painter, bool active) const
{
    if (active) {
        painter.setPen(QPen(m_lineColor, 1.0));
        painter.setBrush(m_fillColor);
        painter.drawPolygon(m_shown);
    } else {
        painter.setPen(QPen(GraphCurves::disabledColor(), 1.0));
        painter.setBrush(GraphCurves::disabledColor());
        painter.drawPolygon(m_own);
    }
}

void ParametricCurveState::paintPhase(QPainter &painter, bool active, int height) const
{
    // The two closing points of the integer scaling belong to the filled
    // curves; a phase curve is the open trace without them.
    const QPolygon &curve = active ? m_shown : m_own;
    const int n = curve.size() - 2;
    painter.setPen(QPen(active ? m_lineColor : GraphCurves::disabledColor(), 1.0));
    painter.setBrush(Qt::NoBrush);
    // A jump of more than half the height is the phase wrapping from +180
    // to -180 degrees, not a slope: the trace breaks there.
    int start = 0;
    for (int i = 1; i <= n; ++i) {
        if (i == n || std::abs(curve.at(i).y() - curve.at(i - 1).y()) > height / 2) {
            if (i - start > 1)
                painter.drawPolyline(curve.constData() + start, i - start);
            else if (i - start == 1)
                painter.drawPoint(curve.at(start));
            start = i;
        }
    }
}
