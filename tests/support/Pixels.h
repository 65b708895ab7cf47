#ifndef CORVANE_TESTS_PIXELS_H
#define CORVANE_TESTS_PIXELS_H

#include <QColor>
#include <QImage>
#include <QRect>
#include <QtGlobal>

namespace Pixels {

// The pixels of \a area whose colour is within \a tolerance of \a colour
// (the sum of the channel differences), for checking what was drawn where
// without depending on antialiasing.
inline int countNear(const QImage &image, const QColor &colour, const QRect &area, int tolerance)
{
    int n = 0;
    const QRect r = area & image.rect();
    for (int y = r.top(); y <= r.bottom(); ++y) {
        for (int x = r.left(); x <= r.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (qAbs(c.red() - colour.red()) + qAbs(c.green() - colour.green()) + qAbs(c.blue() - colour.blue())
                <= tolerance)
                ++n;
        }
    }
    return n;
}

} // namespace Pixels

#endif
