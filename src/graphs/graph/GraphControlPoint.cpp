#include "GraphControlPoint.h"

#include "core/Saturating.h"
#include "graphs/graph/GraphCurves.h"

#include <QLocale>

Qt::CursorShape ControlPointState::directionCursor(const QString &direction)
{
    const bool horizontal = direction.contains(QLatin1String("Horizontal"));
    const bool vertical = direction.contains(QLatin1String("Vertical"));
    if (horizontal && vertical)
        return Qt::SizeAllCursor;
    if (horizontal)
        return Qt::SizeHorCursor;
    if (vertical)
        return Qt::SizeVerCursor;
    return Qt::ArrowCursor;
}

bool ControlPointState::pointOf(const QString &text, const QRect &rect, QPoint *point)
{
    GraphCurves::FloatCurve curve;
    if (!GraphCurves::parse(text, &curve) || curve.size() != 1)
        return false;
    const double fx = curve.x.at(0) / curve.rangeX;
    const double fy = curve.y.at(0) / curve.rangeY;
    const double w = rect.width() - 1;
    const double h = rect.height() - 1;
    *point = QPoint(Saturating::toPixel(w * fx + 0.5 + rect.x()), Saturating::toPixel(h - (h * fy - 0.5) + rect.y()));
    return true;
}

QRect ControlPointState::handleGeometry(const QPoint &point, float zoom)
{
    const int side = Saturating::pixels(5, zoom);
    return QRect(Saturating::toPixel(float(point.x()) - 2.0f * zoom), Saturating::toPixel(float(point.y()) - 2.0f * zoom),
                 side, side);
}

QString ControlPointState::fractionText(const QPoint &pos, const QRect &rect)
{
    auto fraction = [](int offset, int extent) {
        if (extent <= 1)
            return 0.0;
        return qBound(0.0, double(offset) / (extent - 1), 1.0);
    };
    const double fx = fraction(pos.x() - rect.x(), rect.width());
    const double fy = 1.0 - fraction(pos.y() - rect.y(), rect.height());
    return QStringLiteral("%1:%2").arg(QString::number(fx, 'g', QLocale::FloatingPointShortest),
                                       QString::number(fy, 'g', QLocale::FloatingPointShortest));
}

QRect ControlPointState::scaledControlRect(float zoom) const
{
    return QRect(Saturating::pixels(m_controlRect.x(), zoom), Saturating::pixels(m_controlRect.y(), zoom),
                 Saturating::pixels(m_controlRect.width(), zoom), Saturating::pixels(m_controlRect.height(), zoom));
}

QPoint ControlPointState::pinned(const QPoint &pos, bool shift, Qt::CursorShape *cursor)
{
    if (!shift) {
        m_anchor = pos;
        m_lock = NoLock;
        *cursor = directionCursor(m_direction);
        return pos;
    }
    if (m_lock == NoLock && pos != m_anchor)
        m_lock = pos.x() == m_anchor.x() ? VerticalLock : HorizontalLock;
    QPoint p = pos;
    if (m_lock == HorizontalLock) {
        p.setY(m_anchor.y());
        *cursor = Qt::SizeHorCursor;
    } else if (m_lock == VerticalLock) {
        p.setX(m_anchor.x());
        *cursor = Qt::SizeVerCursor;
    }
    return p;
}
