#include "ShareFileLoader.h"

#include <QAtomicInt>
#include <QFile>
#include <QStringList>
#include <QtEndian>
#include <QtDebug>

#include <cstring>

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

bool shareFileLoader::load(const char *&data, quint32 &size)
{
    if (m_path.isEmpty())
        return false;

    if (!m_memory.attach(QSharedMemory::ReadWrite) && !m_memory.data()) {
        QFile file(m_path);
        if (!file.open(QIODevice::ReadOnly))
            return false;
        QByteArray bytes = file.readAll();
        file.close();
        if (m_transformed && !transformBytes(bytes))
            return false;

        const quint32 n = quint32(bytes.size());
        if (m_memory.create(int(n) + 4, QSharedMemory::ReadWrite)) {
            m_memory.lock();
            char *start = static_cast<char *>(m_memory.data());
            std::memset(start, 0, size_t(m_memory.size()));
            qToLittleEndian<quint32>(n, start);
            if (n)
                std::memcpy(start + 4, bytes.constData(), n);
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

    m_memory.lock();
    const char *start = static_cast<const char *>(m_memory.constData());
    if (m_memory.size() >= 4) {
        // Never hand out more than the segment holds, whatever its header says.
        const quint32 n = qFromLittleEndian<quint32>(start);
        size = qMin(n, quint32(m_memory.size() - 4));
        data = start + 4;
    } else {
        size = 0;
        data = nullptr;
    }
    m_memory.unlock();
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
