// The shared-memory file loader.
#include "data/ShareFileLoader.h"
#include "support/Files.h"

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSharedMemory>
#include <QTemporaryDir>
#include <QThread>
#include <QtEndian>
#include <QtTest>

#include <memory>
#include <vector>

#ifndef SHM_READER_PATH
#error "SHM_READER_PATH names the helper executable"
#endif

namespace {

// Whether a segment exists for the key, looked at without creating one.
bool segmentExists(const QString &key)
{
    QSharedMemory probe(key);
    if (!probe.attach(QSharedMemory::ReadOnly))
        return false;
    probe.detach();
    return true;
}

// File contents that differ in length and bytes from round to round.
QByteArray roundContent(int round, int size)
{
    QByteArray b(size, Qt::Uninitialized);
    quint32 x = 2654435761u * quint32(round + 1);
    for (int i = 0; i < size; ++i) {
        x = x * 1664525u + 1013904223u;
        b[i] = char(x >> 24);
    }
    return b;
}

QByteArray digestLine(const QByteArray &content)
{
    return "ok " + QByteArray::number(content.size()) + ' '
        + QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex();
}

struct Outcome
{
    int full = 0;
    int noData = 0;
    QByteArrayList wrong;
};

// Starts \a count helpers on \a path, lets them load at the same moment
// and sorts their answers against \a expected.
Outcome loadTogether(const QString &path, const QString &gate, int count,
                     const QByteArray &expected, QProcess *victim = nullptr,
                     int victimDelayMs = 0)
{
    std::vector<std::unique_ptr<QProcess>> helpers;
    for (int i = 0; i < count; ++i) {
        helpers.push_back(std::make_unique<QProcess>());
        helpers.back()->start(QStringLiteral(SHM_READER_PATH),
                              { path, QStringLiteral("--digest"), QStringLiteral("--gate"), gate });
    }
    if (victim)
        victim->start(QStringLiteral(SHM_READER_PATH),
                      { path, QStringLiteral("--digest"), QStringLiteral("--hold"),
                        QStringLiteral("--gate"), gate });
    for (auto &h : helpers)
        h->waitForStarted(30000);
    if (victim)
        victim->waitForStarted(30000);
    writeFile(gate, "go");
    if (victim) {
        QThread::msleep(ulong(victimDelayMs));
        victim->kill(); // SIGKILL: no destructor, no detach
        victim->waitForFinished(30000);
    }

    Outcome outcome;
    const QByteArray want = digestLine(expected);
    for (auto &h : helpers) {
        h->waitForFinished(60000);
        const QByteArray line = h->readAllStandardOutput().trimmed();
        if (line == want)
            ++outcome.full;
        else if (line == "nodata")
            ++outcome.noData;
        else
            outcome.wrong.append(line.left(80));
    }
    QFile::remove(gate);
    return outcome;
}

} // namespace

class TestShareFileLoader : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir dir;
    int fileCounter = 0;

    // A fresh file, with a path no earlier test (or test run) used.
    QString newFile(const QByteArray &bytes)
    {
        const QString path = dir.filePath(QStringLiteral("file%1.xml").arg(++fileCounter));
        if (!writeFile(path, bytes))
            return QString();
        return path;
    }

    static QByteArray payload()
    {
        QByteArray b = "<Device name=\"Ferrule\">";
        for (int i = 0; i < 1000; ++i)
            b.append(char(i % 256));
        b.append("</Device>");
        return b;
    }

