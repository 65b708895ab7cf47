// Helper process for tst_data_sharefileloader: loads one file through a
// shareFileLoader and prints what it got.
//   data_shm_reader PATH [--hold] [--digest] [--gate FILE]
//   data_shm_reader PATH --plant-half
// Prints "ok HEX" (bytes in hex; with --digest "ok SIZE SHA1HEX" instead),
// "nodata" (true without data) or "fail", one line. With --gate it waits
// until FILE exists before loading, so that several helpers start together.
// With --hold it keeps its loader (and so the segment) until a line arrives
// on standard input or the input closes.
// --plant-half plays a creator killed while writing: it creates the segment
// for PATH, copies half of the file into it without the count, prints
// "planted" and waits to be killed.
#include "data/ShareFileLoader.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QSharedMemory>
#include <QStringList>
#include <QThread>

#include <cstdio>
#include <cstring>

namespace {

int plantHalf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    const QByteArray bytes = file.readAll();
    QSharedMemory memory(shareFileLoader::normalisePath(path));
    if (!memory.create(bytes.size() + 4))
        return 1;
    std::memcpy(static_cast<char *>(memory.data()) + 4, bytes.constData(), size_t(bytes.size() / 2));
    std::printf("planted\n");
    std::fflush(stdout);
    for (;;)
        QThread::sleep(1);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2)
        return 2;
    if (args.contains(QStringLiteral("--plant-half")))
        return plantHalf(args.at(1));

    const int gate = args.indexOf(QStringLiteral("--gate"));
    if (gate > 0 && gate + 1 < args.size()) {
        while (!QFile::exists(args.at(gate + 1)))
            QThread::usleep(200);
    }

    shareFileLoader loader(args.at(1), false);
    const char *data = nullptr;
    quint32 size = 0;
    if (!loader.load(data, size)) {
        std::printf("fail\n");
    } else if (!data) {
        std::printf("nodata\n");
    } else if (args.contains(QStringLiteral("--digest"))) {
        const QByteArray sha = QCryptographicHash::hash(QByteArray::fromRawData(data, int(size)),
                                                        QCryptographicHash::Sha1).toHex();
        std::printf("ok %u %s\n", unsigned(size), sha.constData());
    } else {
        const QByteArray hex = QByteArray(data, int(size)).toHex();
        std::printf("ok %s\n", hex.constData());
    }
    std::fflush(stdout);

    if (args.contains(QStringLiteral("--hold"))) {
        int c;
        while ((c = std::getchar()) != EOF && c != '\n') { }
    }
    return 0;
}
