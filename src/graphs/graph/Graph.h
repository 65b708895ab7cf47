#ifndef CORVANE_GRAPHS_GRAPH_GRAPH_H
#define CORVANE_GRAPHS_GRAPH_GRAPH_H

#include "core/BaseWidget.h"
#include "core/Colors.h"
#include "graphs/graph/GraphCurves.h"

/*!
    \class Graph
    \brief An open curve drawn as a polyline.

    The curve is the display text of address 0, a list of points with
    floating-point coordinates (see GraphCurves). The graph keeps the last
    curve it accepted and rescales it when its size changes; a text it
    cannot read leaves the curve on screen as it was.
*/
class Graph : public BaseWidget
{
    Q_OBJECT
    // The meaning of each address index, for hosts and panelview --describe.
    Q_CLASSINFO("Addresses", "0: the curve")
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QString points READ pointsText)
    CORVANE_TAG_TABLE

public:
    Graph(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    QColor lineColor() const { return m_lineColor; }
    void setLineColor(const QColor &color);

    //! The curve in pixels, as drawn.
    QPolygon points() const { return m_points; }
    QString pointsText() const { return GraphCurves::pointsText(m_points); }

    //! Takes a new curve text; false when it was rejected.
    bool setCurveText(const QString &text);

protected:
    //! The pixel points of \a curve at the current size.
    virtual QPolygon scaled(const GraphCurves::FloatCurve &curve) const;
    //! Rescales the last accepted curve; repaints when the points changed.
    void rescale();
    //! The colour curves are drawn with in the current state.
    QColor penColor() const;

    void ownValueChanged(int index) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    virtual void paintCurve(QPainter &painter);

private:
    QColor m_lineColor = Colors::color(Colors::graphLine);
    GraphCurves::FloatCurve m_curve;
    bool m_hasCurve = false;
    QPolygon m_points;
};

#endif