private slots:
    void initTestCase() { QVERIFY(dir.isValid()); }

    void normalise_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("normalised");
        QTest::newRow("dot-dot") << "a/b/../c.xml" << "a/c.xml";
        QTest::newRow("dot") << "a/./b.xml" << "a/b.xml";
        QTest::newRow("several dots") << "a/b/./c/./d.xml" << "a/b/c/d.xml";
        QTest::newRow("dot-dots in a row") << "a/b/c/../../d.xml" << "a/d.xml";
        QTest::newRow("dot and dot-dot") << "a/b/./../c.xml" << "a/c.xml";
        QTest::newRow("trailing dot-dot") << "a/b/c/.." << "a/b";
        QTest::newRow("absolute") << "/tmp/x/../y.xml" << "/tmp/y.xml";
        QTest::newRow("drive") << "C:/dev/./x.xml" << "C:/dev/x.xml";
        QTest::newRow("double slash prefix") << "//server/share/./x.xml" << "//server/share/x.xml";
        QTest::newRow("empty element kept") << "a//b/./c" << "a//b/c";
        QTest::newRow("first element dot") << "./a/b.xml" << "./a/b.xml";
        QTest::newRow("first element dot, dot-dot later") << "./a/b/../c.xml" << "./a/b/../c.xml";
        QTest::newRow("dot-dot at 0") << "../a/b.xml" << "../a/b.xml";
        QTest::newRow("dot-dot at 1") << "a/../b.xml" << "a/../b.xml";
        QTest::newRow("absolute dot-dot at 1") << "/../b.xml" << "/../b.xml";
        QTest::newRow("dot removed, then dot-dot at 1: as given") << "a/./../b.xml" << "a/./../b.xml";
        QTest::newRow("dot-dot falls to 1 later: as given") << "a/b/../../c.xml" << "a/b/../../c.xml";
        QTest::newRow("dotted names") << "a/.hidden/b..c/x.xml" << "a/.hidden/b..c/x.xml";
        QTest::newRow("plain") << "a/b.xml" << "a/b.xml";
        QTest::newRow("empty") << "" << "";
    }
    void normalise()
    {
        QFETCH(QString, path);
        QTEST(shareFileLoader::normalisePath(path), "normalised");
        QTEST(shareFileLoader(path, false).path(), "normalised");
    }

    void emptyPath()
    {
        shareFileLoader loader(QString(), false);
        const char *data = nullptr;
        quint32 size = 7;
        QVERIFY(!loader.load(data, size));
        QCOMPARE(size, 7u);
    }

    void missingFile()
    {
        const QString path = dir.filePath("missing.xml");
        shareFileLoader loader(path, false);
        QByteArray bytes = "keep";
        QVERIFY(!loader.load(bytes));
        QCOMPARE(bytes, QByteArray("keep"));
        QVERIFY(!loader.isAttached());
        QVERIFY(!segmentExists(path));
    }

    void publishesLayout()
    {
        const QByteArray content = payload();
        const QString path = newFile(content);
        QVERIFY(!path.isEmpty());
        {
            shareFileLoader loader(path, false);
            const char *data = nullptr;
            quint32 size = 0;
            QVERIFY(loader.load(data, size));
            QVERIFY(loader.isAttached());
            QCOMPARE(size, quint32(content.size()));
            QCOMPARE(QByteArray(data, int(size)), content);
            QCOMPARE(qFromLittleEndian<quint32>(data - 4), quint32(content.size()));

            // Another view of the segment, keyed by the path.
            QSharedMemory probe(path);
            QVERIFY(probe.attach(QSharedMemory::ReadOnly));
            QCOMPARE(probe.size(), content.size() + 4);
            const char *raw = static_cast<const char *>(probe.constData());
            QCOMPARE(qFromLittleEndian<quint32>(raw), quint32(content.size()));
            QCOMPARE(QByteArray(raw + 4, content.size()), content);
        }
        // The last loader gone, the segment is gone.
        QVERIFY(!segmentExists(path));
    }

    void zeroLengthFile()
    {
        const QString path = newFile(QByteArray());
        QVERIFY(!path.isEmpty());
        shareFileLoader loader(path, false);
        const char *data = nullptr;
        quint32 size = 99;
        QVERIFY(loader.load(data, size));
        QCOMPARE(size, 0u);
        QVERIFY(data);

        QSharedMemory probe(path);
        QVERIFY(probe.attach(QSharedMemory::ReadOnly));
        QCOMPARE(probe.size(), 4);
        QCOMPARE(qFromLittleEndian<quint32>(probe.constData()), 0u);

        QByteArray bytes = "x";
        QVERIFY(loader.load(bytes));
        QCOMPARE(bytes, QByteArray("x"));
    }

    void appendsToBytes()
    {
        const QString path = newFile("abc");
        shareFileLoader loader(path, false);
        QByteArray bytes = "123";
        QVERIFY(loader.load(bytes));
        QCOMPARE(bytes, QByteArray("123abc"));
        // A second load of the same loader serves the segment again.
        QVERIFY(loader.load(bytes));
        QCOMPARE(bytes, QByteArray("123abcabc"));
    }

    void normalisedPathIsTheKey()
    {
        const QString path = newFile("keyed");
        shareFileLoader first(path, false);
        QByteArray bytes;
        QVERIFY(first.load(bytes));
        QVERIFY(QFile::remove(path));
        // Same file through "sub/..": normalised to the same key, so served
        // from the segment although the file is gone.
        const int slash = path.lastIndexOf('/');
        const QString roundabout = path.left(slash) + "/sub/.." + path.mid(slash);
        shareFileLoader second(roundabout, false);
        QCOMPARE(second.path(), path);
        QByteArray again;
        QVERIFY(second.load(again));
        QCOMPARE(again, QByteArray("keyed"));
    }

    void secondLoaderDoesNotTouchTheDisk_data()
    {
        QTest::addColumn<bool>("deleteFile");
        QTest::newRow("file deleted") << true;
        QTest::newRow("file changed") << false;
    }
    void secondLoaderDoesNotTouchTheDisk()
    {
        QFETCH(bool, deleteFile);
        const QByteArray content = payload();
        const QString path = newFile(content);
        auto first = std::make_unique<shareFileLoader>(path, false);
        QByteArray bytes;
        QVERIFY(first->load(bytes));
        QCOMPARE(bytes, content);

        if (deleteFile)
            QVERIFY(QFile::remove(path));
        else
            QVERIFY(writeFile(path, "changed on disk"));

        {
            shareFileLoader second(path, false);
            QByteArray again;
            QVERIFY(second.load(again));
            QCOMPARE(again, content);
        }

        // Once every loader is gone the segment is released; a new loader
        // reads the disk again.
        first.reset();
        QVERIFY(!segmentExists(path));
        shareFileLoader third(path, false);
        QByteArray fresh;
        if (deleteFile) {
            QVERIFY(!third.load(fresh));
        } else {
            QVERIFY(third.load(fresh));
            QCOMPARE(fresh, QByteArray("changed on disk"));
        }
    }

    void secondProcessAttaches()
    {
        const QByteArray content = payload();
        const QString path = newFile(content);
        shareFileLoader loader(path, false);
        QByteArray bytes;
        QVERIFY(loader.load(bytes));
        QVERIFY(QFile::remove(path)); // the helper cannot read the disk

        QProcess helper;
        helper.start(QStringLiteral(SHM_READER_PATH), { path });
        QVERIFY2(helper.waitForFinished(30000), qPrintable(helper.errorString()));
        QCOMPARE(helper.exitStatus(), QProcess::NormalExit);
        QCOMPARE(helper.exitCode(), 0);
        QCOMPARE(helper.readAllStandardOutput().trimmed(), "ok " + content.toHex());
        QVERIFY(segmentExists(path)); // still ours after the helper detached
    }

    void attachesToAnotherProcessSegment()
    {
        const QByteArray content = payload();
        const QString path = newFile(content);

        QProcess helper;
        helper.start(QStringLiteral(SHM_READER_PATH), { path, QStringLiteral("--hold") });
        QVERIFY2(helper.waitForStarted(30000), qPrintable(helper.errorString()));
        QTRY_VERIFY_WITH_TIMEOUT(helper.canReadLine() || helper.waitForReadyRead(100), 30000);
        QCOMPARE(helper.readLine().trimmed(), "ok " + content.toHex());

        QVERIFY(QFile::remove(path)); // published by the helper: served without the disk
        {
            shareFileLoader loader(path, false);
            QByteArray bytes;
            QVERIFY(loader.load(bytes));
            QCOMPARE(bytes, content);
        }

        helper.write("\n");
        helper.closeWriteChannel();
        QVERIFY(helper.waitForFinished(30000));
        QCOMPARE(helper.exitCode(), 0);
        QVERIFY(!segmentExists(path));
    }

    void helperReadsTheDiskWhenAlone()
    {
        const QString path = newFile("alone");
        QProcess helper;
        helper.start(QStringLiteral(SHM_READER_PATH), { path });
        QVERIFY(helper.waitForFinished(30000));
        QCOMPARE(helper.readAllStandardOutput().trimmed(), "ok " + QByteArray("alone").toHex());
        QVERIFY(!segmentExists(path)); // released when the helper exited
    }

    void transformedModeRefusesToPublish()
    {
        const QString path = newFile("plain");
        {
            shareFileLoader transformed(path, true);
            QVERIFY(transformed.isTransformed());
            QByteArray bytes;
            QVERIFY(!transformed.load(bytes));
            QVERIFY(bytes.isEmpty());
        }
        // It still attaches to a segment another loader published.
        shareFileLoader plain(path, false);
        QByteArray bytes;
        QVERIFY(plain.load(bytes));
        shareFileLoader transformed(path, true);
        QByteArray shared;
        QVERIFY(transformed.load(shared));
        QCOMPARE(shared, QByteArray("plain"));
    }

    // A segment whose creator was killed before it wrote the count: the
    // readers must neither hand out its half payload nor wait on it for
    // ever; they publish the file again.
    void creatorKilledWhileWriting()
    {
        const QByteArray content = roundContent(100, 300000);
        const QString path = newFile(content);
        QProcess planter;
        planter.start(QStringLiteral(SHM_READER_PATH), { path, QStringLiteral("--plant-half") });
        QVERIFY(planter.waitForStarted(30000));
        QTRY_VERIFY_WITH_TIMEOUT(planter.canReadLine() || planter.waitForReadyRead(100), 30000);
        QCOMPARE(planter.readLine().trimmed(), QByteArray("planted"));
        planter.kill();
        QVERIFY(planter.waitForFinished(30000));
        // Stays attached: detaching the last view would remove the segment.
        QSharedMemory left(path);
        QVERIFY(left.attach(QSharedMemory::ReadOnly));

        const Outcome outcome = loadTogether(path, dir.filePath("gate-planted"), 8, content);
        QVERIFY2(outcome.wrong.isEmpty(), outcome.wrong.join('\n').constData());
        QVERIFY(outcome.full > 0);

        shareFileLoader loader(path, false);
        QByteArray bytes;
        QVERIFY(loader.load(bytes));
        QCOMPARE(bytes, content);
    }

    // A holder killed after it published keeps the segment alive with the
    // old file; once the file has changed, that copy must not be served.
    void killedHolderLeavesNoStaleFile()
    {
        const QString path = newFile(roundContent(200, 5000));
        QProcess holder;
        holder.start(QStringLiteral(SHM_READER_PATH), { path, QStringLiteral("--hold") });
        QVERIFY(holder.waitForStarted(30000));
        QTRY_VERIFY_WITH_TIMEOUT(holder.canReadLine() || holder.waitForReadyRead(100), 30000);
        QVERIFY(holder.readLine().startsWith("ok "));
        holder.kill();
        QVERIFY(holder.waitForFinished(30000));
        QSharedMemory left(path);
        QVERIFY(left.attach(QSharedMemory::ReadOnly));

        const QByteArray content = roundContent(201, 7000);
        QVERIFY(writeFile(path, content));
        shareFileLoader loader(path, false);
        QByteArray bytes;
        QVERIFY(loader.load(bytes));
        QCOMPARE(bytes, content);
    }

    // Eight processes load one file for the first time at once, round after
    // round; between rounds the file is rewritten with another length, and
    // in most rounds a ninth loader is killed at some point of its load.
    // Every answer is the round's file or the loser's empty success.
    void concurrentFirstLoads()
    {
        const QString path = dir.filePath(QStringLiteral("contended.bin"));
        int full = 0, noData = 0;
        for (int round = 0; round < 12; ++round) {
            const QByteArray content = roundContent(round, 4 * 1024 * 1024 - round * 40961);
            QVERIFY(writeFile(path, content));
            QProcess victim;
            const bool kill = round % 4 != 3;
            const Outcome outcome = loadTogether(path, dir.filePath(QStringLiteral("gate")), 8, content,
                                                 kill ? &victim : nullptr, (round * 7) % 25);
            QVERIFY2(outcome.wrong.isEmpty(),
                     qPrintable(QStringLiteral("round %1: %2").arg(round)
                                .arg(QString::fromLatin1(outcome.wrong.join(" | ")))));
            full += outcome.full;
            noData += outcome.noData;
        }
        qInfo("%d full loads, %d losers without data", full, noData);
        QVERIFY(full >= 12);

        // The last victim's segment, taken over and released.
        shareFileLoader last(path, false);
        QByteArray bytes;
        QVERIFY(last.load(bytes));
        QCOMPARE(bytes.size(), 4 * 1024 * 1024 - 11 * 40961);
    }

    void creationFailureIsSuccessWithoutData()
    {
        // Qt (System V keys) derives the segment's system key from a file in
        // the temporary directory; with TMPDIR naming a plain file, that key
        // file cannot be made, so the segment (and its lock) can be neither
        // attached nor created.
        const QString path = newFile("unreachable");
        const QString notADir = newFile("not a directory");
        const QByteArray savedTmp = qgetenv("TMPDIR");
        const bool hadTmp = qEnvironmentVariableIsSet("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(notADir));
        shareFileLoader loader(path, false);
        const QString nativeKey = QSharedMemory(path).nativeKey();
        if (hadTmp)
            qputenv("TMPDIR", savedTmp);
        else
            qunsetenv("TMPDIR");
        if (!nativeKey.startsWith(notADir + '/'))
            QSKIP("This Qt build does not key segments through the temporary directory");

        QTest::ignoreMessage(QtDebugMsg,
            QRegularExpression(QStringLiteral("^shareFileLoader::load share memory creaet error\\. error code=\\[\\d+\\]$")));
        const char *data = "x";
        quint32 size = 5;
        QVERIFY(loader.load(data, size));
        QVERIFY(!data);
        QCOMPARE(size, 0u);

        QByteArray bytes = "keep";
        QTest::ignoreMessage(QtDebugMsg,
            QRegularExpression(QStringLiteral("^shareFileLoader::load share memory creaet error")));
        QVERIFY(loader.load(bytes));
        QCOMPARE(bytes, QByteArray("keep"));
    }
};

QTEST_GUILESS_MAIN(TestShareFileLoader)
#include "tst_sharefileloader.moc"
