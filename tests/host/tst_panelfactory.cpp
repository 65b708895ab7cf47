#include "PanelFactory.h"
#include "PanelHost.h"
#include "ParameterDatabase.h"
#include "ScriptRunner.h"

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

namespace {

// The controls of a page in the order the factory made them, tiles or not.
QList<QWidget *> controlsOf(QWidget *page)
{
    QList<QWidget *> out;
    for (QWidget *w : page->findChildren<QWidget *>()) {
        if (coreOf(w))
            out.append(w);
    }
    return out;
}

enum Layout { Rows, Scrambled, Columns };

// Controls on the tiled pages of these tests: 15 rows of 20.
constexpr int tiledCount = PanelFactory::tiledAbove + 44;

// Control i of a grid page, 20 to a row, described row by row or column by
// column. Scrambled, consecutive controls lie far apart, so that the tiles
// overlap each other.
QRect gridRect(int i, int n, Layout layout)
{
    const int cell = layout == Scrambled ? int(qint64(i) * 7919 % n)
                     : layout == Columns ? i % (n / 20) * 20 + i / (n / 20)
                                         : i;
    return QRect(cell % 20 * 40, cell / 20 * 12, 36, 10);
}

QString gridPage(int n, Layout layout, const QString &extra = QString())
{
    QString xml = QStringLiteral("<Panel width='800' height='%1'>\n").arg((n / 20 + 1) * 12);
    for (int i = 0; i < n; ++i) {
        const QRect r = gridRect(i, n, layout);
        xml += QStringLiteral("<Widget type='Dial' name='c%1'><Rect x='%2' y='%3' width='%4' height='%5'/></Widget>\n")
                   .arg(i).arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
        if (i == n / 2)
            xml += extra;
    }
    return xml + QStringLiteral("</Panel>");
}

QRect scaled(const QRect &r, float zoom)
{
    return QRect(qRound(r.x() * zoom), qRound(r.y() * zoom), qRound(r.width() * zoom), qRound(r.height() * zoom));
}

QRect onPage(const QWidget *w, const QWidget *page)
{
    return QRect(w->mapTo(page, QPoint()), w->size());
}

// Every control where its description puts it, the one a click at its
// centre reaches, and every tile fitted tightly around its controls.
void checkPlaces(QWidget *page, int n, Layout layout, float zoom)
{
    const QList<QWidget *> controls = controlsOf(page);
    QCOMPARE(controls.size(), n);
    for (int i = 0; i < n; ++i) {
        QWidget *w = controls.at(i);
        QCOMPARE(w->objectName(), QStringLiteral("c%1").arg(i));
        const QRect expected = scaled(gridRect(i, n, layout), zoom);
        QCOMPARE(onPage(w, page), expected);
        QCOMPARE(page->childAt(expected.center()), w);
    }
    for (QWidget *tile : page->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!tile->property(panelTileProperty).toBool())
            continue;
        QRect around;
        for (QWidget *w : tile->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
            around |= onPage(w, page);
        QCOMPARE(tile->geometry(), around);
    }
}

} // namespace
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
    void largePagesGoInTiles_data();
    void largePagesGoInTiles();
    void tilesFollowZoomAndMoves();
    void tilesGrowWithTheirControls();
    void pageWideControlsInTiles();

private:
    QWidget *build(const QString &xml, const QVariantMap &context = QVariantMap());
    //! Loads and builds a grid page of tiledCount controls in panelview's host.
    bool buildGrid(PanelHost &host, Layout layout);

    PanelFactory m_factory;
    RecordingHost m_host;
    ParameterManagementRegistry m_registry;
    QDomDocument m_doc;
};

bool tst_PanelFactory::buildGrid(PanelHost &host, Layout layout)
{
    QString error;
    if (host.load(gridPage(tiledCount, layout).toUtf8(), QStringLiteral("grid.xml"), &error)
        && host.build(&m_factory, &error))
        return true;
    qWarning().noquote() << error;
    return false;
}

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
    IWidgetCore *core = coreOf(gain);
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
    IWidgetCore *core = coreOf(page->findChild<QWidget *>("a"));
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
    QCOMPARE(controlsOf(page.data()).size(), PanelFactory::maxControlsPerPage);
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

