// Helper process for tst_data_sharefileloader: loads one file through a
// shareFileLoader and prints what it got.
//   data_shm_reader PATH [--hold]
// Prints "ok HEX" (bytes in hex), "nodata" (true without data) or "fail",
// one line. With --hold it keeps its loader (and so the segment) until a
// line arrives on standard input or the input closes.
#include "data/ShareFileLoader.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2)
        return 2;

    shareFileLoader loader(args.at(1), false);
    const char *data = nullptr;
    quint32 size = 0;
    if (!loader.load(data, size)) {
        std::printf("fail\n");
    } else if (!data) {
        std::printf("nodata\n");
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
