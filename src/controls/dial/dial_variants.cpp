#include "dial_variants.h"
#include "controls/common/BeamWedge.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

double DirectionDial::angle() const
{
    const double p = shownPosition();
    return std::isfinite(p) ? 360.0 * (p - std::floor(p)) : 0.0;
}

int DirectionDial::boundDragPosition(int position) const
{
    return ((position % dragRange) + dragRange) % dragRange;
}

void DirectionDial::stepValue(int step)
{
    if (addressCount() == 0)
        return;
    const double p = position(0);
    const int at = std::isfinite(p) ? int(dragRange * qBound(0.0, p, 1.0) + 0.5) : 0;
    // Inside the travel the database steps as it steps any dial; across an
    // end the dial goes round: 1 and 0 point the same way.
    if ((step > 0 && at >= dragRange) || (step < 0 && at <= 0)) {
        requestPosition(boundDragPosition(at + step), dragRange, 0, 0);
        return;
    }
    Dial::stepValue(step);
}

const QColor BeamDial::defaultBeamColor(255, 170, 0, 140);

const TagTable &BeamDial::tags()
{
    static const TagTable table = TagTable::of<BeamDial>(&Dial::tags(), {
        {"BeamWidth", TagTable::integer("beamWidth", 1, 180)},
        {"BeamColor", TagTable::color("beamColor")},
    });
    return table;
}

void BeamDial::setBeamWidth(int degrees)
{
    degrees = qBound(1, degrees, 180);
    if (m_beamWidth == degrees)
        return;
    m_beamWidth = degrees;
    update();
}

void BeamDial::setBeamColor(const QColor &color)
{
    if (!color.isValid() || m_beamColor == color)
        return;
    m_beamColor = color;
    update();
}

void BeamDial::paintKnob(QPainter &painter)
{
    Dial::paintKnob(painter);
    const QRectF knob(knobRect());
    if (knob.isEmpty())
        return;
    // angle() is clockwise from straight up; arcs count counter-clockwise from three o'clock.
    paintBeamWedge(painter, knob, 90.0 - angle() - m_beamWidth / 2.0, m_beamWidth, m_beamColor, isEnabled());
}
