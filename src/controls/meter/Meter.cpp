#include "Meter.h"
#include "core/Colors.h"

#include <data/ParameterKeys.h>

#include <QLinearGradient>
#include <QPainter>
#include <QPixmapCache>

#include <cmath>
#include <limits>

namespace {

const QLatin1String onlineText("online");

// The unlit part of the built-in bar: dark enough to read as off, visible on
// a dark panel.
constexpr qreal trackOpacity = 0.18;

} // namespace

Meter::Meter(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
    // Never WA_OpaquePaintEvent, not even while lit over the whole height
    // with an opaque image: the unlit part shows the panel through, and
    // switching the attribute with the level would make Qt gather the
    // panel's opaque children anew at every such change.
}

Meter::~Meter() = default;

const TagTable &Meter::tags()
{
    static const TagTable table = TagTable::of<Meter>(&BaseWidget::tags(), {
        {"Image", TagTable::trimmedText("image").refusingEmpty()},
        {"BuiltInBar", &Meter::readBuiltInBar},
    });
    return table;
}

bool Meter::readBuiltInBar(const QDomElement &e)
{
    const bool on = isTrue(e);
    if (on != m_builtInBar) {
        m_builtInBar = on;
        m_shownSize = QSize();
        update();
    }
    return true;
}

void Meter::setImage(const QString &name)
{
    if (!m_source.setName(name))
        return;
    m_shownSize = QSize();
    update();
}

QString Meter::imagePath() const
{
    return m_source.path(hostCore() ? hostCore()->imageBasePath() : QString());
}

QGradientStops Meter::fallbackStops() const
{
    return {{0.0, Colors::color(Colors::meterLow)}, {0.6, Colors::color(Colors::meterMid)},
            {0.8, Colors::color(Colors::meterHigh)}, {1.0, Colors::color(Colors::meterClip)}};
}

QPixmap Meter::fallbackImage(const QSize &size, qreal dpr) const
{
    const QGradientStops stops = fallbackStops();
    dpr = ImageSource::boundedPixelRatio(size, dpr);
    const QSize pixels = (QSizeF(size) * dpr).toSize();
    if (pixels.isEmpty())
        return QPixmap();
    QString key = QStringLiteral("corvane:meter-bar:%1:%2x%3").arg(litFromTop() ? 'v' : '^').arg(pixels.width()).arg(pixels.height());
    for (const QGradientStop &s : stops)
        key += QStringLiteral(":%1=%2").arg(s.first).arg(s.second.rgba(), 8, 16, QLatin1Char('0'));
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;

    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(dpr);
    QPainter p(&image);
    const QRectF r(QPointF(0, 0), QSizeF(size));
    QLinearGradient gradient(litFromTop() ? r.topLeft() : r.bottomLeft(), litFromTop() ? r.bottomLeft() : r.topLeft());
    gradient.setStops(stops);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.fillRect(r, gradient);
    p.end();
    pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(dpr);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

namespace {

// The built-in bar dimmed, shared by every meter that shows the same bar.
QPixmap trackImage(const QPixmap &bar)
{
    if (bar.isNull())
        return QPixmap();
    const QString key = QStringLiteral("corvane:meter-track:%1").arg(bar.cacheKey());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    QImage track(bar.size(), QImage::Format_ARGB32_Premultiplied);
    track.setDevicePixelRatio(bar.devicePixelRatio());
    track.fill(Qt::transparent);
    QPainter p(&track);
    p.setOpacity(trackOpacity);
    p.drawPixmap(0, 0, bar);
    p.end();
    pixmap = QPixmap::fromImage(track);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

bool fullyOpaque(const QPixmap &pixmap)
{
    if (pixmap.isNull())
        return false;
    if (!pixmap.hasAlphaChannel())
        return true;
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(line[x]) != 255)
                return false;
        }
    }
    return true;
}

} // namespace

