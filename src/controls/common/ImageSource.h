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
    name in its image folder. Names written with backslashes are read with
    slashes. SVG images are rendered with QSvgRenderer, other formats scaled
    smoothly, both at the device pixel ratio of the screen they are shown
    on, so a high-density screen gets a sharp picture rather than an
    enlarged one. Every rendering is cached by path, pixel size and options,
    so repainting a control does not render again.
*/
class ImageSource
{
public:
    enum Option {
        Stretch = 0x0,    //!< fills the size, aspect ratio ignored
        KeepAspect = 0x1, //!< as large as fits, centred, the rest transparent
        Pressed = 0x2,    //!< darkened where the image is opaque: the pressed look
    };
    Q_DECLARE_FLAGS(Options, Option)

    ImageSource() = default;
    explicit ImageSource(const QString &name) : m_name(name) { }

    QString name() const { return m_name; }
    //! False when \a name is the current name.
    bool setName(const QString &name);
    bool isEmpty() const { return m_name.isEmpty(); }

    //! The file the name resolves to against \a basePath; empty when there is none.
    QString path(const QString &basePath) const;
    //! Whether path() has looked the name up, and in which folder.
    bool isResolved() const { return m_resolved; }
    QString resolvedBasePath() const { return m_basePath; }
    /*!
        The image at \a size device-independent pixels; null when the name
        resolves to nothing or the file cannot be read. A file found
        unreadable is not read again until the name or the folder changes.
    */
    QPixmap pixmap(const QSize &size, qreal devicePixelRatio, const QString &basePath, Options options = Stretch) const;

    static QString resolve(const QString &name, const QString &basePath);
    //! Renders (or takes from the cache) the file at \a path.
    static QPixmap render(const QString &path, const QSize &size, qreal devicePixelRatio, Options options = Stretch);
    //! Whether \a path names an SVG image (plain or compressed), by its suffix.
    static bool isSvg(const QString &path);
    //! The size \a path declares (an SVG's default size, a bitmap's pixels); invalid when unreadable.
    static QSize naturalSize(const QString &path);

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
    mutable bool m_unreadable = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ImageSource::Options)

#endif
