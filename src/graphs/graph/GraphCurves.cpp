#include "GraphCurves.h"

#include "core/Saturating.h"

#include <QStringList>

#include <cmath>

namespace GraphCurves {

namespace {

// Fields that are not finite numbers read as 0, like any other non-number.
double number(const QString &field, double *)
{
    const double v = field.toDouble();
    return std::isfinite(v) ? v : 0.0;
}

qint64 number(const QString &field, qint64 *)
{
    return field.toInt(nullptr, 10);
}

template <class T>
bool parseCurve(const QString &text, Curve<T> *out)
{
    const QStringList items = text.split(QLatin1Char('/'), Qt::KeepEmptyParts, Qt::CaseSensitive);
    const int n = items.size() - 2;
    if (n < 0)
        return false;
    auto field = [&](int item, int index) {
        return number(items.at(item).section(QLatin1Char(':'), index, index), static_cast<T *>(nullptr));
    };
    Curve<T> curve;
    curve.rangeX = field(0, 1);
    curve.rangeY = field(1, 1);
    if (curve.rangeX == 0 || curve.rangeY == 0)
        return false;
    curve.x.resize(n);
    curve.y.resize(n);
    for (int i = 0; i < n; ++i) {
        curve.x[i] = field(i + 2, 0);
        curve.y[i] = field(i + 2, 1);
    }
    *out = curve;
    return true;
}

} // namespace

bool parse(const QString &text, FloatCurve *out)
{
    return parseCurve(text, out);
}

bool parse(const QString &text, IntCurve *out)
{
    return parseCurve(text, out);
}

QPolygon scaleOpen(const FloatCurve &curve, const QSize &size)
{
    const double w = size.width() - 1;
    const double h = size.height() - 1;
    QPolygon points(curve.size());
    for (int i = 0; i < curve.size(); ++i) {
        points[i] = QPoint(Saturating::toPixel(curve.x.at(i) * w / curve.rangeX),
                           Saturating::toPixel(h - double(Saturating::toPixel(curve.y.at(i) * h / curve.rangeY))));
    }
    return points;
}

QPolygon scaleExaggerated(const FloatCurve &curve, const QSize &size, bool bottomAnchored)
{
    const int w = size.width();
    const int h = size.height();
    QPolygon points(curve.size());
    for (int i = 0; i < curve.size(); ++i) {
        int v = Saturating::toPixel(h * 1.5 * curve.y.at(i) / curve.rangeY);
        if (!bottomAnchored)
            v -= h / 2;
        points[i] = QPoint(Saturating::toPixel(curve.x.at(i) * (w - 1) / curve.rangeX),
                           Saturating::toPixel(double(h - 1) - v));
    }
    const int closing = bottomAnchored ? 0 : (h - 1) / 2;
    points << QPoint(w - 1, closing) << QPoint(0, closing);
    return points;
}

QPolygon scaleIntegral(const IntCurve &curve, const QSize &size)
{
    const qint64 w = size.width() - 1;
    const qint64 h = size.height() - 1;
    QPolygon points(curve.size());
    for (int i = 0; i < curve.size(); ++i) {
        const qint64 q = curve.x.at(i) * w / curve.rangeX;
        points[i] = QPoint(Saturating::toPixel(q + 0.5),
                           Saturating::toPixel(double(h - curve.y.at(i) * h / curve.rangeY)));
    }
    const int closing = int(h / 2 + 1);
    points << QPoint(int(w), closing) << QPoint(0, closing);
    return points;
}

bool sum(QPolygon *shown, const QPolygon &first, const QPolygon &second, int height)
{
    if (first.size() != second.size())
        return false;
    const QPolygon before = *shown;
    shown->resize(first.size());
    const int mid = (height - 1) / 2;
    for (int i = 0; i < first.size(); ++i) {
        const QPoint a = first.at(i);
        const QPoint b = second.at(i);
        if (a.x() == b.x())
            (*shown)[i] = QPoint(a.x(), a.y() - mid + b.y());
    }
    return *shown != before;
}

QString pointsText(const QPolygon &points)
{
    QStringList parts;
    parts.reserve(points.size());
    for (const QPoint &p : points)
        parts << QStringLiteral("%1,%2").arg(p.x()).arg(p.y());
    return parts.join(QLatin1Char(' '));
}

} // namespace GraphCurves
