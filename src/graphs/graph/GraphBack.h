#ifndef CORVANE_GRAPHS_GRAPH_GRAPHBACK_H
#define CORVANE_GRAPHS_GRAPH_GRAPHBACK_H

#include "core/BaseWidget.h"

#include <QPainter>

/*
    The background of the equaliser and speaker-processor graphs: a black
    field with the fixed level grid (13.5 design pixels a line, the mid line
    at 81) and the logarithmic frequency grid (about 220.5 design pixels a
    decade, 100 Hz at 155). The graph widgets lie over it at the same
    geometry.
*/
namespace EqualizerGrid {

struct Group
{
    QRgb color;
    QVector<int> positions;
};

//! Horizontal lines, in drawing order.
const QVector<Group> &levelLines();
//! Vertical lines, in drawing order.
const QVector<Group> &frequencyLines();
QColor backgroundColor();
//! Fills \a size and draws both tables, positions scaled by \a zoom and truncated.
void paint(QPainter &painter, const QSize &size, float zoom);

} // namespace EqualizerGrid

template <class Base>
class EqualizerGridBack : public Base
{
public:
    using Base::Base;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        EqualizerGrid::paint(painter, this->size(), this->zoomFactor());
        this->paintBase(painter);
    }
};

class ParametricEqualizerGraphBack : public EqualizerGridBack<BaseWidget>
{
    Q_OBJECT
public:
    using EqualizerGridBack::EqualizerGridBack;
};

#endif
