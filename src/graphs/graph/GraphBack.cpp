#include "GraphBack.h"
#include "core/Colors.h"
#include "core/Saturating.h"

namespace EqualizerGrid {

const QVector<Group> &levelLines()
{
    static const QVector<Group> groups = {
        {Colors::gridLineMinor, {13, 40, 67, 94, 121, 148}},
        {Colors::gridLineMajor, {27, 54, 107, 134}},
        {Colors::gridLineCentre, {81}},
    };
    return groups;
}

const QVector<Group> &frequencyLines()
{
    static const QVector<Group> groups = {
        {Colors::gridLineMinor, {39, 67, 106, 120, 133, 145, 260, 288, 326, 341, 354, 365, 481, 508, 547, 562, 575, 586}},
        {Colors::gridLineMajor, {88, 221, 309, 442, 530}},
        {Colors::gridLineCentre, {155, 375, 596}},
    };
    return groups;
}

QColor backgroundColor()
{
    return Colors::color(Colors::graphBackground);
}

void paint(QPainter &painter, const QSize &size, float zoom)
{
    painter.fillRect(QRect(QPoint(0, 0), size), backgroundColor());
    auto pen = [](QRgb color) { return QPen(QBrush(QColor(color)), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin); };
    for (const Group &g : levelLines()) {
        painter.setPen(pen(g.color));
        for (int y : g.positions) {
            const int at = Saturating::pixels(y, zoom);
            painter.drawLine(0, at, size.width(), at);
        }
    }
    for (const Group &g : frequencyLines()) {
        painter.setPen(pen(g.color));
        for (int x : g.positions) {
            const int at = Saturating::pixels(x, zoom);
            painter.drawLine(at, 0, at, size.height());
        }
    }
}

} // namespace EqualizerGrid
