#include "Scales.h"
#include "core/FittedText.h"
#include "scale_variants.h"

#include <QFontMetrics>
#include <QPainter>

#include <cmath>

MeterScale::MeterScale(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
}

const TagTable &MeterScale::tags()
{
    static const TagTable table = TagTable::of<MeterScale>(&BaseWidget::tags(), {
        {"Top", TagTable::number("top")},
        {"Bottom", TagTable::number("bottom")},
        {"Marks", &MeterScale::readMarks},
        {"Side", &MeterScale::readSide},
        {"Color", TagTable::color("color")},
    });
    return table;
}

void MeterScale::setTop(double value)
{
    if (m_top == value || !std::isfinite(value))
        return;
    m_top = value;
    update();
}

void MeterScale::setBottom(double value)
{
    if (m_bottom == value || !std::isfinite(value))
        return;
    m_bottom = value;
    update();
}

void MeterScale::setMarks(const QList<double> &marks)
{
    if (m_marks == marks)
        return;
    m_marks = marks;
    update();
}

QString MeterScale::marksText() const
{
    QStringList texts;
    for (double v : m_marks)
        texts << QString::number(v);
    return texts.join(QLatin1Char(','));
}

void MeterScale::setTicksOnLeft(bool left)
{
    if (m_ticksOnLeft == left)
        return;
    m_ticksOnLeft = left;
    update();
}

void MeterScale::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
}

int MeterScale::rowOf(double value) const
{
    const double span = m_top - m_bottom;
    if (span == 0.0 || height() <= 0)
        return -1;
    const double f = (value - m_bottom) / span;
    if (!(f >= -1e-9 && f <= 1.0 + 1e-9))
        return -1;
    // The same rounding as the meter's lit height, so a mark meets the bar's edge.
    const int pixels = int(height() * qBound(0.0, f, 1.0) + 0.5);
    return qMin(height() - pixels, height() - 1);
}

QString MeterScale::label(double value) const
{
    return QString::number(value);
}

bool MeterScale::readMarks(const QDomElement &e)
{
    QList<double> marks;
    const QStringList texts = e.text().split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &t : texts) {
        bool ok = false;
        const double v = t.trimmed().toDouble(&ok);
        if (!ok || !std::isfinite(v))
            return false;
        marks << v;
    }
    setMarks(marks);
    return true;
}

bool MeterScale::readSide(const QDomElement &e)
{
    const QString side = e.text().trimmed().toLower();
    if (side != QLatin1String("left") && side != QLatin1String("right"))
        return false;
    setTicksOnLeft(side == QLatin1String("left"));
    return true;
}

void MeterScale::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QFontMetrics metrics(font());
    const int tick = qBound(2, width() / 4, 8);
    const int gap = 2;
    QList<QRect> labels;
    // Marks listed first win where labels would overlap.
    for (double v : qAsConst(m_marks)) {
        const int row = rowOf(v);
        if (row < 0)
            continue;
        painter.fillRect(QRect(m_ticksOnLeft ? 0 : width() - tick, row, tick, 1), m_color);

        const QString text = label(v);
        // A label wider than the room beside the ticks shrinks rather than losing its sign.
        const int w = qMin(metrics.horizontalAdvance(text), qMax(0, width() - tick - gap));
        const int h = metrics.height();
        const int y = qBound(0, row - h / 2, qMax(0, height() - h));
        const QRect r = m_ticksOnLeft ? QRect(tick + gap, y, w, h) : QRect(width() - tick - gap - w, y, w, h);
        bool free = true;
        for (const QRect &other : qAsConst(labels))
            free = free && !other.intersects(r);
        if (!free)
            continue;
        labels << r;
        painter.setPen(m_color);
        FittedText::draw(painter, r, Qt::AlignVCenter | (m_ticksOnLeft ? Qt::AlignLeft : Qt::AlignRight), text,
                         FittedText::Shrink);
    }
    paintBase(painter);
}

// ---------------------------------------------------------------------------

MeterScaleGR::MeterScaleGR(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : MeterScale(hostCore, registry, parent)
{
    setTop(0);
    setBottom(30);
    setMarks({0, 3, 6, 10, 15, 20, 30});
}

MeterScaleVoltage::MeterScaleVoltage(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : MeterScale(hostCore, registry, parent)
{
    setTop(24);
    setBottom(-36);
    setMarks({24, 18, 12, 6, 0, -6, -12, -18, -24, -36});
}

QString MeterScaleVoltage::label(double value) const
{
    // dBu readings carry their sign.
    return value > 0 ? QLatin1Char('+') + QString::number(value) : QString::number(value);
}
