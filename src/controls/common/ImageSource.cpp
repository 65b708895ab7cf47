#include "ImageSource.h"

#include "core/Colors.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

bool ImageSource::setName(const QString &name)
{
    if (name == m_name)
        return false;
    m_name = name;
    m_resolved = false;
    return true;
}

QString ImageSource::path(const QString &basePath) const
{
    if (!m_resolved || basePath != m_basePath) {
        m_basePath = basePath;
        m_path = resolve(m_name, basePath);
        m_resolved = true;
        m_unreadable = false;
    }
    return m_path;
}

QPixmap ImageSource::pixmap(const QSize &size, qreal devicePixelRatio, const QString &basePath, Options options) const
{
    const QString file = path(basePath);
    if (file.isEmpty() || m_unreadable)
        return QPixmap();
    const QPixmap pixmap = render(file, size, devicePixelRatio, options);
    // Only a file that exists but does not decode is given up on; an empty size says nothing about it.
    if (pixmap.isNull() && !size.isEmpty() && !naturalSize(file).isValid())
        m_unreadable = true;
    return pixmap;
}

bool ImageSource::isSvg(const QString &path)
{
    return path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)
        || path.endsWith(QLatin1String(".svgz"), Qt::CaseInsensitive);
}

QSize ImageSource::naturalSize(const QString &path)
{
    // Asked on every paint of a kept-aspect image; reading a header each time is wasteful.
    static QHash<QString, QSize> sizes;
    const auto it = sizes.constFind(path);
    if (it != sizes.cend())
        return *it;
    QSize size;
    if (isSvg(path)) {
        QSvgRenderer renderer(path);
        if (renderer.isValid())
            size = renderer.defaultSize();
    } else {
        size = QImageReader(path).size();
    }
    sizes.insert(path, size);
    return size;
}

QString ImageSource::resolve(const QString &name, const QString &basePath)
{
    if (name.trimmed().isEmpty())
        return QString();
    // Descriptions written on Windows use backslashes.
    const QString clean = QDir::fromNativeSeparators(name.trimmed()).replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (QDir::isAbsolutePath(clean))
        return QFileInfo(clean).isFile() ? clean : QString();
    if (!basePath.isEmpty()) {
        const QString local = QDir(basePath).filePath(clean);
        if (QFileInfo(local).isFile())
            return local;
    }
    const QString resource = QLatin1String(":/") + clean;
    return QFileInfo(resource).isFile() ? resource : QString();
}

qreal ImageSource::boundedPixelRatio(const QSize &size, qreal devicePixelRatio)
{
    if (!(devicePixelRatio > 0) || !std::isfinite(devicePixelRatio))
        devicePixelRatio = 1.0;
    const double area = double(size.width()) * size.height() * devicePixelRatio * devicePixelRatio;
    // The tolerance makes the function idempotent: a bounded ratio stays as it is.
    if (size.isEmpty() || area <= double(maxImagePixels) * (1 + 1e-9))
        return devicePixelRatio;
    return devicePixelRatio * std::sqrt(double(maxImagePixels) / area);
}

namespace {

// The file at \a path at \a pixels, stretched or fitted; null when it cannot be read.
QImage readScaled(const QString &path, const QSize &pixels, bool keepAspect)
{
    if (ImageSource::isSvg(path)) {
        QSvgRenderer renderer(path);
        if (!renderer.isValid())
            return QImage();
        QSizeF target(pixels);
        if (keepAspect && !renderer.defaultSize().isEmpty())
            target = QSizeF(renderer.defaultSize()).scaled(target, Qt::KeepAspectRatio);
        QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter, QRectF(QPointF((pixels.width() - target.width()) / 2,
                                                 (pixels.height() - target.height()) / 2),
                                         target));
        return image;
    }
    QImageReader reader(path);
    QSize target = pixels;
    if (keepAspect) {
        const QSize natural = reader.size();
        if (natural.isValid() && !natural.isEmpty())
            target = natural.scaled(pixels, Qt::KeepAspectRatio);
        if (target.isEmpty())
            return QImage();
    }
    // Scaling while decoding keeps big artwork cheap.
    if (reader.supportsOption(QImageIOHandler::ScaledSize))
        reader.setScaledSize(target);
    QImage image = reader.read();
    if (image.isNull())
        return QImage();
    if (image.size() != target)
        image = image.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (target == pixels)
        return image;
    QImage centred(pixels, QImage::Format_ARGB32_Premultiplied);
    centred.fill(Qt::transparent);
    QPainter painter(&centred);
    painter.drawImage((pixels.width() - target.width()) / 2, (pixels.height() - target.height()) / 2, image);
    return centred;
}

} // namespace

QPixmap ImageSource::render(const QString &path, const QSize &size, qreal devicePixelRatio, Options options)
{
    if (path.isEmpty() || size.isEmpty())
        return QPixmap();
    devicePixelRatio = boundedPixelRatio(size, devicePixelRatio);
    const QSize pixels = (QSizeF(size) * devicePixelRatio).toSize();
    if (pixels.isEmpty())
        return QPixmap();
    const QString key = QStringLiteral("corvane:%1:%2x%3:%4")
                            .arg(path)
                            .arg(pixels.width())
                            .arg(pixels.height())
                            .arg(int(options));
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;

    QImage image;
    if (options & Pressed) {
        // Made from the plain rendering, which is cached on its own.
        const QPixmap plain = render(path, size, devicePixelRatio, options & ~Options(Pressed));
        if (plain.isNull())
            return QPixmap();
        image = plain.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
        painter.fillRect(image.rect(), QColor::fromRgba(Colors::pressedImageVeil));
    } else {
        image = readScaled(path, pixels, options & KeepAspect);
        if (image.isNull())
            return QPixmap();
    }
    pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}
