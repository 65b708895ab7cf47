#ifndef CORVANE_SHAREFILELOADER_H
#define CORVANE_SHAREFILELOADER_H

#include <QByteArray>
#include <QSharedMemory>
#include <QString>

/*!
    \class shareFileLoader
    \brief Serves the bytes of one file from a named shared-memory segment.

    The first loader for a file, in any process, reads it from disk and
    publishes it in a segment keyed by the file's normalised path; every later
    loader for that path attaches to the segment and never touches the disk.

    Segment layout: offset 0, 4 bytes: payload size N, 32-bit unsigned,
    little-endian; offset 4, N bytes: the file's bytes. The segment is
    created with size N + 4; the payload is written first and the count
    last, so a count other than 0 always stands for a complete payload.

    Qt's segment lock does not protect the contents on every platform (a
    failed create() elsewhere can reset it), so readers rely on the count:
    a reader that finds 0 in a segment larger than its header waits a
    bounded time for the creator. A segment that no live creator vouches
    for (left behind by a killed process) is served only when it matches
    the file on disk; otherwise it is dropped and the file published anew.

    The transformed mode (a byte-wise conversion before publishing) is not
    implemented: a transformed loader that has to read the file itself
    answers false, as the Part prescribes for a failed transform. It can
    still attach to a segment that another loader published. No caller in
    this library selects that mode.
*/
class shareFileLoader
{
public:
    shareFileLoader(const QString &path, bool transformed);
    virtual ~shareFileLoader();

    shareFileLoader(const shareFileLoader &) = delete;
    shareFileLoader &operator=(const shareFileLoader &) = delete;

    /*!
        Makes the file's bytes available: \a data points at the payload inside
        the segment (valid while this loader lives), \a size is its length.
        False for an empty path or a file that cannot be read. When the
        segment can be neither attached nor created, logs
        "shareFileLoader::load share memory creaet error. error code=[N]" at
        debug level and answers true with \a data null and \a size 0.
    */
    bool load(const char *&data, quint32 &size);
    //! Calls the former and, on true, appends the payload to \a bytes.
    bool load(QByteArray &bytes);

    //! The normalised path, also the segment key.
    QString path() const { return m_path; }
    bool isTransformed() const { return m_transformed; }
    bool isAttached() const { return m_memory.isAttached(); }

    //! Path normalisation of the constructor.
    static QString normalisePath(const QString &path);

    //! How many loaders this process has constructed (diagnostics, tests).
    static int constructedCount();

private:
    enum class Segment { Ready, Unpublished, Stale, Unreadable };

    bool readFile(QByteArray &bytes) const;
    Segment readSegment(const char *&data, quint32 &size);
    bool publish(const char *&data, quint32 &size);
    bool segmentIsOrphan() const;
    void dropSegment();

    QString m_path;
    bool m_transformed;
    QSharedMemory m_memory;
};

#endif
