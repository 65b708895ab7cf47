#include "area_variants.h"
#include "controls/common/BeamWedge.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

const QColor BeamArea::defaultBeamColor(0, 153, 221, 110);

BeamArea::BeamArea(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : PadArea(hostCore, registry, parent)
{
}

const TagTable &BeamArea::tags()
{
    static const TagTable table = TagTable::of<BeamArea>(&PadArea::tags(), {
        {"Angle", TagTable::number("angle")},
        {"BeamColor", TagTable::color("beamColor")},
    });
    return table;
}

void BeamArea::setAngle(double degrees)
{
    if (!std::isfinite(degrees))
        return;
    updateMember(m_angle, qBound(0.0, degrees, 360.0));
}

void BeamArea::setBeamColor(const QColor &color)
{
    updateMember(m_beamColor, color);
}

void BeamArea::paintField(QPainter &painter)
{
    if (m_angle <= 0.0)
        return;
    const QPointF origin = beamOrigin();
    const QPointF to = handleCentre() - origin;
    // Qt counts angles counter-clockwise with y up; a handle on the origin aims straight up.
    const double aim = to.isNull() ? 90.0 : std::atan2(-to.y(), to.x()) * 180.0 / M_PI;
    const double reach = std::hypot(width(), height()) + 1;
    paintBeamWedge(painter, QRectF(origin.x() - reach, origin.y() - reach, 2 * reach, 2 * reach),
                   aim - m_angle / 2, m_angle, m_beamColor, isEnabled());
}
