#include "controls/ControlTestHost.h"

#include "panels/panels_variants.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>
#include "support/Files.h"
#include "support/Render.h"

namespace {

const RenderOptions clearGround{Qt::transparent, QWidget::DrawChildren, QImage::Format_ARGB32_Premultiplied};

// A page file with one control on the stacker's device and one on a device of its own.
const char eqPage[] =
    "<Panel name=\"eq\" width=\"300\" height=\"200\">"
    "  <Widget type=\"NumberBox\" name=\"gain\"><Rect x=\"10\" y=\"10\" width=\"60\" height=\"20\"/>"
    "    <Address prmAddr=\"EQ/Gain\"/></Widget>"
    "  <Widget type=\"NumberBox\" name=\"remote\"><Rect x=\"10\" y=\"40\" width=\"60\" height=\"20\"/>"
    "    <Address prmAddr=\"EQ/Q\" dev_uniq_id=\"devX\"/></Widget>"
    "</Panel>";

// A disabling container over the middle of the window, bound to "Bypass".
const QString bypass = QStringLiteral("<Rect x=\"50\" y=\"50\" width=\"200\" height=\"100\"/>"
                                      "<Address prmAddr=\"Bypass\"/>");

const char twoPages[] =
    "<Page key=\"0\" file=\"eq\"/>"
    "<Page key=\"1\"><Widget type=\"NumberBox\" name=\"mode\"><Rect x=\"0\" y=\"0\" width=\"50\" height=\"20\"/>"
    "  <Address prmAddr=\"Dyn/Threshold\"/></Widget></Page>";

// Pixels at least as light as grey 120 in every channel: text on a dark or empty ground.
int lightPixels(const QImage &image, const QRect &area)
{
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.alpha() > 200 && c.red() > 120 && c.green() > 120 && c.blue() > 120)
                ++n;
        }
    }
    return n;
}

BaseWidget *control(QWidget *page, const char *name)
{
    return page ? page->findChild<BaseWidget *>(QLatin1String(name)) : nullptr;
}

} // namespace

class tst_Panels : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void pageKeys_data();
    void pageKeys();
    void pagesBuiltOnceAndReused();
    void pagesInheritAddressContext();
    void reboundStackerRebuildsPages();
    void initialPage_data();
    void initialPage();
    void autoRange_data();
    void autoRange();
    void pagesWithoutAnEntry();

    void disableValues_data();
    void disableValues();
    void disableBlocksMouseAndKeys();
    void disablePainting_data();
    void disablePainting();
    void disableMulti_data();
    void disableMulti();

    void panelContainer_data();
    void panelContainer();
    void scrollPanel_data();
    void scrollPanel();
    void automixerGroup_data();
    void automixerGroup();
    void dragPanel_data();
    void dragPanel();

private:
    PanelStacker *stacker(const QString &list, const QString &address = QStringLiteral("<Address prmAddr=\"Type\"/>"))
    {
        return host.make<PanelStacker>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"300\" height=\"200\"/>")
                                       + address + list);
    }

    ControlTestHost host;
    QTemporaryDir pages;
};

void tst_Panels::initTestCase()
{
    QVERIFY(pages.isValid());
    QVERIFY(writeFile(pages.filePath(QStringLiteral("eq.xml")), eqPage));
    QVERIFY2(Panels::sharedPanelFactory(), "the host's panel factory plug-in is not in the application directory");
}

void tst_Panels::init()
{
    host.window.reset();
    host.parameters.clear();
    host.editor.clear();
    host.imagePath = pages.path();
}