QPixmap Meter::meterImage() const
{
    const qreal dpr = ImageSource::boundedPixelRatio(size(), devicePixelRatioF());
    if (m_shownSize != size() || m_shown.devicePixelRatio() != dpr) {
        m_shownSize = size();
        m_shown = ImageSource::render(imagePath(), size(), dpr);
        m_shownIsImage = !m_shown.isNull();
        m_track = QPixmap();
        // A missing or unreadable image paints nothing unless the panel
        // asked for the built-in bar.
        if (!m_shownIsImage && m_builtInBar && !size().isEmpty()) {
            m_shown = fallbackImage(size(), dpr);
            m_track = trackImage(m_shown);
        }
        m_shownOpaque = !m_track.isNull() && fullyOpaque(m_shown);
    }
    return m_shown;
}

bool Meter::isImageLoaded() const
{
    meterImage();
    return m_shownIsImage;
}

int Meter::pixelsOf(double v, int height)
{
    if (!std::isfinite(v) || height <= 0)
        return 0;
    return qBound(0, int(height * qBound(0.0, v, 1.0) + 0.5), height);
}

void Meter::setLevel(int pixels)
{
    pixels = qBound(0, pixels, int(std::numeric_limits<qint16>::max()));
    if (m_level == pixels)
        return;
    const int old = m_level;
    m_level = qint16(pixels);
    updateBetween(old, pixels);
    emit levelChanged(pixels);
}

bool Meter::isOnline() const
{
    const int i = onlineIndex();
    // Selectors sit behind the control's own addresses: a meter bound
    // without an online state may have one in that place.
    if (i >= addressCount() || isSelector(i))
        return true;
    return positionText(i) == onlineText;
}

QRect Meter::litRect(int pixels) const
{
    return litFromTop() ? QRect(0, 0, width(), pixels) : QRect(0, height() - pixels, width(), pixels);
}

void Meter::updateBetween(int fromPixels, int toPixels)
{
    // The whole meter rather than the rows between the two heights. Qt joins
    // what every widget asks to repaint in a frame into one region; beside
    // each other, rectangles of different heights never merge, so a frame of
    // many meters took time growing with the square of their number. Whole
    // meters in a row share one band and join at its end.
    if (qBound(0, fromPixels, height()) != qBound(0, toPixels, height()))
        update();
}

void Meter::readLevel()
{
    m_levelPosition = isOnline() ? position(0) : 0.0;
    setLevel(levelPixels(m_levelPosition));
}

void Meter::ownValueChanged(int index)
{
    if (index == 0) {
        m_levelPosition = position(0);
        setLevel(levelPixels(m_levelPosition));
    } else if (index == onlineIndex()) {
        readLevel();
    }
}

void Meter::resizeEvent(QResizeEvent *event)
{
    BaseWidget::resizeEvent(event);
    // The level is kept in pixels; a zoom must not leave it at the old scale.
    setLevel(levelPixels(m_levelPosition));
}

void Meter::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintMeter(painter);
    paintBase(painter);
}

namespace {

// Draws the part of \a pixmap, made at the widget's size, that lies in \a
// area. A source rectangle is much cheaper than a clip, which the painter
// would intersect with the paint event's region and then undo.
void drawPart(QPainter &painter, const QPixmap &pixmap, const QRect &area)
{
    if (area.isEmpty())
        return;
    const qreal dpr = pixmap.devicePixelRatio();
    painter.drawPixmap(QRectF(area), pixmap, QRectF(QPointF(area.topLeft()) * dpr, QSizeF(area.size()) * dpr));
}

} // namespace

void Meter::paintMeter(QPainter &painter)
{
    const QPixmap image = meterImage();
    if (image.isNull())
        return;
    if (!m_track.isNull()) {
        // The track does not show where an opaque bar is lit.
        const int litRows = m_shownOpaque ? qMin(int(m_level), height()) : 0;
        drawPart(painter, m_track,
                 litFromTop() ? QRect(0, litRows, width(), height() - litRows)
                              : QRect(0, 0, width(), height() - litRows));
    }
    if (m_level > 0)
        drawPart(painter, image, litRect(qMin(int(m_level), height())));
}
