// Curve and control-point texts, as the graphs receive them.
#include "core/Saturating.h"
#include "graphs/graph/GraphControlPoint.h"
#include "graphs/graph/GraphCurves.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

namespace {

void checkInside(const QPolygon &points)
{
    for (const QPoint &p : points) {
        if (qAbs(p.x()) > Saturating::maxPixels || qAbs(p.y()) > Saturating::maxPixels)
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size > 65536)
        return 0;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), int(size));
    const QSize sizes[] = {QSize(400, 300), QSize(1, 1), QSize(Saturating::maxPixels, 7)};
    GraphCurves::FloatCurve curve;
    GraphCurves::IntCurve integral;
    const bool floating = GraphCurves::parse(text, &curve);
    const bool whole = GraphCurves::parse(text, &integral);
    for (const QSize &s : sizes) {
        if (floating) {
            const QPolygon open = GraphCurves::scaleOpen(curve, s);
            checkInside(open);
            checkInside(GraphCurves::scaleExaggerated(curve, s, true));
            QPolygon shown = GraphCurves::scaleExaggerated(curve, s, false);
            checkInside(shown);
            GraphCurves::sum(&shown, open, open, s.height());
        }
        if (whole)
            checkInside(GraphCurves::scaleIntegral(integral, s));
    }
    QPoint p;
    for (const QRect &r : {QRect(0, 0, 400, 300), QRect(Saturating::maxPixels, -Saturating::maxPixels, 9, 9)}) {
        if (ControlPointState::pointOf(text, r, &p))
            checkInside(QPolygon({p}));
    }
    return 0;
}
