#include "ImageSource.h"

#include <QDir>
#include <QFileInfo>
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
    }
    return m_path;
}

QPixmap ImageSource::pixmap(const QSize &size, qreal devicePixelRatio, const QString &basePath) const
{
    const QString file = path(basePath);
    return file.isEmpty() ? QPixmap() : render(file, size, devicePixelRatio);
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

QPixmap ImageSource::render(const QString &path, const QSize &size, qreal devicePixelRatio)
{
    if (path.isEmpty() || size.isEmpty())
        return QPixmap();
    devicePixelRatio = boundedPixelRatio(size, devicePixelRatio);
    const QSize pixels = (QSizeF(size) * devicePixelRatio).toSize();
    if (pixels.isEmpty())
        return QPixmap();
    const QString key = QStringLiteral("corvane:%1:%2x%3").arg(path).arg(pixels.width()).arg(pixels.height());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;

    QImage image;
    if (path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)
        || path.endsWith(QLatin1String(".svgz"), Qt::CaseInsensitive)) {
        QSvgRenderer renderer(path);
        if (!renderer.isValid())
            return QPixmap();
        image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(pixels)));
    } else {
        QImageReader reader(path);
        // Scaling while decoding keeps big artwork cheap.
        if (reader.supportsOption(QImageIOHandler::ScaledSize))
            reader.setScaledSize(pixels);
        image = reader.read();
        if (image.isNull())
            return QPixmap();
        if (image.size() != pixels)
            image = image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}
