#ifndef CORVANE_GRAPHS_GRAPH_GRAPHCURVES_H
#define CORVANE_GRAPHS_GRAPH_GRAPHCURVES_H

#include "core/Colors.h"

#include <QColor>
#include <QPolygon>
#include <QSize>
#include <QString>
#include <QVector>

class QPainter;

/*
    Curve texts as the device side delivers them: items separated by "/",
    two fields per item separated by ":". Items 0 and 1 carry the horizontal
    and the vertical full scale in their second field; every later item is
    one point, y counting up from the bottom.

    The graphs only scale the points to their own pixels; the rounding of
    each graph is part of what the device side expects and is kept exactly.
*/
namespace GraphCurves {

template <class T>
struct Curve
{
    T rangeX = 0;
    T rangeY = 0;
    QVector<T> x;
    QVector<T> y;
    int size() const { return x.size(); }
};

using FloatCurve = Curve<double>;
using IntCurve = Curve<qint64>;

//! Reads \a text with floating-point numbers; false (and \a out untouched) for fewer than two items or a zero range.
bool parse(const QString &text, FloatCurve *out);
//! Reads \a text with base-10 integers; false (and \a out untouched) for fewer than two items or a zero range.
bool parse(const QString &text, IntCurve *out);

//! An open polyline: both axes truncated onto (size - 1) pixels.
QPolygon scaleOpen(const FloatCurve &curve, const QSize &size);
/*!
    A closed polygon with 1.5-fold vertical exaggeration over the full
    height. Centred on the mid line and closed along it, or, \a bottomAnchored,
    rising from the bottom and closed along the top edge.
*/
QPolygon scaleExaggerated(const FloatCurve &curve, const QSize &size, bool bottomAnchored);
/*!
    A closed polygon on integer arithmetic, closed one pixel below the mid
    line. The half pixel is added after the integer division, so it only
    moves negative quotients toward zero.
*/
QPolygon scaleIntegral(const IntCurve &curve, const QSize &size);

/*!
    Adds \a second to \a first point by point around the mid line of a
    graph \a height pixels high, into \a shown. Curves of different lengths
    leave \a shown as it was; points whose x differ keep their previous
    value. True when \a shown changed.
*/
bool sum(QPolygon *shown, const QPolygon &first, const QPolygon &second, int height);

//! "x,y x,y ...": the points as a property text.
QString pointsText(const QPolygon &points);

//! Pen and brush colour of curves drawn while their graph is disabled or inactive.
inline QColor disabledColor() { return Colors::color(Colors::disabledInk); }

} // namespace GraphCurves

#endif
