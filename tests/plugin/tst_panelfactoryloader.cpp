#include "plugin/PanelFactoryLoader.h"

#include <corvane/IPanelFactory.h>

#include <QDir>
#include <QtTest>

class tst_PanelFactoryLoader : public QObject
{
    Q_OBJECT

private slots:
    void path();
    void loadsWhatIsThere();
};

void tst_PanelFactoryLoader::path()
{
    const QString path = panelFactoryPath();
    QCOMPARE(QFileInfo(path).dir().absolutePath(), QDir(QCoreApplication::applicationDirPath()).absolutePath());
#if defined(Q_OS_WIN)
    QCOMPARE(QFileInfo(path).fileName(), QString("Panel.dll"));
#else
    QCOMPARE(QFileInfo(path).fileName(), QString("libPanel.so"));
#endif
    QCOMPARE(path, QDir::cleanPath(path));
}

void tst_PanelFactoryLoader::loadsWhatIsThere()
{
#ifdef PANEL_PLUGIN_KIND
    // Beside a plug-in of that name without the interface, or beside none.
    QCOMPARE(QFile::exists(panelFactoryPath()), QByteArray(PANEL_PLUGIN_KIND) == "foreign");
    QVERIFY(!loadPanelFactory());
    return;
#endif
    // The host's plug-in sits in the application directory when the host is
    // built; the library must find it there, and only there.
    IPanelFactory *factory = loadPanelFactory();
    QCOMPARE(factory != nullptr, QFile::exists(panelFactoryPath()));
    if (factory)
        QCOMPARE(loadPanelFactory(), factory); // one instance per plug-in
}

QTEST_MAIN(tst_PanelFactoryLoader)
#include "tst_panelfactoryloader.moc"