void tst_Panels::pageKeys_data()
{
    QTest::addColumn<QString>("attributes");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("str");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("emptyKey"); // then, for a value with neither text

    QTest::newRow("divide 10: 0") << "divide=\"10\"" << "0" << "" << "0" << "0";
    QTest::newRow("divide 10: 9") << "divide=\"10\"" << "9" << "" << "0" << "0";
    QTest::newRow("divide 10: 10") << "divide=\"10\"" << "10" << "" << "1" << "0";
    QTest::newRow("divide 10: 25") << "divide=\"10\"" << "25" << "" << "2" << "0";
    QTest::newRow("divide, not an integer") << "divide=\"10\"" << "0.5" << "" << "0" << "0";
    QTest::newRow("range 3: 0") << "range=\"3\"" << "0" << "" << "0" << "0";
    QTest::newRow("range 3: 0.33") << "range=\"3\"" << "0.33" << "" << "1" << "0";
    QTest::newRow("range 3: 0.67") << "range=\"3\"" << "0.67" << "" << "2" << "0";
    QTest::newRow("range 3: 1") << "range=\"3\"" << "1" << "" << "3" << "0";
    QTest::newRow("range 3, not a number") << "range=\"3\"" << "offline" << "" << "0" << "0";
    QTest::newRow("range wins over divide") << "range=\"3\" divide=\"10\"" << "1" << "" << "3" << "0";
    QTest::newRow("range 0 falls to divide") << "range=\"0\" divide=\"2\"" << "7" << "" << "3" << "0";
    QTest::newRow("position text") << "" << "0.5" << "Peak" << "0.5" << "";
    QTest::newRow("display text") << "value=\"text\"" << "0.5" << "Peak" << "Peak" << "";
    QTest::newRow("range over text") << "range=\"1\" value=\"text\"" << "1" << "Shelf" << "1" << "0";
}

void tst_Panels::pageKeys()
{
    QFETCH(QString, attributes);
    QFETCH(QString, val);
    QFETCH(QString, str);
    QFETCH(QString, key);
    QFETCH(QString, emptyKey);

    auto *w = stacker(QStringLiteral("<StackList %1/>").arg(attributes));
    QVERIFY(w->currentKey().isEmpty());
    QSignalSpy changed(w, &PanelStacker::currentKeyChanged);
    host.deliver(w, QStringLiteral("Type"), val, str);
    QCOMPARE(w->currentKey(), key);
    QCOMPARE(changed.count(), 1);
    // The same value again selects nothing anew.
    w->notifyValueChanged({{"prmAddr", "Type"}, {"dev_uniq_id", "dev1"}});
    QCOMPARE(changed.count(), 1);
    // An empty value still selects a page.
    host.deliver(w, QStringLiteral("Type"), QString(), QString());
    QCOMPARE(w->currentKey(), emptyKey);
    QCOMPARE(changed.count(), key == emptyKey ? 1 : 2);
}

void tst_Panels::pagesBuiltOnceAndReused()
{
    auto *w = stacker(QStringLiteral("<StackList range=\"1\">%1</StackList>").arg(QLatin1String(twoPages)));
    QSignalSpy created(w, &PanelStacker::pageCreated);
    QCOMPARE(w->pageCount(), 0);

    host.deliver(w, QStringLiteral("Type"), QStringLiteral("0"), QString());
    QCOMPARE(created.count(), 1);
    QPointer<QWidget> eq = w->page(QStringLiteral("0"));
    QVERIFY(eq);
    QCOMPARE(w->currentPage(), eq.data());
    QVERIFY(control(eq, "gain"));
    QCOMPARE(eq->parentWidget(), w);
    QTRY_COMPARE(eq->geometry(), w->rect());

    host.deliver(w, QStringLiteral("Type"), QStringLiteral("1"), QString());
    QCOMPARE(created.count(), 2);
    QWidget *inlinePage = w->page(QStringLiteral("1"));
    QVERIFY(control(inlinePage, "mode"));
    QVERIFY(inlinePage->isVisible());
    QVERIFY(!eq->isVisible());

    host.deliver(w, QStringLiteral("Type"), QStringLiteral("0"), QString());
    QCOMPARE(created.count(), 2);
    QCOMPARE(w->currentPage(), eq.data());
    QVERIFY(eq->isVisible());
    QCOMPARE(w->pageCount(), 2);
    QCOMPARE(w->pageKeys(), QStringLiteral("0,1"));
    QCOMPARE(w->findChildren<QWidget *>(QStringLiteral("gain")).size(), 1);
}

