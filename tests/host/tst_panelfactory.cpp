#include "PanelFactory.h"

#include <corvane/IWidgetCore.h>
#include <corvane/ParameterManagement.h>

#include "support/Files.h"
#include "support/RecordingHost.h"

#include <QDomDocument>
#include <QTemporaryDir>
#include <QtTest>

/*
    The host's panel factory with the real widget plug-in from the
    application directory.
*/
class tst_PanelFactory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void background_data();
    void background();
    void buildsNamedScaledControls();
    void contextFillsAddresses();
    void unknownTypesAreReported();
    void controlsPerPageAreLimited();
    void panelByName();

private:
    QWidget *build(const QString &xml, const QVariantMap &context = QVariantMap());

    PanelFactory m_factory;
    RecordingHost m_host;
    ParameterManagementRegistry m_registry;
    QDomDocument m_doc;
};

void tst_PanelFactory::initTestCase()
{
    QVERIFY2(m_factory.widgetFactory(), "the widget plug-in is not next to the test");
}

QWidget *tst_PanelFactory::build(const QString &xml, const QVariantMap &context)
{
    if (!m_doc.setContent(xml))
        return nullptr;
    return m_factory.createPanel(m_doc.documentElement(), nullptr, &m_host, &m_registry, context);
}

void tst_PanelFactory::background_data()
{
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("default") << "" << QColor(38, 38, 38);
    QTest::newRow("given") << "background='10,20,30'" << QColor(10, 20, 30);
    QTest::newRow("with alpha") << "background='10,20,30,40'" << QColor(10, 20, 30, 40);
    QTest::newRow("malformed") << "background='10,20'" << QColor(38, 38, 38);
    QTest::newRow("out of range") << "background='10,20,256'" << QColor(38, 38, 38);
}

void tst_PanelFactory::background()
{
    QFETCH(QString, attribute);
    QFETCH(QColor, colour);
    QScopedPointer<QWidget> page(build("<Panel width='20' height='10' " + attribute + "/>"));
    QVERIFY(page);
    QVERIFY(page->autoFillBackground());
    QCOMPARE(page->palette().color(QPalette::Window), colour);
    QImage image(page->size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    page->render(&image);
    if (colour.alpha() == 255)
        QCOMPARE(image.pixelColor(5, 5), colour);
}

void tst_PanelFactory::buildsNamedScaledControls()
{
    m_host.zoom = 2.0f;
    QScopedPointer<QWidget> page(build("<Panel width='100' height='50' name='strip'>"
                                       "<Widget type='NumberBox' name='gain'><Rect x='5' y='6' width='30' height='10'/>"
                                       "<Address prmAddr='Ch/Gain'/></Widget>"
                                       "<Widget type='Dial' name='knob'/></Panel>"));
    m_host.zoom = 1.0f;
    QVERIFY(page);
    QCOMPARE(page->objectName(), QString("strip"));
    QCOMPARE(page->size(), QSize(200, 100));
    QWidget *gain = page->findChild<QWidget *>("gain");
    QVERIFY(gain);
    QCOMPARE(QString(gain->metaObject()->className()), QString("NumberBox"));
    QCOMPARE(gain->geometry(), QRect(10, 12, 60, 20));
    QVERIFY(!gain->isHidden());
    auto *core = reinterpret_cast<IWidgetCore *>(gain->property(PanelFactory::corePropertyName()).value<quintptr>());
    QVERIFY(core);
    QCOMPARE(core->widgetName(), QString("gain"));
    QCOMPARE(core->address(0).deviceId(), QString("dev1")); // the host's owner device
    QVERIFY(page->findChild<QWidget *>("knob"));
}

void tst_PanelFactory::contextFillsAddresses()
{
    QScopedPointer<QWidget> page(build("<Panel width='10' height='10'>"
                                       "<Widget type='NumberBox' name='a'><Address prmAddr='P' zone_uniq_id='own'/></Widget>"
                                       "</Panel>",
                                       {{"dev_uniq_id", "dev7"}, {"zone_uniq_id", "z1"}}));
    QVERIFY(page);
    auto *core = reinterpret_cast<IWidgetCore *>(
        page->findChild<QWidget *>("a")->property(PanelFactory::corePropertyName()).value<quintptr>());
    QCOMPARE(core->address(0).deviceId(), QString("dev7"));
    QCOMPARE(core->address(0).zoneId(), QString("own")); // a key the page sets itself stays
}

void tst_PanelFactory::unknownTypesAreReported()
{
    QScopedPointer<QWidget> page(build("<Panel width='10' height='10'>\n<Widget type='Knobb' name='x'/>\n"
                                       "<Widget type='Dial' name='d'/></Panel>"));
    QVERIFY(page);
    QCOMPARE(m_factory.lastProblems(), QStringList{"line 2: no widget type \"Knobb\""});
    QVERIFY(page->findChild<QWidget *>("d"));
}

void tst_PanelFactory::controlsPerPageAreLimited()
{
    // One more than a page holds; Qt would paint a hundred thousand siblings
    // recursively until the stack ran out.
    QString xml = QStringLiteral("<Panel width='10' height='10'>\n");
    for (int i = 0; i <= PanelFactory::maxControlsPerPage; ++i)
        xml += QStringLiteral("<Widget type='Dial' name='l%1'/>\n").arg(i);
    xml += QStringLiteral("</Panel>");
    QScopedPointer<QWidget> page(build(xml));
    QVERIFY(page);
    QCOMPARE(page->children().size(), PanelFactory::maxControlsPerPage);
    QVERIFY(page->findChild<QWidget *>(QStringLiteral("l%1").arg(PanelFactory::maxControlsPerPage - 1)));
    QCOMPARE(m_factory.lastProblems(),
             QStringList{QStringLiteral("line %1: more than %2 controls on one page; the rest are left out")
                             .arg(PanelFactory::maxControlsPerPage + 2).arg(PanelFactory::maxControlsPerPage)});
}

void tst_PanelFactory::panelByName()
{
    QTemporaryDir dir;
    QVERIFY(writeFile(dir.filePath("page.xml"), "<Panel width='30' height='20'><Widget type='Dial' name='d'/></Panel>"));
    m_host.imagePath = dir.path();
    QScopedPointer<QWidget> page(m_factory.createPanelByName("page", nullptr, &m_host, &m_registry, {}));
    QVERIFY(page);
    QCOMPARE(page->size(), QSize(30, 20));
    QVERIFY(!m_factory.createPanelByName("absent", nullptr, &m_host, &m_registry, {}));
    m_host.imagePath.clear();
}

QTEST_MAIN(tst_PanelFactory)
#include "tst_panelfactory.moc"
