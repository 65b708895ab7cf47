#include "data/ParameterKeys.h"
#include "core/Colors.h"
#include "core/DisabledLook.h"
#include "core/Saturating.h"
#include "Fader.h"

#include <QDomElement>
#include <QPainter>

#include <cmath>

const QSize Fader::defaultKnobSize(28, 16);
const QColor Fader::defaultRailColor(0, 0, 0, 255);
const QColor Fader::defaultFillColor(64, 160, 255, 255);

namespace {

struct LawPoint
{
    int pixel;
    double ratio;
};

// Pixels at zoom 1, counted up from the bottom of the travel.
const LawPoint zeroDbLaw[] = {
    {0, 0.0}, {8, 0.120235}, {16, 0.16911}, {24, 0.217986}, {42, 0.315738},
    {60, 0.41349}, {78, 0.608993}, {96, 0.804497}, {114, 0.902248}, {132, 1.0},
};
const LawPoint tenDbLaw[] = {
    {0, 0.0}, {8, 0.120235}, {16, 0.16911}, {24, 0.217986}, {40, 0.315738}, {56, 0.41349},
    {72, 0.608993}, {88, 0.706745}, {104, 0.804497}, {120, 0.902248}, {136, 1.0},
};

// "x"/"y" (or "width"/"height") attributes, or the text "a,b".
bool parsePair(const QDomElement &e, const char *first, const char *second, QPoint *out)
{
    const QString a = QLatin1String(first), b = QLatin1String(second);
    bool ok1 = false, ok2 = false;
    int u, v;
    if (e.hasAttribute(a) || e.hasAttribute(b)) {
        u = e.attribute(a, QStringLiteral("0")).toInt(&ok1);
        v = e.attribute(b, QStringLiteral("0")).toInt(&ok2);
    } else {
        const QStringList parts = e.text().split(QLatin1Char(','));
        if (parts.size() != 2)
            return false;
        u = parts.at(0).trimmed().toInt(&ok1);
        v = parts.at(1).trimmed().toInt(&ok2);
    }
    if (!ok1 || !ok2)
        return false;
    *out = QPoint(u, v);
    return true;
}

int scaledLength(int design, float zoom)
{
    return Saturating::pixels(design, zoom);
}

} // namespace