void tst_Panels::pagesInheritAddressContext()
{
    host.setParameter(QStringLiteral("Type"), QStringLiteral("0"), QString(), QStringLiteral("devB"));
    auto *w = stacker(QStringLiteral("<StackList range=\"1\">%1</StackList>").arg(QLatin1String(twoPages)),
                      QStringLiteral("<Address prmAddr=\"Type\" dev_uniq_id=\"devB\" zone_uniq_id=\"z1\""
                                     " AddrType=\"Mode\" dev_model=\"M2\"/>"));
    QCOMPARE(w->currentKey(), QStringLiteral("0"));

    BaseWidget *gain = control(w->currentPage(), "gain");
    QVERIFY(gain);
    const QVariantMap keys = gain->addressAt(0).keys();
    QCOMPARE(keys.value("prmAddr").toString(), QStringLiteral("EQ/Gain"));
    QCOMPARE(keys.value("dev_uniq_id").toString(), QStringLiteral("devB"));
    QCOMPARE(keys.value("zone_uniq_id").toString(), QStringLiteral("z1"));
    QCOMPARE(keys.value("dev_model").toString(), QStringLiteral("M2"));
    QVERIFY(!keys.contains("AddrType"));

    // A control that names its own device keeps it.
    BaseWidget *remote = control(w->currentPage(), "remote");
    QVERIFY(remote);
    QCOMPARE(remote->addressAt(0).key("dev_uniq_id"), QStringLiteral("devX"));
}

void tst_Panels::reboundStackerRebuildsPages()
{
    host.setParameter(QStringLiteral("Type"), QStringLiteral("0"), QString(), QStringLiteral("devB"));
    host.setParameter(QStringLiteral("Type"), QStringLiteral("0"), QString(), QStringLiteral("devC"));
    auto *w = stacker(QStringLiteral("<StackList range=\"1\">%1</StackList>").arg(QLatin1String(twoPages)),
                      QStringLiteral("<Address prmAddr=\"Type\" dev_uniq_id=\"devB\"/>"));
    QPointer<QWidget> old = w->currentPage();
    QVERIFY(old);

    // The same device again keeps the pages.
    w->updateAddresses({{{"prmAddr", "Type"}, {"dev_uniq_id", "devB"}}});
    QCOMPARE(w->currentPage(), old.data());

    w->updateAddresses({{{"prmAddr", "Type"}, {"dev_uniq_id", "devC"}}});
    QWidget *fresh = w->currentPage();
    QVERIFY(fresh);
    QVERIFY(fresh != old);
    QCOMPARE(control(fresh, "gain")->addressAt(0).key("dev_uniq_id"), QStringLiteral("devC"));
    QTRY_VERIFY(old.isNull());
    QCOMPARE(w->pageCount(), 1);
}

void tst_Panels::initialPage_data()
{
    QTest::addColumn<QString>("attributes");
    QTest::addColumn<QString>("editorHint");
    QTest::addColumn<QString>("built");
    QTest::addColumn<QString>("key");

    QTest::newRow("nothing before a value") << "" << "" << "" << "";
    QTest::newRow("default") << "default=\"1\"" << "" << "1" << "1";
    QTest::newRow("preload") << "preload=\"true\"" << "" << "0,1" << "";
    QTest::newRow("preload is exact") << "preload=\"True\"" << "" << "" << "";
    QTest::newRow("preload and default") << "preload=\"true\" default=\"1\"" << "" << "0,1" << "1";
    QTest::newRow("editor hint") << "" << "1" << "1" << "1";
    QTest::newRow("default over editor hint") << "default=\"0\"" << "1" << "0,1" << "0";
}

