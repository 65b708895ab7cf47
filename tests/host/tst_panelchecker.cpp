#include "PanelChecker.h"

#include <QtTest>

namespace {

PanelChecker checker()
{
    return PanelChecker(
        [](const QString &type, QStringList *tags) {
            if (type == QLatin1String("Knob")) {
                *tags = QStringList{"Rect", "Address", "AddressList", "BackgroundColor", "Size"};
                return PanelChecker::KnownTypeWithTags;
            }
            return type == QLatin1String("Quiet") ? PanelChecker::KnownType : PanelChecker::UnknownType;
        },
        [](const QString &model) { return model == QLatin1String("Vela8"); });
}

} // namespace

class tst_PanelChecker : public QObject
{
    Q_OBJECT

private slots:
    void findings_data();
    void findings();
    void format();
};

void tst_PanelChecker::findings_data()
{
    QTest::addColumn<QString>("body");     // inside <Panel width="100" height="50">, after a device line
    QTest::addColumn<QStringList>("expected");

    // Line 1 is <Panel>, line 2 the device, the body starts on line 3.
    QTest::newRow("clean") << "<Widget type=\"Knob\" name=\"k\"><Rect x=\"1\" y=\"2\" width=\"3\" height=\"4\"/>"
                              "<Address prmAddr=\"Ch1/Fader\"/><BackgroundColor>10,20,30</BackgroundColor></Widget>"
                           << QStringList();
    QTest::newRow("unknown type") << "<Widget type=\"Knobb\" name=\"k\"/>"
                                  << QStringList{"3 E unknown widget type \"Knobb\""};
    QTest::newRow("unread tag") << "<Widget type=\"Knob\" name=\"k\">\n<Colour>1,2,3</Colour></Widget>"
                                << QStringList{"4 W <Colour> is not read by Knob and is ignored"};
    QTest::newRow("no tag list, no tag warnings") << "<Widget type=\"Quiet\" name=\"q\"><Anything/></Widget>" << QStringList();
    QTest::newRow("rect incomplete") << "<Widget type=\"Knob\" name=\"k\"><Rect x=\"1\" y=\"2\" width=\"3\"/></Widget>"
                                     << QStringList{"3 E malformed geometry: <Rect> needs height"};
    QTest::newRow("rect not a number") << "<Widget type=\"Knob\" name=\"k\"><Rect x=\"1\" y=\"2\" width=\"3px\" height=\"4\"/></Widget>"
                                       << QStringList{"3 E malformed geometry: width \"3px\" of <Rect> is not a whole number"};
    QTest::newRow("negative size") << "<Widget type=\"Knob\" name=\"k\"><Size width=\"-3\" height=\"4\"/></Widget>"
                                   << QStringList{"3 E malformed geometry: width of <Size> is negative"};
    QTest::newRow("colour out of range") << "<Widget type=\"Knob\" name=\"k\"><BackgroundColor>10,20,300</BackgroundColor></Widget>"
                                         << QStringList{"3 E malformed colour \"10,20,300\" in <BackgroundColor> (expected R,G,B or R,G,B,A from 0 to 255)"};
    QTest::newRow("colour with five parts") << "<Widget type=\"Knob\" name=\"k\"><BackgroundColor>1,2,3,4,5</BackgroundColor></Widget>"
                                            << QStringList{"3 E malformed colour \"1,2,3,4,5\" in <BackgroundColor> (expected R,G,B or R,G,B,A from 0 to 255)"};
    QTest::newRow("colour with alpha") << "<Widget type=\"Knob\" name=\"k\"><BackgroundColor> 1, 2, 3, 4 </BackgroundColor></Widget>" << QStringList();
    QTest::newRow("address without parameter") << "<Widget type=\"Knob\" name=\"k\"><Address dev_uniq_id=\"dev1\"/></Widget>"
                                               << QStringList{"3 E <Address> names no parameter (prmAddr)"};
    QTest::newRow("address as child elements") << "<Widget type=\"Knob\" name=\"k\"><Address><prmAddr>P</prmAddr><dev_uniq_id>dev1</dev_uniq_id></Address></Widget>"
                                               << QStringList();
    QTest::newRow("address naming another device") << "<Widget type=\"Knob\" name=\"k\"><AddressList>\n<Address prmAddr=\"P\" dev_uniq_id=\"dev9\"/>\n<Adress prmAddr=\"P\"/></AddressList></Widget>"
                                                   << QStringList{"4 W <Address> names device \"dev9\", which the panel does not declare",
                                                                  "5 W <AddressList> holds <Address> elements, not <Adress>"};
    QTest::newRow("duplicate name") << "<Widget type=\"Knob\" name=\"k\"/>\n<Widget type=\"Knob\" name=\"k\"/>"
                                    << QStringList{"4 W the name \"k\" is already used on line 3"};
    QTest::newRow("no name, no type") << "<Widget/>" << QStringList{"3 W widget without a name: scripts cannot reach it",
                                                                     "3 E <Widget> needs a type"};
    QTest::newRow("stray element") << "<Widgets/>" << QStringList{"1 W the panel holds no widgets",
                                                                   "3 W <Widgets> is not part of a panel and is ignored"};
    QTest::newRow("device problems") << "<Device id=\"dev1\" model=\"Other\"/>\n<Device model=\"Vela8\"/>\n<Widget type=\"Quiet\" name=\"q\"/>"
                                     << QStringList{"3 E device \"dev1\" is declared twice",
                                                    "3 W device model \"Other\" is unknown: its parameters will not answer",
                                                    "4 E <Device> needs an id"};
}

