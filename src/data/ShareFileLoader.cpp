#include "ShareFileLoader.h"

#include <QAtomicInt>
#include <QFile>
#include <QStringList>
#include <QtEndian>
#include <QtDebug>

#include <QDeadlineTimer>
#include <QThread>

#include <cerrno>
#include <cstring>
#include <limits>

#if defined(Q_OS_UNIX) && !defined(QT_POSIX_IPC)
#include <signal.h>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/types.h>
#endif

namespace {

QAtomicInt loadersConstructed;

// The transform step of the transformed mode. Not implemented: it fails,
// so a transformed loader never publishes a file itself.
bool transformBytes(QByteArray &bytes)
{
    Q_UNUSED(bytes);
    return false;
}

} // namespace

QString shareFileLoader::normalisePath(const QString &path)
{
    const QLatin1String dot("."), dotDot("..");
    QStringList parts = path.split(QLatin1Char('/'), Qt::KeepEmptyParts);

    bool rebuild = true;
    while (parts.contains(dot)) {
        const int i = parts.indexOf(dot);
        if (i == 0) {
            rebuild = false;
            break;
        }
        parts.removeAt(i);
    }

    while (parts.contains(dotDot)) {
        const int i = parts.indexOf(dotDot);
        if (i < 2)
            return path;
        parts.removeAt(i);
        parts.removeAt(i - 1);
    }

    if (!rebuild)
        return path;

    // Each element is joined onto the path built so far as a file name
    // under a directory, with one "/" between them. Empty elements (a
    // leading "/", a "//" prefix) therefore survive, and a path without "."
    // or ".." comes back exactly as given.
    QString built = parts.value(0);
    for (int i = 1; i < parts.size(); ++i) {
        built += QLatin1Char('/');
        built += parts.at(i);
    }
    return built;
}

int shareFileLoader::constructedCount()
{
    return loadersConstructed.loadAcquire();
}

shareFileLoader::shareFileLoader(const QString &path, bool transformed)
    : m_path(normalisePath(path))
    , m_transformed(transformed)
    , m_memory(m_path)
{
    loadersConstructed.fetchAndAddOrdered(1);
}

shareFileLoader::~shareFileLoader() = default;

namespace {

// The count at offset 0 is written last, with release order, so a reader
// that sees a count also sees the payload behind it; a count of 0 in a
// segment that is larger than its header means "not written yet".
quint32 readCount(const void *start)
{
    const auto *count = static_cast<const QBasicAtomicInteger<quint32> *>(start);
    return qFromLittleEndian(count->loadAcquire());
}

void publishCount(void *start, quint32 n)
{
    auto *count = static_cast<QBasicAtomicInteger<quint32> *>(start);
    count->storeRelease(qToLittleEndian(n));
}

// How long a reader waits for the creator to publish the count.
constexpr int PublishWaitMs = 3000;

} // namespace

bool shareFileLoader::segmentIsOrphan() const
{
#if defined(Q_OS_UNIX) && !defined(QT_POSIX_IPC)
    // Qt keys System V segments through ftok() on the native key file.
    const QByteArray keyFile = QFile::encodeName(m_memory.nativeKey());
    const key_t key = ::ftok(keyFile.constData(), 'Q');
    if (key == key_t(-1))
        return false;
    const int id = ::shmget(key, 0, 0);
    if (id == -1)
        return true; // removed under us: what we map is nobody else's
    struct shmid_ds info;
    if (::shmctl(id, IPC_STAT, &info) != 0)
        return false;
    if (qint64(info.shm_segsz) != qint64(m_memory.size()))
        return true; // the key names another segment now
    // Segments are removed when their last loader detaches, so one that
    // only we hold, or whose creator is gone, was left by a killed process
    // and may hold an older version of the file.
    if (info.shm_nattch <= 1)
        return true;
    return ::kill(info.shm_cpid, 0) != 0 && errno == ESRCH;
#else
    // Named mappings vanish with their last handle, killed or not.
    return false;
#endif
}