void tst_Panels::initialPage()
{
    QFETCH(QString, attributes);
    QFETCH(QString, editorHint);
    QFETCH(QString, built);
    QFETCH(QString, key);

    if (!editorHint.isEmpty())
        host.editor.insert(QStringLiteral("editor_hint"), editorHint);
    auto *w = stacker(QStringLiteral("<StackList range=\"1\" %1>%2</StackList>").arg(attributes, QLatin1String(twoPages)));
    QCOMPARE(w->pageKeys(), built);
    QCOMPARE(w->currentKey(), key);
    QCOMPARE(w->isPageShown(), !key.isEmpty());

    host.deliver(w, QStringLiteral("Type"), QStringLiteral("1"), QString());
    QCOMPARE(w->currentKey(), QStringLiteral("1"));
    QVERIFY(control(w->currentPage(), "mode"));
}

void tst_Panels::autoRange_data()
{
    QTest::addColumn<QString>("editorAuto");
    QTest::addColumn<int>("steps");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("key");

    QTest::newRow("one step per listed page") << "" << 2 << "0.5" << "1";
    QTest::newRow("from the editor") << "4" << 4 << "0.5" << "2";
    QTest::newRow("editor gives nonsense") << "many" << 2 << "1" << "2";
}

void tst_Panels::autoRange()
{
    QFETCH(QString, editorAuto);
    QFETCH(int, steps);
    QFETCH(QString, val);
    QFETCH(QString, key);

    if (!editorAuto.isEmpty())
        host.editor.insert(QStringLiteral("editor_auto"), editorAuto);
    auto *w = stacker(QStringLiteral("<StackList range=\"auto\"><Page key=\"0\"/><Page key=\"1\"/><Page key=\"2\"/></StackList>"));
    QCOMPARE(w->stepCount(), steps);
    host.deliver(w, QStringLiteral("Type"), val, QString());
    QCOMPARE(w->currentKey(), key);
}

void tst_Panels::pagesWithoutAnEntry()
{
    // No entry and no catch-all: the empty area with the hint.
    auto *w = stacker(QStringLiteral("<StackList range=\"2\" hint=\"No settings\"><Page key=\"0\" file=\"eq\"/></StackList>"));
    host.deliver(w, QStringLiteral("Type"), QStringLiteral("1"), QString());
    QCOMPARE(w->currentKey(), QStringLiteral("2"));
    QVERIFY(!w->isPageShown());
    QCOMPARE(w->pageCount(), 0);
    QVERIFY(lightPixels(render(w, clearGround), w->rect()) > 20);

    // The hint goes once a page shows.
    host.deliver(w, QStringLiteral("Type"), QStringLiteral("0"), QString());
    QVERIFY(w->isPageShown());

    // A page without "key" serves every key that has none; a file pattern comes before it.
    w = stacker(QStringLiteral("<StackList value=\"text\" file=\"%1\">"
                               "<Page><Widget type=\"NumberBox\" name=\"generic\"/></Page></StackList>"));
    host.deliver(w, QStringLiteral("Type"), QStringLiteral("0"), QStringLiteral("eq"));
    QVERIFY(control(w->currentPage(), "gain"));
    host.deliver(w, QStringLiteral("Type"), QStringLiteral("0"), QStringLiteral("Crossover"));
    QVERIFY(control(w->currentPage(), "generic"));
    QCOMPARE(w->pageKeys(), QStringLiteral("eq"));
    QCOMPARE(w->pageCount(), 2);

    // A continuous value: every new key shows the one page without "key",
    // built once, whether a file pattern was tried first or not.
    for (const QString &list : {QStringLiteral("<StackList><Page key=\"0\" file=\"eq\"/>"
                                               "<Page><Widget type=\"NumberBox\" name=\"generic\"/></Page></StackList>"),
                                QStringLiteral("<StackList file=\"none_%1\">"
                                               "<Page><Widget type=\"NumberBox\" name=\"generic\"/></Page></StackList>")}) {
        w = stacker(list);
        QSignalSpy created(w, &PanelStacker::pageCreated);
        QWidget *shared = nullptr;
        for (int i = 1; i <= 40; ++i) {
            host.deliver(w, QStringLiteral("Type"), QString::number(i / 40.0), QString());
            QVERIFY(control(w->currentPage(), "generic"));
            if (!shared)
                shared = w->currentPage();
            QCOMPARE(w->currentPage(), shared);
        }
        QVERIFY(created.count() <= 1);
        QCOMPARE(w->findChildren<BaseWidget *>(QStringLiteral("generic")).size(), 1);
        host.deliver(w, QStringLiteral("Type"), QStringLiteral("0"), QString());
        QCOMPARE(w->pageCount(), list.contains(QLatin1String("key")) ? 2 : 1);
    }

    w = stacker(QStringLiteral("<StackList range=\"2\"/>"));
    host.deliver(w, QStringLiteral("Type"), QStringLiteral("1"), QString());
    QCOMPARE(lightPixels(render(w, clearGround), w->rect()), 0);
}

