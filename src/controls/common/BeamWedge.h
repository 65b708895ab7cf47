#ifndef CORVANE_BEAMWEDGE_H
#define CORVANE_BEAMWEDGE_H

#include "core/DisabledLook.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>

// Fills the wedge of a steered beam: the sector of the ellipse in \a bounds
// from \a startDegrees (counter-clockwise from three o'clock, as Qt counts)
// over \a spanDegrees. The beam dial and the beam area draw the same beam,
// and a disabled control shows it at half strength.
inline void paintBeamWedge(QPainter &painter, const QRectF &bounds, double startDegrees, double spanDegrees,
                           const QColor &color, bool enabled)
{
    QPainterPath wedge(bounds.center());
    wedge.arcTo(bounds, startDegrees, spanDegrees);
    wedge.closeSubpath();
    painter.fillPath(wedge, DisabledLook::faded(color, enabled));
}

#endif
