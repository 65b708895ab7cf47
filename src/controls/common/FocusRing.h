#ifndef CORVANE_CONTROLS_COMMON_FOCUSRING_H
#define CORVANE_CONTROLS_COMMON_FOCUSRING_H

#include "core/Saturating.h"

#include <QColor>
#include <QPainter>
#include <QRect>

/*!
    Draws the dotted keyboard-focus ring inside \a rect, in \a ink at a
    lighter alpha so that it does not compete with the control's text, two
    design pixels in from the edge.
*/
inline void paintFocusRing(QPainter &painter, const QRect &rect, QColor ink, float zoom)
{
    ink.setAlpha(150);
    painter.save();
    painter.setPen(QPen(ink, 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    const int inset = qMax(2, Saturating::pixels(2, zoom));
    painter.drawRect(QRectF(rect).adjusted(inset + 0.5, inset + 0.5, -inset - 0.5, -inset - 0.5));
    painter.restore();
}

#endif