void tst_PanelFactory::largePagesGoInTiles_data()
{
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("layout");
    QTest::addColumn<QList<int>>("firsts"); // the first control of each tile
    QTest::addColumn<bool>("overlapping");
    QTest::newRow("as many as fit on a page") << PanelFactory::tiledAbove << int(Rows) << QList<int>() << false;
    // 20 to a row: tiles close at the end of the row that fills them.
    QTest::newRow("more, in rows") << tiledCount << int(Rows) << QList<int>{0, 80, 160, 240}
                                   << false;
    // 15 to a column.
    QTest::newRow("more, in columns") << tiledCount << int(Columns)
                                      << QList<int>{0, 75, 150, 225} << false;
    // No run of controls ever leaves the area its tile holds.
    QTest::newRow("more, scrambled") << tiledCount << int(Scrambled)
                                     << QList<int>{0, 2 * PanelFactory::tileSize, 4 * PanelFactory::tileSize}
                                     << true;
}

void tst_PanelFactory::largePagesGoInTiles()
{
    QFETCH(int, n);
    QFETCH(int, layout);
    QFETCH(QList<int>, firsts);
    QFETCH(bool, overlapping);
    QScopedPointer<QWidget> page(build(gridPage(n, Layout(layout))));
    QVERIFY(page);
    const QList<QWidget *> controls = controlsOf(page.data());
    QCOMPARE(controls.size(), n);
    QList<QWidget *> tiles;
    for (int i = 0; i < n; ++i) {
        QWidget *parent = controls.at(i)->parentWidget();
        if (firsts.isEmpty()) {
            QCOMPARE(parent, page.data());
            continue;
        }
        QVERIFY(parent->property(panelTileProperty).toBool());
        QCOMPARE(parent->parentWidget(), page.data());
        if (firsts.contains(i))
            tiles.append(parent);
        QCOMPARE(parent, tiles.last());
    }
    QCOMPARE(tiles.size(), firsts.size());
    QCOMPARE(QSet<QWidget *>(tiles.begin(), tiles.end()).size(), tiles.size());
    bool masked = false;
    for (int t = 0; t < tiles.size(); ++t) {
        masked = masked || !tiles.at(t)->mask().isEmpty();
        for (int u = 0; u < t && !overlapping; ++u)
            QVERIFY(!tiles.at(t)->geometry().intersects(tiles.at(u)->geometry()));
    }
    QCOMPARE(masked, overlapping);
    checkPlaces(page.data(), n, Layout(layout), 1.0f);
}

void tst_PanelFactory::tilesFollowZoomAndMoves()
{
    const int n = tiledCount;
    PanelHost host(ParameterDatabase::instance());
    QVERIFY(buildGrid(host, Scrambled));
    QWidget *page = host.panel();
    QVERIFY(!host.tiles().isEmpty());
    for (float zoom : {2.0f, 0.5f, 1.5f}) {
        host.setZoom(zoom);
        checkPlaces(page, n, Scrambled, zoom);
    }
}

