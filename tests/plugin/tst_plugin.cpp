#include <corvane/IExternalDevicesDB.h>
#include <corvane/IPanelFactory.h>
#include <corvane/IWidgetCore.h>
#include <corvane/IWidgetFactory.h>
#include <corvane/ParameterManagement.h>
#include <corvane/Version.h>

#include "support/RecordingHost.h"

#include <QDomDocument>
#include <QJsonArray>
#include <QLibrary>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QtTest>

/*
    The plug-in as a host sees it: loaded with QPluginLoader, reached only
    through the SDK's interfaces and its exported functions.
*/
class tst_Plugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void metadata();
    void rootObject();
    void version();
    void typeNames();
    void createsEveryType();
    void unknownNames_data();
    void unknownNames();
    void configureAndRegister();
    void externalDevices();
    void panelFactoryEntry();

private:
    QStringList names() const;

    QPluginLoader m_loader;
    IWidgetFactory *m_factory = nullptr;
};

void tst_Plugin::initTestCase()
{
    m_loader.setFileName(QStringLiteral(CORVANE_PLUGIN_FILE));
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    m_factory = qobject_cast<IWidgetFactory *>(m_loader.instance());
    QVERIFY(m_factory);
}

void tst_Plugin::metadata()
{
    const QJsonObject meta = m_loader.metaData();
    QCOMPARE(meta.value("IID").toString(), QString("CorvaneDesigner.WidgetFactory"));
    QCOMPARE(meta.value("className").toString(), QString("WidgetFactory"));
    // Release builds (the default, and what ships) say so in their metadata.
    QCOMPARE(meta.value("debug").toBool(), bool(CORVANE_DEBUG_BUILD));
    QVERIFY(meta.value("MetaData").toObject().isEmpty());
    QCOMPARE(meta.value("version").toInt() >> 8, 0x050f);
}

void tst_Plugin::rootObject()
{
    QObject *root = m_loader.instance();
    QCOMPARE(m_loader.instance(), root); // one instance
    QCOMPARE(QString(root->metaObject()->className()), QString("WidgetFactory"));
    void *asFactory = root->qt_metacast("IWidgetFactory");
    QVERIFY(asFactory);
    QCOMPARE(asFactory, static_cast<void *>(m_factory));
    QCOMPARE(root->qt_metacast("com.tessaro.skd.MainApplication.IWidgetFactory/0.0"), asFactory);
    QCOMPARE(root->qt_metacast("WidgetFactory"), static_cast<void *>(root));
    QVERIFY(!root->qt_metacast("IWidgetCore"));
}

// The version rides on the root object's class info; the metadata record
// keeps only what every Qt plug-in has.
void tst_Plugin::version()
{
    const QMetaObject *meta = m_loader.instance()->metaObject();
    const int at = meta->indexOfClassInfo("Version");
    QVERIFY(at >= 0);
    QCOMPARE(QString::fromLatin1(meta->classInfo(at).value()), QStringLiteral(CORVANE_VERSION_STR));
    QCOMPARE(meta->classInfoCount(), 1);
    QCOMPARE(QString::fromLatin1(meta->classInfo(at).value()).split(QLatin1Char('.')).size(), 3);
    QCOMPARE(CORVANE_VERSION, CORVANE_VERSION_CHECK(CORVANE_VERSION_MAJOR, CORVANE_VERSION_MINOR, CORVANE_VERSION_PATCH));
    QVERIFY(CORVANE_VERSION > CORVANE_VERSION_CHECK(0, 0, 99));

    QStringList keys = m_loader.metaData().keys();
    keys.sort();
    QCOMPARE(keys, (QStringList{"IID", "archreq", "className", "debug", "version"}));
}

QStringList tst_Plugin::names() const
{
    QLibrary library(m_loader.fileName());
    auto listNames = reinterpret_cast<void (*)(QStringList *)>(library.resolve("CorvaneWidgetTypeNames"));
    QStringList result;
    if (listNames)
        listNames(&result);
    return result;
}

void tst_Plugin::typeNames()
{
    const QStringList all = names();
    QCOMPARE(all.size(), 280);
    QCOMPARE(all.first(), QString("Button"));
    QCOMPARE(all.last(), QString("PairDeviceList"));
    QCOMPARE(all.indexOf("Dial"), 66);           // buttons come first
    QCOMPARE(all.indexOf("PanelContainer"), 77); // then the eleven dials
    QCOMPARE(QSet<QString>(all.begin(), all.end()).size(), 280);
}

