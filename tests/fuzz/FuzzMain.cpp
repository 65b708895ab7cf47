// Without libFuzzer: runs the target once over every file named on the
// command line, or every file in the directories named, as a regression test.
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv) __attribute__((weak));

int main(int argc, char **argv)
{
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    int runs = 0;
    auto runFile = [&runs](const QString &path) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
            return false;
        }
        const QByteArray data = f.readAll();
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(data.constData()), size_t(data.size()));
        ++runs;
        return true;
    };
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (arg.startsWith(QLatin1Char('-')))
            continue; // libFuzzer options
        if (QFileInfo(arg).isDir()) {
            QDirIterator it(arg, QDir::Files, QDirIterator::Subdirectories);
            while (it.hasNext()) {
                if (!runFile(it.next()))
                    return 1;
            }
        } else if (!runFile(arg)) {
            return 1;
        }
    }
    std::printf("%d inputs ran\n", runs);
    return 0;
}