void shareFileLoader::dropSegment()
{
#if defined(Q_OS_UNIX) && !defined(QT_POSIX_IPC)
    const QByteArray keyFile = QFile::encodeName(m_memory.nativeKey());
    const key_t key = ::ftok(keyFile.constData(), 'Q');
    const int id = key == key_t(-1) ? -1 : ::shmget(key, 0, 0);
    struct shmid_ds info;
    // Free the key for a fresh segment; holders keep their mapping.
    if (id != -1 && ::shmctl(id, IPC_STAT, &info) == 0
        && qint64(info.shm_segsz) == qint64(m_memory.size()))
        ::shmctl(id, IPC_RMID, nullptr);
#endif
    m_memory.detach();
}

bool shareFileLoader::load(const char *&data, quint32 &size)
{
    if (m_path.isEmpty())
        return false;

    // A segment found stale is dropped and the load starts over once.
    if (m_memory.isAttached()) {
        // Checked when this loader attached; earlier results stay valid.
        const char *start = static_cast<const char *>(m_memory.constData());
        data = start + 4;
        size = readCount(start);
        return true;
    }

    for (int attempt = 0; attempt < 2; ++attempt) {
        if (m_memory.attach(QSharedMemory::ReadWrite)) {
            switch (readSegment(data, size)) {
            case Segment::Ready:
                return true;
            case Segment::Unpublished:
                data = nullptr;
                size = 0;
                return true;
            case Segment::Stale:
                dropSegment();
                continue;
            case Segment::Unreadable:
                dropSegment();
                return false;
            }
        }
        return publish(data, size);
    }
    data = nullptr;
    size = 0;
    return true;
}

bool shareFileLoader::readFile(QByteArray &bytes) const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    bytes = file.readAll();
    file.close();
    return !m_transformed || transformBytes(bytes);
}

shareFileLoader::Segment shareFileLoader::readSegment(const char *&data, quint32 &size)
{
    const qint64 capacity = qint64(m_memory.size()) - 4;
    if (capacity < 0)
        return Segment::Unpublished;
    const char *start = static_cast<const char *>(m_memory.constData());

    m_memory.lock();
    quint32 n = readCount(start);
    m_memory.unlock();

    const bool orphan = segmentIsOrphan();
    if (!orphan) {
        // Attached between the creator's create() and its count: wait for it.
        QDeadlineTimer deadline(PublishWaitMs);
        while (n == 0 && capacity > 0 && !deadline.hasExpired() && !segmentIsOrphan()) {
            QThread::msleep(2);
            n = readCount(start);
        }
    }
    if (qint64(n) > capacity)
        return orphan ? Segment::Stale : Segment::Unpublished;

    if (orphan || (n == 0 && capacity > 0)) {
        // Nobody vouches for this segment: serve it only when it still
        // holds the file as it is on disk.
        QByteArray bytes;
        if (!readFile(bytes))
            return Segment::Unreadable;
        if (quint32(bytes.size()) != n || std::memcmp(bytes.constData(), start + 4, n) != 0)
            return Segment::Stale;
    }
    data = start + 4;
    size = n;
    return Segment::Ready;
}

bool shareFileLoader::publish(const char *&data, quint32 &size)
{
    QByteArray bytes;
    if (!readFile(bytes))
        return false;

    const quint32 n = quint32(bytes.size());
    if (bytes.size() <= std::numeric_limits<int>::max() - 4
        && m_memory.create(int(n) + 4, QSharedMemory::ReadWrite)) {
        m_memory.lock();
        char *start = static_cast<char *>(m_memory.data());
        // Payload first, count last: readers that attach before the count
        // is set find 0 and wait for it.
        std::memset(start, 0, 4);
        if (n)
            std::memcpy(start + 4, bytes.constData(), n);
        if (m_memory.size() > int(n) + 4)
            std::memset(start + 4 + n, 0, size_t(m_memory.size()) - n - 4);
        publishCount(start, n);
        data = start + 4;
        size = n;
        m_memory.unlock();
        return true;
    }

    qDebug().noquote().nospace()
        << "shareFileLoader::load"
        << QString::asprintf(" share memory creaet error. error code=[%d]",
                             int(m_memory.error()));
    data = nullptr;
    size = 0;
    return true;
}

bool shareFileLoader::load(QByteArray &bytes)
{
    const char *data = nullptr;
    quint32 size = 0;
    if (!load(data, size))
        return false;
    if (data)
        bytes.append(data, int(size));
    return true;
}