void tst_Panels::disableValues_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("str");
    QTest::addColumn<bool>("disabling");

    const QString steps = QStringLiteral("<DisableValue range=\"3\">1,,3</DisableValue>");
    QTest::newRow("step listed") << steps << "0.33" << "" << true;
    QTest::newRow("step not listed") << steps << "0.67" << "" << false;
    QTest::newRow("last step listed") << steps << "1" << "" << true;
    const QString texts = QStringLiteral("<DisableValue>Off, Bypass</DisableValue><StrValFlg>true</StrValFlg>");
    QTest::newRow("text listed") << texts << "0.5" << "Bypass" << true;
    QTest::newRow("text not listed") << texts << "0.5" << "On" << false;
    QTest::newRow("flag is exact") << QStringLiteral("<DisableValue>Bypass</DisableValue><StrValFlg>True</StrValFlg>")
                                   << "0" << "Bypass" << false;
    QTest::newRow("empty list") << QStringLiteral("<DisableValue>,,</DisableValue>") << "0" << "" << false;
    QTest::newRow("blank part dropped")
        << QStringLiteral("<DisableValue>Off, ,Bypass</DisableValue><StrValFlg>true</StrValFlg>") << "0" << "Bypass"
        << true;
    QTest::newRow("no value yet") << QStringLiteral("<DisableValue>0</DisableValue>") << "" << "" << false;
}

void tst_Panels::disableValues()
{
    QFETCH(QString, xml);
    QFETCH(QString, val);
    QFETCH(QString, str);
    QFETCH(bool, disabling);

    auto *w = host.make<DisablePanelContainer>(bypass + xml);
    QVERIFY(!w->isDisabling());
    QVERIFY(w->isHidden());
    QVERIFY(!w->disableValues().contains(QString()));

    QSignalSpy spy(w, &DisablePanelContainer::disablingChanged);
    if (!val.isEmpty() || !str.isEmpty())
        host.deliver(w, QStringLiteral("Bypass"), val, str);
    QCOMPARE(w->isDisabling(), disabling);
    QCOMPARE(w->isVisible(), disabling);
    QCOMPARE(w->isEnabled(), !disabling);
    QCOMPARE(spy.count(), disabling ? 1 : 0);

    if (!disabling)
        return;
    host.deliver(w, QStringLiteral("Bypass"), QStringLiteral("0.1"), QStringLiteral("none"));
    QVERIFY(!w->isDisabling());
    QVERIFY(w->isHidden());
    QVERIFY(w->isEnabled());
}