void tst_PanelFactory::tilesGrowWithTheirControls()
{
    // In rows, each tile holds a band of the page; controls leave theirs,
    // down and up, first on a hidden page and then on a shown one. The tile
    // grows with the control and a click still reaches it.
    const int n = tiledCount;
    PanelHost host(ParameterDatabase::instance());
    QVERIFY(buildGrid(host, Rows));
    QWidget *page = host.panel();
    QDomDocument doc;
    const struct
    {
        const char *name;
        QRect to;
    } moves[] = {{"c299", QRect(0, 0, 80, 40)},
                 // into the gap between two controls of later tiles
                 {"c128", QRect(36, 148, 4, 4)},
                 // inside the last tile, masked since c299 grew it, into a
                 // gap of the first tile
                 {"c250", QRect(116, 20, 4, 4)},
                 {"c0", QRect(770, 180, 20, 10)}, {"c64", QRect(300, 180, 36, 10)},
                 {"c200", QRect(100, 10, 36, 10)}};
    for (const auto &move : moves) {
        IWidgetCore *core = host.control(QLatin1String(move.name));
        QWidget *w = widgetOf(core);
        const QRect before = w->parentWidget()->geometry();
        doc.setContent(QStringLiteral("<Widget><Rect x='%1' y='%2' width='%3' height='%4'/></Widget>")
                           .arg(move.to.x()).arg(move.to.y()).arg(move.to.width()).arg(move.to.height()));
        core->configure(doc.documentElement());
        if (!page->isVisible()) {
            page->show();
            QVERIFY(QTest::qWaitForWindowExposed(page));
        }
        QCOMPARE(onPage(w, page), move.to);
        QCOMPARE(w->parentWidget()->geometry(), before | move.to);
        QTRY_COMPARE(page->childAt(move.to.center()), w);
    }

    // Hidden, its place in the mask goes; shown again, it takes clicks again.
    QWidget *inGap = widgetOf(host.control(QStringLiteral("c128")));
    const QPoint gap = onPage(inGap, page).center();
    inGap->hide();
    QTRY_VERIFY(page->childAt(gap) != inGap);
    inGap->show();
    QTRY_COMPARE(page->childAt(gap), inGap);

    // Scripts see places on the page.
    QString output;
    QTextStream out(&output);
    ScriptRunner runner(&host, &out);
    QString message;
    QVERIFY2(runner.execute({QStringLiteral("dump"), QStringLiteral("c299")}, &message), qPrintable(message));
    out.flush();
    QVERIFY2(output.contains(QStringLiteral("\"geometry\":[0,0,80,40]")), qPrintable(output));
}

void tst_PanelFactory::pageWideControlsInTiles()
{
    // In the middle of the description: a veil over the whole page, shown
    // because the device is bypassed, and a link that disables controls in
    // the first and the last tile.
    m_host.setParameter(QStringLiteral("dev1"), QStringLiteral("Bypass"), QStringLiteral("1"), QStringLiteral("On"));
    m_host.setParameter(QStringLiteral("dev1"), QStringLiteral("Link"), QStringLiteral("0"), QStringLiteral("Off"));
    const int n = tiledCount;
    QScopedPointer<QWidget> page(build(gridPage(n, Scrambled,
                                                QStringLiteral("<Widget type='DisablePanelContainer' name='veil'>"
                                                               "<Rect x='0' y='0' width='800' height='400'/>"
                                                               "<Address prmAddr='Bypass'/>"
                                                               "<DisableValue range='1'>1</DisableValue></Widget>\n"
                                                               "<Widget type='ChangeEnableButton' name='link'>"
                                                               "<Address prmAddr='Link'/><Target>c0</Target>"
                                                               "<Target>c%1</Target></Widget>\n").arg(n - 1))));
    m_host.clear();
    QVERIFY(page);
    QWidget *veil = page->findChild<QWidget *>(QStringLiteral("veil"));
    QVERIFY(veil);
    QCOMPARE(veil->parentWidget(), page.data());
    page->show();
    QVERIFY(QTest::qWaitForWindowExposed(page.data()));
    QVERIFY(veil->isVisible());
    // Controls described before and after it are all beneath it.
    for (const QString &name : {QStringLiteral("c0"), QStringLiteral("c%1").arg(n / 2 + 1), QStringLiteral("c%1").arg(n - 1)}) {
        QWidget *w = page->findChild<QWidget *>(name);
        QCOMPARE(page->childAt(onPage(w, page.data()).center()), veil);
    }
    QCOMPARE(page->children().last(), veil);

    QWidget *first = page->findChild<QWidget *>(QStringLiteral("c0"));
    QWidget *last = page->findChild<QWidget *>(QStringLiteral("c%1").arg(n - 1));
    QVERIFY(first->parentWidget() != last->parentWidget());
    QTRY_VERIFY(!first->isEnabled());
    QVERIFY(!last->isEnabled());
    QVERIFY(page->findChild<QWidget *>(QStringLiteral("c1"))->isEnabled());
}

QTEST_MAIN(tst_PanelFactory)
#include "tst_panelfactory.moc"