void tst_PanelChecker::findings()
{
    QFETCH(QString, body);
    QFETCH(QStringList, expected);
    const QString xml = QStringLiteral("<Panel width=\"100\" height=\"50\">\n<Device id=\"dev1\" model=\"Vela8\"/>\n%1\n</Panel>").arg(body);
    QStringList actual;
    for (const PanelChecker::Finding &f : checker().check(xml.toUtf8()))
        actual << QStringLiteral("%1 %2 %3").arg(f.line).arg(f.error ? 'E' : 'W').arg(f.message);
    QCOMPARE(actual, expected);
}

void tst_PanelChecker::format()
{
    // Whole-document problems: broken XML, the wrong root, no devices for a device-less address.
    const PanelChecker c = checker();
    QList<PanelChecker::Finding> f = c.check("<Panel width=\"10\" height=\"10\">\n<Widget type=\"Knob\" name=\"k\">\n</Panel>");
    QCOMPARE(f.size(), 1);
    QCOMPARE(f.first().line, 3);
    QVERIFY(PanelChecker::hasError(f));
    QVERIFY(PanelChecker::format("p.xml", f).first().startsWith("p.xml:3: error: not well-formed XML: "));

    f = c.check("<Page/>");
    QCOMPARE(PanelChecker::format("p.xml", f), QStringList{"p.xml:1: error: the root element must be <Panel>, not <Page>"});

    f = c.check("<Panel width=\"0\" height=\"wide\">\n<Widget type=\"Knob\" name=\"k\">\n<Address prmAddr=\"P\"/></Widget></Panel>");
    QCOMPARE(PanelChecker::format("p.xml", f),
             (QStringList{"p.xml:1: error: malformed geometry: Panel width \"0\" is not a whole number above 0",
                          "p.xml:1: error: malformed geometry: Panel height \"wide\" is not a whole number above 0",
                          "p.xml:3: error: <Address> names no device and the panel declares none"}));

    f = c.check("<Panel width=\"10\" height=\"10\" background=\"20,20\">\n<Device id=\"d\" model=\"Vela8\"/></Panel>");
    QCOMPARE(PanelChecker::format("p.xml", f).first(),
             QString("p.xml:1: error: malformed colour \"20,20\" in the Panel's background (expected R,G,B or R,G,B,A from 0 to 255)"));
    QVERIFY(!PanelChecker::hasError(c.check("<Panel width=\"10\" height=\"10\" background=\"20,20,20\"><Device id=\"d\" model=\"Vela8\"/></Panel>")));

    f = c.check("<Panel width=\"10\" height=\"10\"><Widget type=\"Knob\" name=\"k\"><Junk/></Widget></Panel>");
    QVERIFY(!PanelChecker::hasError(f));
    QCOMPARE(PanelChecker::format("p.xml", f), QStringList{"p.xml:1: warning: <Junk> is not read by Knob and is ignored"});
}

QTEST_GUILESS_MAIN(tst_PanelChecker)
#include "tst_panelchecker.moc"
