#include "data/ParameterKeys.h"
#include "core/Colors.h"
#include "core/DisabledLook.h"
#include "core/Saturating.h"
#include "Dial.h"

#include <QDomElement>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

const QColor Dial::defaultColor(88, 88, 94, 255);
const QColor Dial::defaultIndicatorColor(64, 160, 255, 255);
const char *const Dial::defaultIndexImage = "Widget/Dial/index.svg";

Dial::Dial(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : ValueInputWidget<BaseWidget>(valueInput, hostCore, registry, parent)
{
    // Up and Down need the focus; a click gives it.
    setFocusPolicy(Qt::StrongFocus);
}

const TagTable &Dial::tags()
{
    static const TagTable table = TagTable::of<Dial>(&BaseWidget::tags(), {
        {"Image", &Dial::readImage},
        {"Color", TagTable::color("color")},
        {"Round", &Dial::readRound},
        {"Indicator", &Dial::readIndicator},
        {"LevelList", &Dial::readLevelList},
    });
    return table;
}

// ---------------------------------------------------------------------------
// State

void Dial::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
}

void Dial::setKnobImage(const QString &name)
{
    if (m_knobImage.setName(name))
        update();
}

void Dial::setIndexImage(const QString &name)
{
    if (m_indexImage.setName(name))
        update();
}

void Dial::setIndicatorShown(bool shown)
{
    if (m_indicatorShown == shown)
        return;
    m_indicatorShown = shown;
    update();
}

void Dial::setIndicatorColor(const QColor &color)
{
    if (m_indicatorColor == color)
        return;
    m_indicatorColor = color;
    if (m_indicatorShown)
        update();
}

void Dial::setIndicatorStart(int start)
{
    start = qBound(0, start, dragRange);
    if (m_indicatorStart == start)
        return;
    m_indicatorStart = qint16(start);
    if (m_indicatorShown)
        update();
}

void Dial::setIndicatorWidth(int width)
{
    width = qBound(0, width, 0x7fff);
    if (m_indicatorWidth == width)
        return;
    m_indicatorWidth = qint16(width);
    if (m_indicatorShown)
        update();
}

QRect Dial::scaled(const QRect &design) const
{
    const float zoom = zoomFactor();
    return QRect(Saturating::pixels(design.x(), zoom), Saturating::pixels(design.y(), zoom),
                 Saturating::pixels(design.width(), zoom), Saturating::pixels(design.height(), zoom));
}

QRect Dial::faceRect() const
{
    return m_faceRect.isEmpty() ? QRect() : scaled(m_faceRect);
}

QRect Dial::indicatorRect() const
{
    if (!m_indicatorRect.isNull())
        return scaled(m_indicatorRect);
    const int side = height() - 2;
    return QRect(1, 1, side, side);
}

QRect Dial::knobRect() const
{
    const QRect face = faceRect();
    if (!face.isEmpty())
        return face;
    // Without a face the knob is the largest centred circle that leaves the
    // arc free.
    QRect area = rect();
    int inset = 1;
    if (m_indicatorShown) {
        area = indicatorRect();
        inset = qMax(1, Saturating::pixels(m_indicatorWidth, zoomFactor()))
                + qMax(2, Saturating::pixels(3, zoomFactor()));
    }
    const int side = qMax(0, qMin(area.width(), area.height()) - 2 * inset);
    QRect knob(0, 0, side, side);
    knob.moveCenter(area.center());
    return knob;
}

bool Dial::setZoom(float zoom)
{
    if (!BaseWidget::setZoom(zoom))
        return false;
    update();
    return true;
}

// ---------------------------------------------------------------------------
// Description

bool Dial::readImage(const QDomElement &e)
{
    // Descriptions write "knob" for the knob; only "index" is told apart.
    if (e.attribute(QStringLiteral("type")) == QLatin1String("index"))
        setIndexImage(e.text().trimmed());
    else
        setKnobImage(e.text().trimmed());
    return true;
}

bool Dial::readRound(const QDomElement &e)
{
    m_faceRect = parseRect(e);
    update();
    return true;
}

bool Dial::readIndicator(const QDomElement &e)
{
    const QColor color = parseColor(e.firstChildElement(QStringLiteral("Color")).text());
    if (color.isValid())
        m_indicatorColor = color;
    bool ok = false;
    const int start = e.firstChildElement(QStringLiteral("Start")).text().trimmed().toInt(&ok);
    if (ok)
        m_indicatorStart = qint16(qBound(0, start, dragRange));
    const int width = e.firstChildElement(QStringLiteral("Width")).text().trimmed().toInt(&ok);
    if (ok)
        m_indicatorWidth = qint16(qBound(0, width, 0x7fff));
    const QDomElement r = e.firstChildElement(QStringLiteral("Rect"));
    if (!r.isNull())
        m_indicatorRect = parseRect(r);
    m_indicatorShown = true;
    update();
    return true;
}

