#ifndef CORVANE_CONTROLS_COMMON_IMAGESOURCE_H
#define CORVANE_CONTROLS_COMMON_IMAGESOURCE_H

#include <QPixmap>
#include <QSize>
#include <QString>

/*!
    \class ImageSource
    \brief An image named in a panel description, drawn at any size.

    A name is looked up as an absolute path, then relative to the host's
    image folder, then as a resource of the plug-in (":/name"), so a
    description may override a built-in image by placing a file of the same
    name in its image folder. SVG images are rendered with QSvgRenderer,
    other formats scaled smoothly; every rendering is cached by path and
    pixel size, so repainting a control does not render again.
*/
class ImageSource
{
public:
    ImageSource() = default;
    explicit ImageSource(const QString &name) : m_name(name) { }

    QString name() const { return m_name; }
    //! False when \a name is the current name.
    bool setName(const QString &name);
    bool isEmpty() const { return m_name.isEmpty(); }

    //! The file the name resolves to against \a basePath; empty when there is none.
    QString path(const QString &basePath) const;
    //! The image at \a size device-independent pixels; null when the name resolves to nothing.
    QPixmap pixmap(const QSize &size, qreal devicePixelRatio, const QString &basePath) const;

    static QString resolve(const QString &name, const QString &basePath);
    //! Renders (or takes from the cache) the file at \a path.
    static QPixmap render(const QString &path, const QSize &size, qreal devicePixelRatio);

    //! The most pixels one rendering holds (64 MB at 32 bits a pixel).
    static constexpr qint64 maxImagePixels = qint64(4096) * 4096;
    /*!
        The device pixel ratio to render \a size at: \a devicePixelRatio, or
        less when that would exceed maxImagePixels. The painter then scales
        the smaller image up, so huge controls cost bounded memory.
    */
    static qreal boundedPixelRatio(const QSize &size, qreal devicePixelRatio);

private:
    QString m_name;
    mutable QString m_basePath;
    mutable QString m_path;
    mutable bool m_resolved = false;
};

#endif