void tst_Plugin::createsEveryType()
{
    RecordingHost host;
    ParameterManagementRegistry registry;
    QWidget parent;
    const QStringList all = names();
    QVERIFY(!all.isEmpty());
    QSet<IWidgetCore *> made;
    for (const QString &name : all) {
        IWidgetCore *core = m_factory->create(name, &parent, &host, &registry);
        QVERIFY2(core, qPrintable(name));
        QWidget *widget = widgetOf(core);
        QVERIFY2(widget, qPrintable(name));
        QCOMPARE(QString(widget->metaObject()->className()), name);
        QCOMPARE(QString(core->widgetMetaObject()->className()), name);
        QCOMPARE(widget->parentWidget(), &parent);
        QCOMPARE(core->hostCore(), static_cast<IHostCore *>(&host));
        QVERIFY(widget->objectName().isEmpty()); // the factory sets nothing
        QVERIFY(widget->inherits("BaseWidget"));
        made.insert(core);
    }
    QCOMPARE(made.size(), 280);
    QCOMPARE(parent.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(), 280);
}

void tst_Plugin::unknownNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("lower case") << "button";
    QTest::newRow("upper case") << "BUTTON";
    QTest::newRow("empty") << "";
    QTest::newRow("leading space") << " Button";
    QTest::newRow("trailing space") << "Button ";
    QTest::newRow("family base") << "BaseWidget";
    QTest::newRow("abstract scale") << "GraphScale";
    QTest::newRow("editor class") << "LineEdit";
}

void tst_Plugin::unknownNames()
{
    QFETCH(QString, name);
    QWidget parent;
    QVERIFY(!m_factory->create(name, &parent, nullptr, nullptr));
    QVERIFY(parent.children().isEmpty());
}

void tst_Plugin::configureAndRegister()
{
    RecordingHost host;
    ParameterManagementRegistry registry;
    QWidget parent;
    QDomDocument doc;
    QVERIFY(doc.setContent(QStringLiteral(
        "<Widget type='Dial' name='gain'><Rect x='4' y='6' width='40' height='40'/>"
        "<Address prmAddr='Ch/Gain'/><Address prmAddr='Meter:Ch/Level' dev_uniq_id='dev2'/></Widget>")));
    IWidgetCore *core = m_factory->create("Dial", &parent, &host, &registry);
    QVERIFY(core->configure(doc.documentElement()));
    QVERIFY(core->setZoom(2.0f));
    QCOMPARE(widgetOf(core)->geometry(), QRect(8, 12, 80, 80));
    QCOMPARE(core->addressCount(), 2);
    registry.commitAll();
    QVERIFY(registry.manager("Prm", "dev1")->registrations().contains("Ch/Gain", core));
    QVERIFY(registry.manager("Meter", "dev2")->registrations().contains("Meter:Ch/Level", core));
}

void tst_Plugin::externalDevices()
{
    QLibrary library(m_loader.fileName());
    auto get = reinterpret_cast<IExternalDevicesDB *(*)()>(library.resolve("GetExternalDevicesDB"));
    QVERIFY(get);
    IExternalDevicesDB *db = get();
    QVERIFY(db);
    QCOMPARE(get(), db);

    QTemporaryDir dir;
    QFile file(dir.filePath("speakers.xml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<Devices><Speaker model='SP-12' impedance='8'><Ways>2</Ways></Speaker>"
               "<InterfaceDevice model='DI-4'/><Speaker/></Devices>");
    file.close();
    QVERIFY(db->load(dir.path()));
    QCOMPARE(db->speakerModels(), QStringList{"SP-12"});
    QCOMPARE(db->speaker("SP-12").value("impedance").toString(), QString("8"));
    QCOMPARE(db->speaker("SP-12").value("Ways").toString(), QString("2"));
    QCOMPARE(db->interfaceDevices(), QStringList{"DI-4"});
    QVERIFY(db->speaker("none").isEmpty());
    QVERIFY(!db->load(dir.filePath("missing")));
    QVERIFY(db->speakerModels().isEmpty());
}

void tst_Plugin::panelFactoryEntry()
{
    // The panel plug-in is the host's; whether it sits next to this test
    // depends on what was built. Either way the answer must match the file.
    const QString path = QDir::cleanPath(QCoreApplication::applicationDirPath() + "/libPanel.so");
    QPluginLoader panel(path);
    IPanelFactory *factory = qobject_cast<IPanelFactory *>(panel.instance());
    if (QFile::exists(path))
        QVERIFY2(factory, qPrintable(panel.errorString()));
    else
        QVERIFY(!factory);
}

QTEST_MAIN(tst_Plugin)
#include "tst_plugin.moc"