void tst_Panels::disableBlocksMouseAndKeys()
{
    auto *w = host.make<DisablePanelContainer>(
        bypass + QStringLiteral("<DisableValue range=\"1\">1</DisableValue><Text>Bypassed</Text>"));
    QWidget *window = host.window.get();
    // Created after the container, so stacked above it until it raises itself.
    auto *beneath = new QPushButton(QStringLiteral("Under"), window);
    beneath->setGeometry(100, 80, 60, 30);
    beneath->show();
    auto *outside = new QLineEdit(window);
    outside->setGeometry(10, 200, 100, 24);
    outside->show();
    QSignalSpy clicked(beneath, &QPushButton::clicked);
    const QPoint at = beneath->geometry().center();

    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, at);
    QTRY_COMPARE(clicked.count(), 1);

    beneath->setFocus();
    QVERIFY(beneath->hasFocus());
    host.deliver(w, QStringLiteral("Bypass"), QStringLiteral("1"), QString());
    QVERIFY(w->isDisabling());
    QCOMPARE(window->childAt(at), w);
    QVERIFY(w->covers(beneath));
    QVERIFY(!w->covers(outside));
    QVERIFY(!beneath->hasFocus());
    QVERIFY(outside->hasFocus());

    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::keyClick(beneath, Qt::Key_Space);
    QCoreApplication::processEvents();
    QCOMPARE(clicked.count(), 1);

    // Controls added while it is on come beneath it too.
    auto *late = new QPushButton(QStringLiteral("Late"), window);
    late->setGeometry(180, 80, 60, 30);
    late->show();
    QCOMPARE(window->childAt(late->geometry().center()), w);
    QVERIFY(w->covers(late));

    // Focus given by other means is handed on.
    beneath->setFocus(Qt::OtherFocusReason);
    QTRY_VERIFY(!beneath->hasFocus());

    // The controls outside keep working.
    QTest::keyClicks(outside, QStringLiteral("ok"));
    QCOMPARE(outside->text(), QStringLiteral("ok"));

    host.deliver(w, QStringLiteral("Bypass"), QStringLiteral("0"), QString());
    QVERIFY(!w->covers(beneath));
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, at);
    QTRY_COMPARE(clicked.count(), 2);
    beneath->setFocus();
    QTest::keyClick(beneath, Qt::Key_Space);
    QCOMPARE(clicked.count(), 3);
}

void tst_Panels::disablePainting_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QColor>("veil");
    QTest::addColumn<bool>("text");

    QTest::newRow("default veil with text") << "<Text>Bypassed</Text>" << DisablePanelContainer::defaultVeil << true;
    QTest::newRow("default veil, no text") << "" << DisablePanelContainer::defaultVeil << false;
    QTest::newRow("own veil") << "<Text>Locked</Text><BackgroundColor>0,0,64,128</BackgroundColor>"
                              << QColor(0, 0, 64, 128) << true;
    QTest::newRow("transparent blocker") << "<BackgroundColor>0,0,64,0</BackgroundColor>" << QColor(0, 0, 0, 0)
                                         << false;
}

void tst_Panels::disablePainting()
{
    QFETCH(QString, xml);
    QFETCH(QColor, veil);
    QFETCH(bool, text);

    auto *w = host.make<DisablePanelContainer>(bypass
                                               + QStringLiteral("<DisableValue range=\"1\">1</DisableValue><ValueTextItems>"
                                                                "<Item value=\"1\">Value</Item></ValueTextItems>")
                                               + xml);
    host.deliver(w, QStringLiteral("Bypass"), QStringLiteral("1"), QStringLiteral("1"));
    QVERIFY(w->isDisabling());

    const QImage image = render(w, clearGround);
    const QColor corner = image.pixelColor(1, 1);
    QVERIFY2(qAbs(corner.alpha() - veil.alpha()) <= 1 && qAbs(corner.red() - veil.red()) <= 2
                 && qAbs(corner.blue() - veil.blue()) <= 2,
             qPrintable(corner.name(QColor::HexArgb)));
    // The text sits in the middle, and the parameter's own text is not drawn.
    const int middle = lightPixels(image, QRect(0, 30, 200, 40));
    QCOMPARE(middle > 10, text);
    QCOMPARE(lightPixels(image, QRect(0, 0, 200, 30)) + lightPixels(image, QRect(0, 70, 200, 30)), 0);
}

void tst_Panels::disableMulti_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<bool>("disabling");

    QTest::newRow("neither") << "0" << "0" << false;
    QTest::newRow("first") << "1" << "0" << true;
    QTest::newRow("second on its own list") << "0" << "1" << true;
    QTest::newRow("second, other step") << "0" << "0.5" << false;
}