Fader::Fader(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : ValueInputWidget<BaseWidget>(valueInput, hostCore, registry, parent)
    , m_knobDesignSize(defaultKnobSize)
{
    // Up and Down need the focus; a click gives it.
    setFocusPolicy(Qt::StrongFocus);
}

const TagTable &Fader::tags()
{
    static const TagTable table = TagTable::of<Fader>(&BaseWidget::tags(), {
        {"Image", &Fader::readImage},
        {"ParameterType", &Fader::readParameterType},
        {"LevelList", &Fader::readLevelList},
        {"RailRect", &Fader::readRailRect},
        {"KnobPosition", &Fader::readKnobPosition},
        {"FillLevel", TagTable::boolean("fillLevel")},
        {"KnobSize", &Fader::readKnobSize},
        {"RailColor", TagTable::color("railColor")},
    });
    return table;
}

// ---------------------------------------------------------------------------
// Geometry

void Fader::setOrientation(Qt::Orientation orientation)
{
    if (m_orientation == orientation)
        return;
    m_orientation = orientation;
    m_knobDesignSize.transpose();
    placeKnob();
    update();
}

QSize Fader::knobSize() const
{
    const float zoom = zoomFactor();
    return QSize(scaledLength(m_knobDesignSize.width(), zoom), scaledLength(m_knobDesignSize.height(), zoom));
}

int Fader::travel() const
{
    const QSize knob = knobSize();
    return qMax(0, m_orientation == Qt::Vertical ? height() - knob.height() : width() - knob.width());
}

int Fader::knobStartFor(int p) const
{
    return m_orientation == Qt::Vertical ? travel() - p : p;
}

QRect Fader::knobRect() const
{
    const QSize knob = knobSize();
    const float zoom = zoomFactor();
    if (m_orientation == Qt::Vertical) {
        const int x = m_knobPositionGiven ? scaledLength(m_knobDesignPosition.x(), zoom) : (width() - knob.width()) / 2;
        return QRect(QPoint(x, knobStartFor(m_knobPosition)), knob);
    }
    const int y = m_knobPositionGiven ? scaledLength(m_knobDesignPosition.y(), zoom) : (height() - knob.height()) / 2;
    return QRect(QPoint(knobStartFor(m_knobPosition), y), knob);
}

QRect Fader::railRect() const
{
    const float zoom = zoomFactor();
    if (!m_railDesignRect.isEmpty()) {
        return QRect(scaledLength(m_railDesignRect.x(), zoom), scaledLength(m_railDesignRect.y(), zoom),
                     scaledLength(m_railDesignRect.width(), zoom), scaledLength(m_railDesignRect.height(), zoom));
    }
    // A slot along the knob's centre line, from its lowest to its highest centre.
    const QRect knob = knobRect();
    const int thickness = qMax(2, scaledLength(4, zoom));
    if (m_orientation == Qt::Vertical) {
        const int x = knob.x() + (knob.width() - thickness) / 2;
        return QRect(x, knob.height() / 2, thickness, qMax(0, height() - knob.height()));
    }
    const int y = knob.y() + (knob.height() - thickness) / 2;
    return QRect(knob.width() / 2, y, qMax(0, width() - knob.width()), thickness);
}

int Fader::knobPositionAt(const QPoint &pos) const
{
    const int t = travel();
    if (m_orientation == Qt::Vertical)
        return t - qBound(0, m_grabOffset + pos.y(), t);
    return qBound(0, m_grabOffset + pos.x(), t);
}

QRect Fader::knobTrail(const QRect &from, const QRect &to) const
{
    QRect trail = from.united(to);
    if (m_fillLevel)
        trail = trail.united(railRect());
    return trail;
}

void Fader::setKnobPosition(int p)
{
    if (m_knobPosition == p)
        return;
    const QRect before = knobRect();
    m_knobPosition = p;
    update(knobTrail(before, knobRect()));
}

// ---------------------------------------------------------------------------
// The laws

QVector<QPair<int, double>> Fader::law(int kind, float zoom)
{
    QVector<QPair<int, double>> points;
    auto take = [&](const LawPoint *begin, const LawPoint *end) {
        for (const LawPoint *p = begin; p != end; ++p)
            points.append({Saturating::pixels(float(p->pixel), zoom), p->ratio});
    };
    if (kind == ZeroDbLaw)
        take(std::begin(zeroDbLaw), std::end(zeroDbLaw));
    else if (kind == TenDbLaw)
        take(std::begin(tenDbLaw), std::end(tenDbLaw));
    return points;
}

double Fader::knobPositionToRatio(int p) const
{
    if (m_scaleKind != ZeroDbLaw && m_scaleKind != TenDbLaw) {
        const int t = travel();
        return t > 0 ? double(p) / t : 0.0;
    }
    const QVector<QPair<int, double>> points = law(m_scaleKind, zoomFactor());
    for (int i = 1; i < points.size(); ++i) {
        const auto &prev = points.at(i - 1);
        const auto &point = points.at(i);
        if (point.first < p)
            continue;
        const int span = point.first - prev.first;
        if (span <= 0)
            return point.second;
        return prev.second + (point.second - prev.second) * (p - prev.first) / span;
    }
    return 1.0;
}

int Fader::ratioToKnobPosition(double ratio) const
{
    const int t = travel();
    if (t <= 0)
        return 0;
    ratio = qBound(0.0, ratio, 1.0);
    if (m_scaleKind != ZeroDbLaw && m_scaleKind != TenDbLaw)
        return qBound(0, int(std::lround(ratio * t)), t);
    const QVector<QPair<int, double>> points = law(m_scaleKind, zoomFactor());
    int p = points.last().first;
    for (int i = 1; i < points.size(); ++i) {
        const auto &prev = points.at(i - 1);
        const auto &point = points.at(i);
        if (point.second < ratio)
            continue;
        const double span = point.second - prev.second;
        p = span > 0 ? int(std::lround(prev.first + (ratio - prev.second) * (point.first - prev.first) / span))
                     : point.first;
        break;
    }
    return qBound(0, p, t);
}

void Fader::placeKnob()
{
    int p = 0;
    if (addressCount() > 0 && addressAt(0).isValid() && hasPosition(0)) {
        p = ratioToKnobPosition(position(0));
    } else if (m_knobPositionGiven) {
        // No value yet: the knob waits where the description put it.
        const float zoom = zoomFactor();
        p = m_orientation == Qt::Vertical ? travel() - scaledLength(m_knobDesignPosition.y(), zoom)
                                          : scaledLength(m_knobDesignPosition.x(), zoom);
    }
    setKnobPosition(qBound(0, p, travel()));
}

// ---------------------------------------------------------------------------
// State

void Fader::setScaleKind(ScaleKind kind)
{
    if (m_scaleKind == kind)
        return;
    m_scaleKind = qint16(kind);
    placeKnob();
    // Level marks move with the law even where the knob does not.
    update();
}

void Fader::setFillLevel(bool on)
{
    if (m_fillLevel == on)
        return;
    m_fillLevel = on;
    update();
}

void Fader::setRailColor(const QColor &color)
{
    if (m_railColor == color)
        return;
    m_railColor = color;
    update();
}

void Fader::setFillColor(const QColor &color)
{
    if (m_fillColor == color)
        return;
    m_fillColor = color;
    if (m_fillLevel)
        update();
}

void Fader::setKnobImage(const QString &name)
{
    if (m_knobImage.setName(name))
        update();
}

void Fader::setBaseImage(const QString &name)
{
    if (m_baseImage.setName(name))
        update();
}

bool Fader::setZoom(float zoom)
{
    if (!BaseWidget::setZoom(zoom))
        return false;
    placeKnob();
    update();
    return true;
}

// ---------------------------------------------------------------------------
// Description

bool Fader::readImage(const QDomElement &e)
{
    const QString type = e.attribute(QStringLiteral("type"));
    if (type == QLatin1String("knob"))
        setKnobImage(e.text().trimmed());
    else if (type == QLatin1String("base"))
        setBaseImage(e.text().trimmed());
    else
        return false;
    return true;
}

bool Fader::readParameterType(const QDomElement &e)
{
    const QString text = e.text();
    if (text == QLatin1String("normal"))
        setScaleKind(Normal);
    else if (text == QLatin1String("0dB"))
        setScaleKind(ZeroDbLaw);
    else if (text == QLatin1String("10dB"))
        setScaleKind(TenDbLaw);
    else
        return false;
    return true;
}

bool Fader::readLevelList(const QDomElement &e)
{
    m_levels.read(e);
    update();
    return true;
}

bool Fader::readRailRect(const QDomElement &e)
{
    m_railDesignRect = parseRect(e);
    update();
    return true;
}

bool Fader::readKnobPosition(const QDomElement &e)
{
    QPoint p;
    if (!parsePair(e, "x", "y", &p))
        return false;
    m_knobDesignPosition = p;
    m_knobPositionGiven = true;
    placeKnob();
    update();
    return true;
}

bool Fader::readKnobSize(const QDomElement &e)
{
    QPoint s;
    if (!parsePair(e, "width", "height", &s) || s.x() < 0 || s.y() < 0)
        return false;
    m_knobDesignSize = QSize(s.x(), s.y());
    placeKnob();
    update();
    return true;
}

// ---------------------------------------------------------------------------
// Values, requests, menu

void Fader::ownValueChanged(int index)
{
    // While dragging the knob stays under the mouse; it settles at release.
    if (index == 0 && !isDragging())
        placeKnob();
}

void Fader::sendKnobPosition(int p, bool held)
{
    requestPosition(knobPositionToRatio(p), 1.0, held ? 1 : 0, 0);
}

int Fader::stepOfKey(int key) const
{
    if (key == Qt::Key_Right || key == Qt::Key_Left)
        return m_orientation == Qt::Horizontal ? (key == Qt::Key_Right ? 1 : -1) : 0;
    return ValueInputWidget::stepOfKey(key);
}

bool Fader::startDragAt(const QPoint &pos)
{
    const QRect knob = knobRect();
    if (!knob.contains(pos))
        return false;
    m_grabOffset = qint16(m_orientation == Qt::Vertical ? knob.top() - pos.y() : knob.left() - pos.x());
    return true;
}

void Fader::sendDragPosition(int p, bool held)
{
    setKnobPosition(p);
    sendKnobPosition(p, held);
}

void Fader::resizeEvent(QResizeEvent *event)
{
    BaseWidget::resizeEvent(event);
    if (!isDragging())
        placeKnob();
}

// ---------------------------------------------------------------------------
// Painting

void Fader::paintRail(QPainter &painter)
{
    const QRect rail = railRect();
    if (rail.isEmpty())
        return;
    if (!m_railDesignRect.isEmpty() || m_baseImage.isEmpty()) {
        painter.fillRect(rail, m_railColor);
        // A faint edge keeps a dark rail visible on a dark panel.
        painter.setPen(Colors::color(Colors::faderTick));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rail.adjusted(0, 0, -1, -1));
    }
    if (m_fillLevel) {
        const QPoint centre = knobRect().center();
        QRect filled = rail;
        if (m_orientation == Qt::Vertical)
            filled.setTop(centre.y());
        else
            filled.setRight(centre.x());
        painter.fillRect(filled.intersected(rail), m_fillColor);
    }
}

