// Resolution of GetAbstractDB from the application directory, and its override.
#include "FakeDatabase.h"

#include "data/AbstractDatabase.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibrary>
#include <QtTest>

class TestAbstractDatabase : public QObject
{
    Q_OBJECT

private slots:
    void libraryIsBesideTheExecutable()
    {
        // The build puts the stand-in library in this test's own directory.
        QLibrary library(QCoreApplication::applicationDirPath() + "/CorvaneParameterDB");
        QVERIFY2(library.load(), qPrintable(library.errorString()));
    }

    void resolvedOnceAndCached()
    {
        IAbstractDB *first = abstractDatabase();
        QVERIFY(first);
        QCOMPARE(first->devices(), QStringList { "resolved from library" });
        QCOMPARE(abstractDatabase(), first);
    }

    void overrideAndRestore()
    {
        IAbstractDB *resolved = abstractDatabase();
        FakeDatabase mine;
        mine.name = "installed by the test";
        setAbstractDatabase(&mine);
        QCOMPARE(abstractDatabase(), static_cast<IAbstractDB *>(&mine));
        QCOMPARE(abstractDatabase()->devices(), QStringList { "installed by the test" });
        setAbstractDatabase(nullptr);
        QCOMPARE(abstractDatabase(), resolved);
    }
};

QTEST_GUILESS_MAIN(TestAbstractDatabase)
#include "tst_abstractdatabase.moc"
