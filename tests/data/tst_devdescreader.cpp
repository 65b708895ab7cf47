// The device descriptor reader.
#include "data/DevDescReader.h"
#include "data/ShareFileLoader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QUuid>
#include <QtTest>

class TestDevDescReader : public QObject
{
    Q_OBJECT

private:
    QString deviceDir;
    QStringList createdFiles;
    // Unique per run: segments are keyed by path, and a run must never
    // meet a segment of another run.
    QString runTag = QUuid::createUuid().toString(QUuid::Id128).left(12);
    int counter = 0;

    QString newModel() { return QStringLiteral("Tst%1-%2").arg(runTag).arg(++counter); }

    QString descriptorPath(const QString &model) const { return deviceDir + '/' + model + ".xml"; }

    bool writeDescriptor(const QString &model, const QByteArray &content)
    {
        const QString path = descriptorPath(model);
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(content) != content.size())
            return false;
        createdFiles << path;
        return true;
    }

private slots:
    void initTestCase()
    {
        deviceDir = QCoreApplication::applicationDirPath() + "/descriptor/Common/Device";
        QVERIFY(QDir().mkpath(deviceDir));
    }

    void cleanupTestCase()
    {
        for (const QString &path : qAsConst(createdFiles))
            QFile::remove(path);
        QDir().rmpath(deviceDir); // only while empty
    }

    void singleInstance()
    {
        QCOMPARE(&DevDescReader::instance(), &DevDescReader::instance());
    }

    void emptyName()
    {
        DevDescReader &reader = DevDescReader::instance();
        const int cached = reader.cacheSize();
        const int loaders = shareFileLoader::constructedCount();
        QByteArray bytes = "keep";
        QVERIFY(!reader.read(deviceDescriptorFolder, QString(), bytes));
        QCOMPARE(bytes, QByteArray("keep"));
        QCOMPARE(reader.cacheSize(), cached);
        QCOMPARE(shareFileLoader::constructedCount(), loaders);
    }

    void twoReadsOneLoader()
    {
        DevDescReader &reader = DevDescReader::instance();
        const QString model = newModel();
        const QByteArray content = "<Device><SpeakerProcessorLibrary ext=\"fsl\"/></Device>";
        QVERIFY(writeDescriptor(model, content));

        const int loaders = shareFileLoader::constructedCount();
        QByteArray bytes = "<";
        QVERIFY(reader.read(deviceDescriptorFolder, model, bytes));
        QCOMPARE(bytes, "<" + content);
        const shareFileLoader *loader = reader.cachedLoader(model);
        QVERIFY(loader);
        QCOMPARE(loader->path(), descriptorPath(model));

        QVERIFY(QFile::remove(descriptorPath(model))); // served from the segment now
        QByteArray again;
        QVERIFY(reader.read(deviceDescriptorFolder, model, again));
        QCOMPARE(again, content);
        QCOMPARE(shareFileLoader::constructedCount() - loaders, 1);
        QCOMPARE(reader.cachedLoader(model), loader);

        // Keyed by the name alone: another folder is served the same file.
        QByteArray elsewhere;
        QVERIFY(reader.read("descriptor/Elsewhere", model, elsewhere));
        QCOMPARE(elsewhere, content);
        QCOMPARE(shareFileLoader::constructedCount() - loaders, 1);

        // And the speaker-library query uses the same cached loader.
        QCOMPARE(::speakerLibraryExtension(model), QString("fsl"));
        QCOMPARE(shareFileLoader::constructedCount() - loaders, 1);
    }

    void forgetOnFailure()
    {
        DevDescReader &reader = DevDescReader::instance();
        const QString model = newModel();
        const int loaders = shareFileLoader::constructedCount();
        const int cached = reader.cacheSize();

        QByteArray bytes = "keep";
        QVERIFY(!reader.read(deviceDescriptorFolder, model, bytes));
        QCOMPARE(bytes, QByteArray("keep"));
        QVERIFY(!reader.cachedLoader(model));
        QCOMPARE(reader.cacheSize(), cached);

        // The next request goes back to the disk with a new loader.
        QVERIFY(writeDescriptor(model, "<Device/>"));
        QVERIFY(reader.read(deviceDescriptorFolder, model, bytes));
        QCOMPARE(bytes, QByteArray("keep<Device/>"));
        QVERIFY(reader.cachedLoader(model));
        QCOMPARE(shareFileLoader::constructedCount() - loaders, 2);
    }

    void separateReaders()
    {
        // Two readers share the file through its segment, not their caches.
        const QString model = newModel();
        QVERIFY(writeDescriptor(model, "<Shared/>"));
        BaseDescReader first, second;
        QByteArray a, b;
        QVERIFY(first.read(deviceDescriptorFolder, model, a));
        QVERIFY(QFile::remove(descriptorPath(model)));
        QVERIFY(second.read(deviceDescriptorFolder, model, b));
        QCOMPARE(a, QByteArray("<Shared/>"));
        QCOMPARE(b, a);
        QVERIFY(first.cachedLoader(model) != second.cachedLoader(model));
    }

    void speakerLibraryExtension_data()
    {
        QTest::addColumn<bool>("hasFile");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("extension");
        QTest::addColumn<bool>("isNull");
        QTest::newRow("element") << true << QByteArray("<Device><SpeakerProcessorLibrary ext=\"fsl\"/></Device>") << "fsl" << false;
        QTest::newRow("nested") << true << QByteArray("<Device><Files><Library><SpeakerProcessorLibrary ext=\"spl2\"/></Library></Files></Device>") << "spl2" << false;
        QTest::newRow("first in document order") << true << QByteArray("<Device><A><SpeakerProcessorLibrary ext=\"first\"/></A><SpeakerProcessorLibrary ext=\"second\"/></Device>") << "first" << false;
        QTest::newRow("no ext") << true << QByteArray("<Device><SpeakerProcessorLibrary name=\"x\"/></Device>") << "" << false;
        QTest::newRow("no element") << true << QByteArray("<Device><SpeakerLibrary ext=\"fsl\"/></Device>") << "" << true;
        QTest::newRow("other case") << true << QByteArray("<Device><speakerprocessorlibrary ext=\"fsl\"/></Device>") << "" << true;
        QTest::newRow("not XML") << true << QByteArray("SpeakerProcessorLibrary ext=fsl") << "" << true;
        QTest::newRow("empty file") << true << QByteArray() << "" << true;
        QTest::newRow("no file") << false << QByteArray() << "" << true;
    }
    void speakerLibraryExtension()
    {
        QFETCH(bool, hasFile);
        QFETCH(QByteArray, content);
        QFETCH(QString, extension);
        QFETCH(bool, isNull);
        const QString model = newModel();
        if (hasFile)
            QVERIFY(writeDescriptor(model, content));
        const QString ext = ::speakerLibraryExtension(model);
        QCOMPARE(ext, extension);
        if (isNull)
            QVERIFY(ext.isNull());
    }

    void speakerLibraryExtensionOfNoModel()
    {
        QVERIFY(::speakerLibraryExtension(QString()).isNull());
    }
};

QTEST_GUILESS_MAIN(TestDevDescReader)
#include "tst_devdescreader.moc"
