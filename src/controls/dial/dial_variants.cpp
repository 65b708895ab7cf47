#include "dial_variants.h"

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