void tst_Panels::disableMulti()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(bool, disabling);

    auto *w = host.make<DisablePanelMulti>(QStringLiteral(
        "<Rect x=\"50\" y=\"50\" width=\"200\" height=\"100\"/>"
        "<AddressList><Address prmAddr=\"A\"/><Address prmAddr=\"B\"/></AddressList>"
        "<DisableValue range=\"1\">1</DisableValue><DisableValue range=\"2\">2</DisableValue>"));
    QCOMPARE(w->disableValueLists(), QStringLiteral("1;2"));
    host.deliver(w, QStringLiteral("A"), a, QString());
    host.deliver(w, QStringLiteral("B"), b, QString());
    QCOMPARE(w->isDisabling(), disabling);
    QCOMPARE(w->isVisible(), disabling);
}

void tst_Panels::panelContainer_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("child");

    QTest::newRow("file") << "<File>eq</File>" << "gain";
    QTest::newRow("panel by file attribute") << "<Panel file=\"eq\"/>" << "gain";
    QTest::newRow("inline") << "<Panel><Widget type=\"NumberBox\" name=\"inner\"><Address prmAddr=\"X\"/></Widget></Panel>"
                            << "inner";
}

void tst_Panels::panelContainer()
{
    QFETCH(QString, xml);
    QFETCH(QString, child);

    auto *w = host.make<PanelContainer>(QStringLiteral(
        "<Rect x=\"0\" y=\"0\" width=\"200\" height=\"100\"/><Address prmAddr=\"Ch\" dev_uniq_id=\"devB\"/>") + xml);
    QVERIFY(w->isPanelBuilt());
    BaseWidget *c = control(w->panel(), qPrintable(child));
    QVERIFY(c);
    QCOMPARE(c->addressAt(0).key("dev_uniq_id"), QStringLiteral("devB"));
    QTRY_COMPARE(w->panel()->geometry(), w->rect());
    // Built once: configuring again adds nothing.
    w->configure(Xml::widget(xml));
    QCOMPARE(w->findChildren<BaseWidget *>(child).size(), 1);
}

void tst_Panels::scrollPanel_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<float>("zoom");
    QTest::addColumn<bool>("scrolls");

    QTest::newRow("smaller than the panel") << QSize(150, 100) << 1.0f << true;
    QTest::newRow("larger than the panel") << QSize(380, 280) << 1.0f << false;
    QTest::newRow("zoomed in past it") << QSize(190, 140) << 2.0f << true;
    QTest::newRow("zoomed out below it") << QSize(380, 280) << 0.5f << false;
}

void tst_Panels::scrollPanel()
{
    QFETCH(QSize, size);
    QFETCH(float, zoom);
    QFETCH(bool, scrolls);

    auto *w = host.make<ScrollPanel>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"%1\" height=\"%2\"/><File>eq</File>")
                                         .arg(size.width()).arg(size.height()));
    QVERIFY(w->scrollArea());
    QCOMPARE(w->scrollArea()->widget(), w->panel());
    w->setZoom(zoom);
    QCOMPARE(w->panel()->minimumSize(), QSize(int(300 * zoom), int(200 * zoom)));
    QTRY_COMPARE(w->scrollArea()->verticalScrollBar()->maximum() > 0, scrolls);
    QCOMPARE(w->scrollArea()->horizontalScrollBar()->maximum() > 0, scrolls);
    // A panel smaller than the area is stretched to fill it.
    if (!scrolls)
        QTRY_COMPARE(w->panel()->size(), w->scrollArea()->viewport()->size());
}

void tst_Panels::automixerGroup_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QStringList>("values"); // the group's position, one after another
    QTest::addColumn<QList<bool>>("live");   // the panel enabled after each

    const QString group = QStringLiteral("<Address prmAddr=\"Am/Group1/On\"/>");
    QTest::newRow("off, on, off") << group << QStringList{"0", "1", "0"} << QList<bool>{false, true, false};
    QTest::newRow("no number is off") << group << QStringList{"-", "0.5"} << QList<bool>{false, true};
    QTest::newRow("no address: always live") << QString() << QStringList{"0"} << QList<bool>{true};
}

