#include "Scales.h"
#include "core/DisabledLook.h"
#include "core/FittedText.h"
#include "core/Saturating.h"
#include "scale_variants.h"

#include "graphs/graph/GraphBack.h"

#include <QFontMetrics>
#include <QPainter>

#include <cmath>

const QColor GraphScale::defaultColor(179, 179, 179, 255);

GraphScale::GraphScale(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
}

const TagTable &GraphScale::tags()
{
    static const TagTable table = TagTable::of<GraphScale>(&BaseWidget::tags(), {
        {"Marks", &GraphScale::readMarks},
        {"Color", TagTable::color("color")},
        {"BackgroundColor", TagTable::color("backgroundColor")},
        {"Align", &GraphScale::readAlign},
    });
    return table;
}

double GraphScale::designPosition(double value) const
{
    const double rule = rulePosition(value);
    if (!std::isfinite(rule))
        return rule;
    const QVector<EqualizerGrid::Group> &groups =
        orientation() == Qt::Horizontal ? EqualizerGrid::frequencyLines() : EqualizerGrid::levelLines();
    // The grid's table was laid out by hand and is up to a pixel off the rule either way.
    double best = rule;
    double bestDistance = 1.0 + 1e-9;
    for (const EqualizerGrid::Group &g : groups) {
        for (int line : g.positions) {
            const double d = std::abs(line - rule);
            if (d < bestDistance) {
                bestDistance = d;
                best = line;
            }
        }
    }
    return best;
}

int GraphScale::pixelOf(double value) const
{
    const double pos = designPosition(value);
    if (!std::isfinite(pos))
        return -1;
    return Saturating::pixels(pos, zoomFactor());
}

double GraphScale::levelRow(double value, double perLine)
{
    return 81.0 - value * 13.5 / perLine;
}

QString GraphScale::signedLabel(double value)
{
    return value > 0 ? QLatin1Char('+') + QString::number(value) : QString::number(value);
}

void GraphScale::setMarks(const QList<double> &marks)
{
    if (m_marks == marks)
        return;
    m_marks = marks;
    update();
}

QString GraphScale::marksText() const
{
    QStringList texts;
    for (double v : m_marks)
        texts << QString::number(v);
    return texts.join(QLatin1Char(','));
}

void GraphScale::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
}

void GraphScale::setBackgroundColor(const QColor &color)
{
    if (m_backgroundColor == color)
        return;
    m_backgroundColor = color;
    // A fully opaque background covers every pixel: Qt need not paint what lies below.
    setAttribute(Qt::WA_OpaquePaintEvent, color.alpha() == 255);
    update();
}

void GraphScale::setAlignment(Qt::Alignment alignment)
{
    alignment &= Qt::AlignHorizontal_Mask;
    if (alignment != Qt::AlignLeft && alignment != Qt::AlignHCenter)
        alignment = Qt::AlignRight;
    if (m_alignment == alignment)
        return;
    m_alignment = alignment;
    update();
}

QString GraphScale::alignmentText() const
{
    if (m_alignment == Qt::AlignLeft)
        return QStringLiteral("Left");
    if (m_alignment == Qt::AlignHCenter)
        return QStringLiteral("Center");
    return QStringLiteral("Right");
}

bool GraphScale::readMarks(const QDomElement &e)
{
    QList<double> marks;
    for (const QString &t : e.text().split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        bool ok = false;
        const double v = t.trimmed().toDouble(&ok);
        if (!ok || !std::isfinite(v))
            return false;
        marks << v;
    }
    setMarks(marks);
    return true;
}

bool GraphScale::readAlign(const QDomElement &e)
{
    const QString text = e.text().trimmed().toLower();
    if (text == QLatin1String("left"))
        setAlignment(Qt::AlignLeft);
    else if (text == QLatin1String("center") || text == QLatin1String("centre"))
        setAlignment(Qt::AlignHCenter);
    else if (text == QLatin1String("right"))
        setAlignment(Qt::AlignRight);
    else
        return false;
    return true;
}

QRect GraphScale::labelRect(double value) const
{
    const int at = pixelOf(value);
    const QFontMetrics metrics(font());
    const QString text = label(value);
    const int w = metrics.horizontalAdvance(text);
    const int h = metrics.height();
    if (orientation() == Qt::Horizontal) {
        if (at < 0 || at >= width())
            return QRect();
        const int x = qBound(0, at - w / 2, qMax(0, width() - w));
        return QRect(x, qMax(0, (height() - h) / 2), w, qMin(h, height()));
    }
    if (at < 0 || at > height())
        return QRect();
    const int y = qBound(0, at - h / 2, qMax(0, height() - h));
    const int gap = qMax(1, Saturating::pixels(2, zoomFactor()));
    int x = width() - gap - w;
    if (m_alignment == Qt::AlignLeft)
        x = gap;
    else if (m_alignment == Qt::AlignHCenter)
        x = (width() - w) / 2;
    return QRect(x, y, w, h);
}

void GraphScale::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (m_backgroundColor.alpha() > 0)
        painter.fillRect(rect(), m_backgroundColor);
    painter.setPen(DisabledLook::greyed(m_color, isEnabled()));
    QList<QRect> drawn;
    for (double v : qAsConst(m_marks)) {
        const QRect r = labelRect(v);
        if (r.isEmpty())
            continue;
        bool free = true;
        for (const QRect &other : qAsConst(drawn))
            free = free && !other.intersects(r);
        if (!free)
            continue;
        drawn << r;
        FittedText::draw(painter, r & rect(), Qt::AlignCenter | Qt::TextSingleLine, label(v), FittedText::Shrink);
    }
    paintBase(painter);
}

// ---------------------------------------------------------------------------

GraphSppHScale::GraphSppHScale(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : GraphScale(hostCore, registry, parent)
{
    setMarks({20, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000});
}

double GraphSppHScale::rulePosition(double hertz) const
{
    if (!(hertz > 0))
        return std::nan("");
    return 155.0 + 220.5 * std::log10(hertz / 100.0);
}

QString GraphSppHScale::label(double hertz) const
{
    if (hertz >= 1000.0)
        return QString::number(hertz / 1000.0) + QLatin1Char('k');
    return QString::number(hertz);
}

