#include "Meter.h"

#include <data/ParameterKeys.h>

#include <QCache>
#include <QFileInfo>
#include <QImageReader>
#include <QLinearGradient>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>
#include <limits>

namespace {

const QLatin1String addrTypeKey("AddrType");
const QLatin1String onlineText("online");

// The unlit part of the built-in bar: dark enough to read as off, visible on
// a dark panel.
constexpr qreal trackOpacity = 0.18;

// Renderings shared by every meter, keyed by file, size and pixel ratio;
// the cost is in kilobytes.
QCache<QString, QImage> &imageCache()
{
    static QCache<QString, QImage> cache(16 * 1024);
    return cache;
}

QString cacheKey(const QString &what, const QSize &size, qreal dpr)
{
    return QStringLiteral("%1|%2x%3@%4").arg(what).arg(size.width()).arg(size.height()).arg(dpr);
}

void insertIntoCache(const QString &key, const QImage &image)
{
    imageCache().insert(key, new QImage(image), qMax(1, int(image.sizeInBytes() / 1024)));
}

QImage loadImage(const QString &path, const QSize &pixels)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return QImage();
    const QString suffix = info.suffix().toLower();
    if (suffix == QLatin1String("svg") || suffix == QLatin1String("svgz")) {
        QSvgRenderer renderer(path);
        if (!renderer.isValid())
            return QImage();
        QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter p(&image);
        renderer.render(&p, QRectF(QPointF(0, 0), QSizeF(pixels)));
        return image;
    }
    // Raster images are stretched the way a vector image would be.
    QImageReader reader(path);
    reader.setScaledSize(pixels);
    QImage image = reader.read();
    if (image.isNull())
        return image;
    if (image.size() != pixels)
        image = image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

Meter::Meter(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
}

Meter::~Meter() = default;

const TagTable &Meter::tags()
{
    static const TagTable table = TagTable::of<Meter>(&BaseWidget::tags(), {
        {"Image", &Meter::readImage},
    });
    return table;
}

bool Meter::readImage(const QDomElement &e)
{
    const QString name = e.text().trimmed();
    if (name.isEmpty())
        return false;
    setImage(name);
    return true;
}

void Meter::setImage(const QString &name)
{
    if (m_image == name)
        return;
    m_image = name;
    m_shownSize = QSize();
    update();
}

QString Meter::imagePath() const
{
    if (m_image.isEmpty())
        return QString();
    // Descriptions written on Windows may use backslashes.
    QString name = m_image;
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString base = hostCore() ? hostCore()->imageBasePath() : QString();
    if (base.isEmpty() || base.endsWith(QLatin1Char('/')) || base.endsWith(QLatin1Char('\\')))
        return base + name;
    return base + QLatin1Char('/') + name;
}

QImage Meter::renderedImage(const QString &path, const QSize &size, qreal devicePixelRatio)
{
    if (path.isEmpty() || size.isEmpty())
        return QImage();
    const QString key = cacheKey(path, size, devicePixelRatio);
    if (const QImage *hit = imageCache().object(key))
        return *hit;
    QImage image = loadImage(path, size * devicePixelRatio);
    if (image.isNull())
        return image;
    image.setDevicePixelRatio(devicePixelRatio);
    insertIntoCache(key, image);
    return image;
}

void Meter::clearImageCache()
{
    imageCache().clear();
}

QGradientStops Meter::fallbackStops() const
{
    return {{0.0, QColor(32, 192, 64)}, {0.6, QColor(96, 208, 48)}, {0.8, QColor(232, 208, 40)},
            {1.0, QColor(232, 48, 32)}};
}

QImage Meter::fallbackImage(const QSize &size, qreal dpr) const
{
    const QGradientStops stops = fallbackStops();
    QString what = litFromTop() ? QStringLiteral("#bar-down") : QStringLiteral("#bar-up");
    for (const QGradientStop &s : stops)
        what += QStringLiteral(":%1=%2").arg(s.first).arg(s.second.rgba(), 8, 16, QLatin1Char('0'));
    const QString key = cacheKey(what, size, dpr);
    if (const QImage *hit = imageCache().object(key))
        return *hit;

    QImage image(size * dpr, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(dpr);
    QPainter p(&image);
    const QRectF r(QPointF(0, 0), QSizeF(size));
    QLinearGradient gradient(litFromTop() ? r.topLeft() : r.bottomLeft(), litFromTop() ? r.bottomLeft() : r.topLeft());
    gradient.setStops(stops);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.fillRect(r, gradient);
    p.end();
    insertIntoCache(key, image);
    return image;
}

QImage Meter::meterImage() const
{
    const qreal dpr = devicePixelRatioF();
    if (m_shownSize != size() || m_shown.devicePixelRatio() != dpr) {
        m_shownSize = size();
        m_shown = renderedImage(imagePath(), size(), dpr);
        m_shownIsImage = !m_shown.isNull();
        if (!m_shownIsImage && !size().isEmpty())
            m_shown = fallbackImage(size(), dpr);
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
    if (i >= addressCount() || !addressAt(i).key(addrTypeKey).isEmpty())
        return true;
    return positionText(i) == onlineText;
}

QRect Meter::litRect(int pixels) const
{
    return litFromTop() ? QRect(0, 0, width(), pixels) : QRect(0, height() - pixels, width(), pixels);
}

void Meter::updateBetween(int fromPixels, int toPixels)
{
    const int lo = qMin(fromPixels, toPixels);
    const int hi = qMax(fromPixels, toPixels);
    if (lo == hi)
        return;
    update(litFromTop() ? QRect(0, lo, width(), hi - lo) : QRect(0, height() - hi, width(), hi - lo));
}

void Meter::readLevel()
{
    m_levelPosition = isOnline() ? position(0) : 0.0;
    setLevel(levelPixels(m_levelPosition));
}

void Meter::addressValueChanged(int index)
{
    const QString type = addressAt(index).key(addrTypeKey);
    if (!type.isEmpty()) {
        typedAddressChanged(type, index);
    } else if (index == 0) {
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

void Meter::paintMeter(QPainter &painter)
{
    const QImage image = meterImage();
    if (image.isNull())
        return;
    if (!m_shownIsImage) {
        painter.save();
        painter.setOpacity(trackOpacity);
        painter.drawImage(QPoint(0, 0), image);
        painter.restore();
    }
    if (m_level <= 0)
        return;
    painter.save();
    painter.setClipRect(litRect(m_level));
    painter.drawImage(QPoint(0, 0), image);
    painter.restore();
}