void tst_Panels::automixerGroup()
{
    QFETCH(QString, address);
    QFETCH(QStringList, values);
    QFETCH(QList<bool>, live);

    host.setParameter(QStringLiteral("Am/Group1/On"), values.first(), QString());
    auto *w = host.make<AutomixerGroupController>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"300\" height=\"200\"/>")
                                                  + address + QStringLiteral("<File>eq</File>"));
    QVERIFY(w->panel());
    BaseWidget *gain = control(w->panel(), "gain");
    QVERIFY(gain);
    for (int i = 0; i < values.size(); ++i) {
        if (i > 0)
            host.deliver(w, QStringLiteral("Am/Group1/On"), values.at(i), QString());
        QCOMPARE(w->isGroupOn(), live.at(i));
        QCOMPARE(gain->isEnabled(), live.at(i));
    }
}

void tst_Panels::dragPanel_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("pull");     // from the press to the release
    QTest::addColumn<QPoint>("offset");   // where the panel ends up

    QTest::newRow("pulled up and left") << "DragPanel" << QSize(150, 100) << QPoint(-30, -40) << QPoint(30, 40);
    QTest::newRow("not past its far edges") << "DragPanel" << QSize(150, 100) << QPoint(-900, -900)
                                            << QPoint(150, 100);
    QTest::newRow("not past its near edges") << "DragPanel" << QSize(150, 100) << QPoint(50, 50) << QPoint(0, 0);
    QTest::newRow("only the direction it overflows") << "DragPanel" << QSize(150, 250) << QPoint(-20, -20)
                                                     << QPoint(20, 0);
    QTest::newRow("a panel that fits does not move") << "DragPanel" << QSize(380, 280) << QPoint(-20, -20)
                                                     << QPoint(0, 0);
    QTest::newRow("channel select") << "ChannelSelectDragPanel" << QSize(150, 100) << QPoint(-10, -5)
                                    << QPoint(10, 5);
    QTest::newRow("speaker") << "SpeakerDragPanel" << QSize(150, 100) << QPoint(-10, -5) << QPoint(10, 5);
}

void tst_Panels::dragPanel()
{
    QFETCH(QString, type);
    QFETCH(QSize, size);
    QFETCH(QPoint, pull);
    QFETCH(QPoint, offset);

    const QString xml = QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"%1\" height=\"%2\"/><File>eq</File>")
                            .arg(size.width()).arg(size.height());
    const QString channel = type == QLatin1String("ChannelSelectDragPanel") ? QStringLiteral("<ChNum>1</ChNum>")
                                                                            : QString();
    auto *w = host.make<DragPanel>(type, xml + channel);
    QVERIFY(w);
    QVERIFY(w->panel());
    QCOMPARE(w->scrollArea()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    // The eq panel is 300 by 200 design pixels.
    QTRY_COMPARE(w->canMove(), size.width() < 300 || size.height() < 200);

    // Pressed on the panel's background, away from its controls.
    QWidget *page = w->panel();
    const QPoint from(280, 180);
    QVERIFY(!page->childAt(from));
    const QPoint start = from;
    // Global positions are what count: the panel moves under the pointer.
    const QPoint globalFrom = page->mapToGlobal(start);
    QMouseEvent press(QEvent::MouseButtonPress, start, globalFrom, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(page, &press);
    QCOMPARE(w->isDragging(), w->canMove());
    QMouseEvent move(QEvent::MouseMove, start, globalFrom + pull / 2, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(page, &move);
    QMouseEvent move2(QEvent::MouseMove, start, globalFrom + pull, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(page, &move2);
    QMouseEvent release(QEvent::MouseButtonRelease, start, globalFrom + pull, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(page, &release);
    QVERIFY(!w->isDragging());
    QCOMPARE(w->offset(), offset);
    QVERIFY(host.requests.isEmpty());

    // The controls on it still take their own presses.
    if (BaseWidget *gain = control(page, "gain")) {
        Input::mouse(gain, QEvent::MouseButtonPress, QPoint(5, 5));
        QVERIFY(!w->isDragging());
    }
}

QTEST_MAIN(tst_Panels)
#include "tst_panels.moc"
