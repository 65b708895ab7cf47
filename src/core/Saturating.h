#ifndef CORVANE_CORE_SATURATING_H
#define CORVANE_CORE_SATURATING_H

#include <QString>
#include <QtGlobal>

#include <cmath>
#include <limits>

/*!
    \namespace Saturating
    \brief Integer conversions and geometry arithmetic that cannot overflow.

    Position texts come from the device side and panel files from anyone:
    any number can arrive, including 1e300, inf and nan. Every conversion of
    such a number to an int goes through here, so that it is clamped to the
    int range (nan to 0) instead of being undefined behaviour.
*/
namespace Saturating {

//! \a v truncated toward zero and clamped to the int range; nan gives \a nanValue.
inline int toInt(double v, int nanValue = 0)
{
    if (std::isnan(v))
        return nanValue;
    if (v >= double(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (v <= double(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return int(v);
}

//! \a v clamped to the int range.
inline int toInt(qint64 v)
{
    return int(qBound<qint64>(std::numeric_limits<int>::min(), v, std::numeric_limits<int>::max()));
}

inline int add(int a, int b) { return toInt(qint64(a) + qint64(b)); }
inline int sub(int a, int b) { return toInt(qint64(a) - qint64(b)); }
inline int mul(int a, int b) { return toInt(qint64(a) * qint64(b)); }

/*!
    The int a decimal text stands for, as QString::toInt() reads it: false
    in \a ok for anything else. Plain numbers of up to nine digits, what
    panel files hold, are read here without QString::toInt()'s locale
    machinery, at a fifth of its cost; everything else goes to it.
*/
inline int parseInt(const QString &text, bool *ok)
{
    const int n = text.size();
    const QChar *c = text.constData();
    const bool negative = n > 1 && c[0] == QLatin1Char('-');
    const int first = negative ? 1 : 0;
    if (n > first && n - first <= 9) {
        int v = 0;
        int i = first;
        for (; i < n; ++i) {
            const ushort u = c[i].unicode();
            if (u < '0' || u > '9')
                break;
            v = v * 10 + (u - '0');
        }
        if (i == n) {
            *ok = true;
            return negative ? -v : v;
        }
    }
    return text.toInt(ok);
}

//! The largest coordinate or size a widget can take (QWIDGETSIZE_MAX).
constexpr int maxPixels = (1 << 24) - 1;

//! A pixel coordinate: \a v truncated and clamped to ±maxPixels, nan giving 0.
inline int toPixel(double v)
{
    return qBound(-maxPixels, toInt(v), maxPixels);
}

/*!
    A design length scaled by the zoom and truncated, clamped to ±maxPixels.
    The product is taken in the operands' own type (float × float stays
    float), so results match a plain int(design * zoom) wherever that is defined.
*/
template <class Design, class Zoom>
inline int pixels(Design design, Zoom zoom)
{
    return toPixel(double(design * zoom));
}

/*!
    Reads a position text: a finite decimal number. Texts that are not a
    number, and inf and nan, are refused (false, \a value untouched).
*/
inline bool readPosition(const QString &text, double *value)
{
    bool ok = false;
    const double v = text.toDouble(&ok);
    if (!ok || !std::isfinite(v))
        return false;
    *value = v;
    return true;
}

/*!
    The whole step (or pixel) a position stands for on a range of \a steps:
    position × steps + 0.5, truncated, clamped to the int range. Positions
    that are not finite give 0.
*/
inline int stepsOf(double position, int steps)
{
    if (!std::isfinite(position))
        return 0;
    return toInt(position * double(steps) + 0.5);
}

//! stepsOf() of a position text; \a ok tells whether the text held a finite number.
inline int stepsOf(const QString &positionText, int steps, bool *ok = nullptr)
{
    double v = 0.0;
    const bool read = readPosition(positionText, &v);
    if (ok)
        *ok = read;
    return read ? stepsOf(v, steps) : 0;
}

} // namespace Saturating

#endif
