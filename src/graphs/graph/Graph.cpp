#include "Graph.h"

#include <QPainter>

Graph::Graph(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
}

const TagTable &Graph::tags()
{
    static const TagTable table = TagTable::of<Graph>(&BaseWidget::tags(), {
        {"LineColor", TagTable::color("LineColor")},
    });
    return table;
}

void Graph::setLineColor(const QColor &color)
{
    if (m_lineColor == color)
        return;
    m_lineColor = color;
    update();
}

bool Graph::setCurveText(const QString &text)
{
    GraphCurves::FloatCurve curve;
    if (!GraphCurves::parse(text, &curve))
        return false;
    m_curve = curve;
    m_hasCurve = true;
    rescale();
    return true;
}

QPolygon Graph::scaled(const GraphCurves::FloatCurve &curve) const
{
    return GraphCurves::scaleOpen(curve, size());
}

void Graph::rescale()
{
    if (!m_hasCurve)
        return;
    const QPolygon points = scaled(m_curve);
    if (points == m_points)
        return;
    m_points = points;
    update();
}

QColor Graph::penColor() const
{
    return isEnabled() ? m_lineColor : GraphCurves::disabledColor();
}

void Graph::ownValueChanged(int index)
{
    if (index == 0)
        setCurveText(displayText(0));
    else
        BaseWidget::ownValueChanged(index);
}

void Graph::resizeEvent(QResizeEvent *event)
{
    BaseWidget::resizeEvent(event);
    rescale();
}

void Graph::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintCurve(painter);
    paintBase(painter);
}

void Graph::paintCurve(QPainter &painter)
{
    painter.setPen(QPen(penColor(), 1.0));
    painter.drawPolyline(m_points);
}