bool Dial::readLevelList(const QDomElement &e)
{
    return m_levels.read(e);
}

// ---------------------------------------------------------------------------
// Values and requests

void Dial::ownValueChanged(int index)
{
    if (index != 0)
        return;
    const double shown = qBound(0.0, position(0), 1.0);
    if (shown == m_shownPosition)
        return;
    m_shownPosition = shown;
    update();
}

// ---------------------------------------------------------------------------
// Painting

namespace {

void drawTurned(QPainter &painter, const QPixmap &pixmap, const QRectF &target, double angle)
{
    painter.save();
    painter.translate(target.center());
    painter.rotate(angle);
    painter.drawPixmap(QRectF(-target.width() / 2, -target.height() / 2, target.width(), target.height()), pixmap,
                       QRectF(pixmap.rect()));
    painter.restore();
}

// Qt counts arc angles counter-clockwise from 3 o'clock.
int arcAngle(double clockwiseFromTwelve)
{
    return int(std::lround((90.0 - clockwiseFromTwelve) * 16));
}

} // namespace

void Dial::paintIndicator(QPainter &painter)
{
    const qreal penWidth = qMax<qreal>(1.0, m_indicatorWidth * zoomFactor());
    const QRectF arcRect = QRectF(indicatorRect()).adjusted(penWidth / 2, penWidth / 2, -penWidth / 2, -penWidth / 2);
    if (arcRect.width() <= 0 || arcRect.height() <= 0)
        return;
    painter.save();
    painter.setBrush(Qt::NoBrush);

    // The whole travel as a faint groove, so an empty arc still shows its range.
    QColor groove = m_indicatorColor;
    groove.setAlphaF(groove.alphaF() * 0.25);
    painter.setPen(QPen(groove, penWidth, Qt::SolidLine, Qt::FlatCap));
    painter.drawArc(arcRect, arcAngle(minimumAngle), -int(sweep * 16));

    const double from = minimumAngle + m_indicatorStart;
    const double to = angle();
    if (from != to) {
        painter.setPen(QPen(m_indicatorColor, penWidth, Qt::SolidLine, Qt::FlatCap));
        painter.drawArc(arcRect, arcAngle(from), -int(std::lround((to - from) * 16)));
    }
    painter.restore();
}

void Dial::paintKnob(QPainter &painter)
{
    const QRect knob = knobRect();
    if (knob.isEmpty())
        return;
    const qreal dpr = devicePixelRatioF();
    const QString base = hostCore() ? hostCore()->imageBasePath() : QString();
    const double turn = angle();

    const QPixmap knobPixmap = m_knobImage.pixmap(knob.size(), dpr, base);
    if (!knobPixmap.isNull()) {
        drawTurned(painter, knobPixmap, knob, turn);
    } else {
        // A shaded disc lit from the upper left, with a darker rim.
        const QRectF body = QRectF(knob).adjusted(0.5, 0.5, -0.5, -0.5);
        QRadialGradient shade(body.center() - QPointF(body.width() / 5, body.height() / 5), body.width() * 0.75);
        shade.setColorAt(0, m_color.lighter(140));
        shade.setColorAt(1, m_color.darker(130));
        painter.setPen(QPen(m_color.darker(200), 1));
        painter.setBrush(shade);
        painter.drawEllipse(body);
    }

    const QPixmap indexPixmap = m_indexImage.pixmap(knob.size(), dpr, base);
    if (!indexPixmap.isNull()) {
        drawTurned(painter, indexPixmap, knob, turn);
    } else if (knobPixmap.isNull()) {
        // No pointer image either: a plain pointer keeps the drawn knob readable.
        painter.save();
        painter.translate(QRectF(knob).center());
        painter.rotate(turn);
        const qreal r = knob.width() / 2.0;
        painter.setPen(QPen(Colors::color(Colors::dialPointer), qMax<qreal>(1.5, r * 0.16), Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -r * 0.76), QPointF(0, -r * 0.24));
        painter.restore();
    }
}

void Dial::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (!isEnabled())
        painter.setOpacity(DisabledLook::opacity);

    if (m_indicatorShown)
        paintIndicator(painter);
    const QRect face = faceRect();
    if (!face.isEmpty()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_color);
        painter.drawEllipse(QRectF(face));
    }
    paintKnob(painter);

    painter.setOpacity(1.0);
    paintBase(painter);
}