void Fader::paintLevelMarks(QPainter &painter)
{
    const QRect rail = railRect();
    const QRect knob = knobRect();
    const float zoom = zoomFactor();
    const int length = qMax(3, scaledLength(5, zoom));
    const int gap = qMax(1, scaledLength(2, zoom));
    const QColor markColor(200, 200, 200);
    painter.save();
    painter.setPen(QPen(markColor, qMax(1, scaledLength(1, zoom))));
    const QFontMetrics metrics(font());
    m_levels.resolvePositions(*this);
    for (const LevelList::Level &level : m_levels.levels()) {
        if (!level.hasPosition())
            continue;
        const int p = ratioToKnobPosition(level.position);
        if (m_orientation == Qt::Vertical) {
            const int y = knobStartFor(p) + knob.height() / 2;
            // Outside the knob's width, so the cap does not hide the marks beside it.
            const int left = qMin(rail.left(), knob.left()) - gap;
            const int right = qMax(rail.right(), knob.right()) + gap;
            painter.drawLine(left - length + 1, y, left, y);
            painter.drawLine(right, y, right + length - 1, y);
            const int room = left - length - gap;
            if (metrics.horizontalAdvance(level.label) <= room) {
                painter.drawText(QRect(0, y - metrics.height() / 2, room, metrics.height()),
                                 Qt::AlignRight | Qt::AlignVCenter, level.label);
            }
        } else {
            const int x = knobStartFor(p) + knob.width() / 2;
            const int top = qMin(rail.top(), knob.top()) - gap;
            const int bottom = qMax(rail.bottom(), knob.bottom()) + gap;
            painter.drawLine(x, top - length + 1, x, top);
            painter.drawLine(x, bottom, x, bottom + length - 1);
        }
    }
    painter.restore();
}

