#ifndef CORVANE_TESTS_PIXELS_H
#define CORVANE_TESTS_PIXELS_H

#include <QColor>
#include <QImage>
#include <QRect>
#include <QtGlobal>

namespace Pixels {

// Whether \a a is within \a tolerance of \a b: the sum of the channel differences, alpha left out.
inline bool near(const QColor &a, const QColor &b, int tolerance)
{
    return qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) + qAbs(a.blue() - b.blue()) <= tolerance;
}

// The pixels of \a area whose colour is near() \a colour, for checking what
// was drawn where without depending on antialiasing.
inline int countNear(const QImage &image, const QColor &colour, const QRect &area, int tolerance)
{
    int n = 0;
    const QRect r = area & image.rect();
    for (int y = r.top(); y <= r.bottom(); ++y) {
        for (int x = r.left(); x <= r.right(); ++x) {
            if (near(image.pixelColor(x, y), colour, tolerance))
                ++n;
        }
    }
    return n;
}

// The bounding box of the pixels countNear() counts; \a area empty: the whole image.
inline QRect inkBox(const QImage &image, const QColor &colour, int tolerance, const QRect &area = QRect())
{
    QRect box;
    const QRect r = area.isEmpty() ? image.rect() : area & image.rect();
    for (int y = r.top(); y <= r.bottom(); ++y) {
        for (int x = r.left(); x <= r.right(); ++x) {
            if (near(image.pixelColor(x, y), colour, tolerance))
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

} // namespace Pixels

#endif