void Fader::paintKnob(QPainter &painter)
{
    const QRect knob = knobRect();
    if (knob.isEmpty())
        return;
    const QString base = hostCore() ? hostCore()->imageBasePath() : QString();
    const QPixmap pixmap = m_knobImage.pixmap(knob.size(), devicePixelRatioF(), base);
    if (!pixmap.isNull()) {
        painter.drawPixmap(knob, pixmap);
        return;
    }
    // A cap shaded across the grip, with a bright line at its centre.
    const QRectF body = QRectF(knob).adjusted(0.5, 0.5, -0.5, -0.5);
    QLinearGradient shade(body.topLeft(), m_orientation == Qt::Vertical ? body.bottomLeft() : body.topRight());
    shade.setColorAt(0, Colors::color(Colors::faderKnobLight));
    shade.setColorAt(0.5, Colors::color(Colors::faderKnobMid));
    shade.setColorAt(1, Colors::color(Colors::faderKnobDark));
    const qreal radius = qMax<qreal>(1.0, 2 * zoomFactor());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Colors::color(Colors::faderKnobOutline), 1));
    painter.setBrush(shade);
    painter.drawRoundedRect(body, radius, radius);
    painter.restore();

    const int line = qMax(1, scaledLength(2, zoomFactor()));
    const QColor lineColor(245, 245, 245);
    if (m_orientation == Qt::Vertical)
        painter.fillRect(QRect(knob.left() + 2, knob.top() + (knob.height() - line) / 2, knob.width() - 4, line),
                         lineColor);
    else
        painter.fillRect(QRect(knob.left() + (knob.width() - line) / 2, knob.top() + 2, line, knob.height() - 4),
                         lineColor);
}

void Fader::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(DisabledLook::opacity);
    if (!m_baseImage.isEmpty()) {
        const QString base = hostCore() ? hostCore()->imageBasePath() : QString();
        const QPixmap pixmap = m_baseImage.pixmap(size(), devicePixelRatioF(), base);
        if (!pixmap.isNull())
            painter.drawPixmap(rect(), pixmap);
    }
    paintRail(painter);
    paintLevelMarks(painter);
    paintKnob(painter);
    painter.setOpacity(1.0);
    paintBase(painter);
}
