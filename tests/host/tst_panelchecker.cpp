#include "PanelChecker.h"

#include <QtTest>

namespace {

PanelChecker checker()
{
    PanelChecker c(
        [](const QString &type, QStringList *tags) {
            if (type == QLatin1String("Knob")) {
                *tags = QStringList{"Rect", "Address", "AddressList", "BackgroundColor", "Size", "Indicator",
                                    "DragEnabled", "ReadOnly", "Image", "StackList", "LevelList"};
                return PanelChecker::KnownTypeWithTags;
            }
            return type == QLatin1String("Quiet") ? PanelChecker::KnownType : PanelChecker::UnknownType;
        },
        [](const QString &model) { return model == QLatin1String("Vela8"); });
    c.setTypeNames({"Knob", "Quiet", "Fader"});
    c.setParameterLookup([](const QString &model) {
        return model == QLatin1String("Vela8") ? QStringList{"Ch1/Fader", "Ch2/Fader", "Ch1/HA/Gain", "Meter:Ch1/Level"}
                                               : QStringList();
    });
    c.setFileLookup([](PanelChecker::FileKind kind, const QString &name) {
        return name == (kind == PanelChecker::ImageFile ? QLatin1String("knob.svg") : QLatin1String("page"));
    });
    return c;
}

} // namespace

class tst_PanelChecker : public QObject
{
    Q_OBJECT

private slots:
    void findings_data();
    void findings();
    void format();
    void collapseAndSummary();
    void nearest_data();
    void nearest();
    void hostile_data();
    void hostile();
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
                                  << QStringList{"3 E unknown widget type \"Knobb\"; did you mean \"Knob\"?"};
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
    QTest::newRow("address as child elements") << "<Widget type=\"Knob\" name=\"k\"><Address><prmAddr>Ch1/Fader</prmAddr><dev_uniq_id>dev1</dev_uniq_id></Address></Widget>"
                                               << QStringList();
    QTest::newRow("address naming another device") << "<Widget type=\"Knob\" name=\"k\"><AddressList>\n<Address prmAddr=\"P\" dev_uniq_id=\"dev9\"/>\n<Adress prmAddr=\"P\"/></AddressList></Widget>"
                                                   << QStringList{"4 W <Address> names device \"dev9\", which the panel does not declare",
                                                                  "5 W <AddressList> holds <Address> elements, not <Adress>"};
    QTest::newRow("duplicate name") << "<Widget type=\"Knob\" name=\"k\"/>\n<Widget type=\"Knob\" name=\"k\"/>"
                                    << QStringList{"4 W the name \"k\" is already used on line 3"};
    QTest::newRow("no name, no type") << "<Widget/>" << QStringList{"3 W widget without a name: scripts cannot reach it",
                                                                     "3 E <Widget> needs a type"};
    QTest::newRow("stray element") << "<Widgets/>" << QStringList{"1 W the panel holds no widgets",
                                                                   "3 W <Widgets> is not part of a panel and is ignored; did you mean <Widget>?"};
    QTest::newRow("unknown parameter") << "<Widget type=\"Knob\" name=\"k\"><Address prmAddr=\"Ch9/Fadr\"/></Widget>"
                                       << QStringList{"3 E device \"dev1\" (Vela8) has no parameter \"Ch9/Fadr\"; did you mean \"Ch1/Fader\" or \"Ch2/Fader\"?"};
    QTest::newRow("unknown parameter, nothing near") << "<Widget type=\"Knob\" name=\"k\"><Address>Completely/Else</Address></Widget>"
                                                     << QStringList{"3 E device \"dev1\" (Vela8) has no parameter \"Completely/Else\""};
    QTest::newRow("meter, local, template and foreign addresses") << "<Widget type=\"Knob\" name=\"k\"><AddressList><Address prmAddr=\"Meter:Ch1/Level\"/>"
                                                                     "<Address prmAddr=\"Local:Sel\"/><Address prmAddr=\"Ch{ChNum}/Fader\"/></AddressList></Widget>"
                                                                  << QStringList();
    QTest::newRow("unknown type suggests") << "<Widget type=\"Fadre\" name=\"k\"/>" << QStringList{"3 E unknown widget type \"Fadre\"; did you mean \"Fader\"?"};
    QTest::newRow("unread tag suggests") << "<Widget type=\"Knob\" name=\"k\"><BackgroundColour>1,2,3</BackgroundColour></Widget>"
                                         << QStringList{"3 W <BackgroundColour> is not read by Knob and is ignored; did you mean <BackgroundColor>?"};
    QTest::newRow("nested widget") << "<Widget type=\"Knob\" name=\"k\">\n<Widget type=\"Quiet\" name=\"q\"/></Widget>"
                                   << QStringList{"4 E <Widget type=\"Quiet\"> inside Knob is never built: Knob holds no controls (put it beside it on the panel)"};
    QTest::newRow("page widgets are built") << "<Widget type=\"Knob\" name=\"k\"><StackList><Page key=\"a\">\n<Widget type=\"Quiet\" name=\"q\"/>"
                                               "<Widget type=\"Nope\" name=\"n\"/></Page><Page file=\"page\"/><Page file=\"gone\"/></StackList></Widget>"
                                            << QStringList{"4 E unknown widget type \"Nope\"", "4 E panel file \"gone\" not found"};
    QTest::newRow("nested unknown tag") << "<Widget type=\"Knob\" name=\"k\"><Indicator>\n<Colour>1,2,3</Colour><Start>x</Start></Indicator></Widget>"
                                        << QStringList{"4 W <Colour> is not read inside <Indicator> and is ignored; did you mean <Color>?",
                                                       "4 W <Start> takes a whole number, not \"x\""};
    QTest::newRow("booleans") << "<Widget type=\"Knob\" name=\"k\"><DragEnabled>True</DragEnabled>\n<ReadOnly>TRUE</ReadOnly>"
                                 "<ReadOnly>yes</ReadOnly>\n<DragEnabled>true</DragEnabled><DragEnabled>False</DragEnabled></Widget>"
                              << QStringList{"3 W \"True\" in <DragEnabled> reads as false: only the exact text \"true\" is true",
                                             "4 W \"yes\" in <ReadOnly> reads as false: only \"true\" (in any case) is true"};
    QTest::newRow("images") << "<Widget type=\"Knob\" name=\"k\"><Image>knob.svg</Image>\n<Image>knob.png</Image></Widget>"
                            << QStringList{"4 E image file \"knob.png\" not found"};
    QTest::newRow("16 bits") << "<Widget type=\"Knob\" name=\"k\"><Indicator><Start>32767</Start></Indicator>\n"
                                "<Indicator><Start>32768</Start></Indicator><Size width=\"99999999999\" height=\"1\"/></Widget>"
                             << QStringList{"4 E 32768 in <Start> does not fit in 16 bits (-32768 to 32767)",
                                            "4 E width 99999999999 of <Size> does not fit in 16 bits (-32768 to 32767)"};
    QTest::newRow("positions") << "<Widget type=\"Knob\" name=\"k\"><LevelList><Level text=\"a\" position=\"0\"/><Level text=\"b\" position=\"1\"/>\n"
                                  "<Level text=\"c\" position=\"1.01\"/></LevelList><Address prmAddr=\"Ch1/Fader\" ui_prm_def_val=\"1\" ui_prm_val=\"-0.5\"/></Widget>"
                               << QStringList{"4 E position \"1.01\" of <Level> is not between 0 and 1",
                                              "4 E ui_prm_val \"-0.5\" of <Address> is not a position between 0 and 1"};
    QTest::newRow("placement") << "<Widget type=\"Quiet\" name=\"a\"><Rect x=\"90\" y=\"0\" width=\"20\" height=\"10\"/></Widget>\n"
                                  "<Widget type=\"Quiet\" name=\"b\"><Rect x=\"100\" y=\"0\" width=\"20\" height=\"10\"/></Widget>\n"
                                  "<Widget type=\"Quiet\" name=\"c\"><Rect x=\"0\" y=\"0\" width=\"100\" height=\"50\"/></Widget>\n"
                                  "<Widget type=\"Quiet\" name=\"d\"><Rect x=\"0\" y=\"0\" width=\"100\" height=\"50\"/></Widget>\n"
                                  "<Widget type=\"Knob\" name=\"e\"><Rect x=\"0\" y=\"0\" width=\"100\" height=\"50\"/></Widget>"
                               << QStringList{"3 W \"a\" (90,0 20x10) reaches past the edge of the 100x50 panel",
                                              "4 W \"b\" at 100,0 lies outside the 100x50 panel and cannot be seen",
                                              "6 W \"d\" lies exactly on \"c\" (line 5)"};
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
    QCOMPARE(PanelChecker::format("p.xml", f),
             QStringList{"p.xml:2: error: <Widget> is not closed (</Panel> on line 3 closes the <Panel> of line 1)"});
    f = c.check("<Panel width=\"10\" height=\"10\">\n<Widget type=\"Knob\" name=\"k\"><Address>\n</Widget>\n</Panel>");
    QCOMPARE(PanelChecker::format("p.xml", f),
             QStringList{"p.xml:2: error: <Address> is not closed (</Widget> on line 3 closes the <Widget> of line 2)"});
    f = c.check("<Panel width=\"10\" height=\"10\">\n</Widget>\n</Panel>");
    QCOMPARE(PanelChecker::format("p.xml", f),
             QStringList{"p.xml:2: error: </Widget> closes no open element (the open one is <Panel> of line 1)"});
    f = c.check("<Panel width=\"10\" height=\"10\">\n<Widget type=\"Knob\">\n");
    QCOMPARE(PanelChecker::format("p.xml", f), QStringList{"p.xml:2: error: <Widget> is not closed (the file ends on line 3)"});
    f = c.check("<Panel width=\"10\" height=\"10\">\n<Widget type=\"Knob\" name=\"k\" name=\"j\"/></Panel>");
    QVERIFY(PanelChecker::format("p.xml", f).first().startsWith("p.xml:2: error: not well-formed XML: "));

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

void tst_PanelChecker::collapseAndSummary()
{
    QString body;
    for (int i = 0; i < 40; ++i)
        body += QStringLiteral("<Widget type=\"Knob\" name=\"k%1\"><Address prmAddr=\"Ch1/Fader\"/></Widget>\n").arg(i);
    const QList<PanelChecker::Finding> f = checker().check(QStringLiteral("<Panel width=\"10\" height=\"10\">\n%1<Junk/></Panel>").arg(body).toUtf8());
    QCOMPARE(f.size(), 41);
    const QList<PanelChecker::Finding> c = PanelChecker::collapse(f);
    QCOMPARE(PanelChecker::format("p.xml", c),
             (QStringList{"p.xml:2: error: <Address> names no device and the panel declares none (and 39 more like this)",
                          "p.xml:42: warning: <Junk> is not part of a panel and is ignored"}));
    QCOMPARE(c.first().repeats.size(), 39);
    QCOMPARE(c.first().repeats.last(), 41);
    QCOMPARE(PanelChecker::summary(c), QString("40 errors, 1 warning"));
    QCOMPARE(PanelChecker::summary(f), QString("40 errors, 1 warning"));
    QCOMPARE(PanelChecker::summary({}), QString("ok"));
    QCOMPARE(PanelChecker::summary({{1, false, "w"}}), QString("0 errors, 1 warning"));

    const QStringList json = PanelChecker::formatJson("a \"b\".xml", PanelChecker::collapse({{3, true, "x \"y\""}, {5, true, "x \"y\""}, {4, false, "z"}}));
    QCOMPARE(json, (QStringList{"{\"file\":\"a \\\"b\\\".xml\",\"line\":3,\"severity\":\"error\",\"message\":\"x \\\"y\\\"\",\"repeats\":[5]}",
                                "{\"file\":\"a \\\"b\\\".xml\",\"line\":4,\"severity\":\"warning\",\"message\":\"z\",\"repeats\":[]}"}));
}

void tst_PanelChecker::nearest_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("candidates");
    QTest::addColumn<QStringList>("expected");
    const QStringList tags{"Color", "TextColor", "Rect", "Round", "Indicator"};
    QTest::newRow("one letter") << "Colour" << tags << QStringList{"Color"};
    QTest::newRow("swapped letters") << "Rcet" << tags << QStringList{"Rect"};
    QTest::newRow("case") << "indicator" << tags << QStringList{"Indicator"};
    QTest::newRow("nothing near") << "Volume" << tags << QStringList();
    QTest::newRow("itself is no suggestion") << "Rect" << tags << QStringList();
    QTest::newRow("only the nearest") << "Ch1/Fadr" << QStringList{"Ch2/Fader", "Ch1/Fader", "Ch1/Faders"} << QStringList{"Ch1/Fader"};
    QTest::newRow("ties in order, at most three") << "Ch9/Fader" << QStringList{"Ch1/Fader", "Ch2/Fader", "Ch3/Fader", "Ch4/Fader"}
                                                  << QStringList{"Ch1/Fader", "Ch2/Fader", "Ch3/Fader"};
}

void tst_PanelChecker::nearest()
{
    QFETCH(QString, text);
    QFETCH(QStringList, candidates);
    QFETCH(QStringList, expected);
    QCOMPARE(PanelChecker::nearest(text, candidates), expected);
}

void tst_PanelChecker::hostile_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("first");
    QTest::newRow("deep nesting") << (QByteArray("<Panel width=\"1\" height=\"1\">") + QByteArray("<a>").repeated(100000)) << "1 E elements nested deeper than 256 levels";
    QTest::newRow("huge number") << QByteArray("<Panel width=\"1\" height=\"99999999999999999999999\"/>") << "1 E Panel height 99999999999999999999999 does not fit in 16 bits (up to 32767)";
    QTest::newRow("empty") << QByteArray() << "1 E not well-formed XML: Premature end of document.";
    QByteArray many = "<Panel width=\"10\" height=\"10\"><Device id=\"d\" model=\"Vela8\"/><Widget type=\"Knob\" name=\"k\">";
    for (int i = 0; i < 20000; ++i)
        many += "<Rec" + QByteArray::number(i) + "/><Address prmAddr=\"Ch1/HA/Gai" + QByteArray::number(i) + "\"/>";
    QTest::newRow("many distinct misspellings") << (many + "</Widget></Panel>") << "1 W <Rec0> is not read by Knob and is ignored; did you mean <Rect>?";
    QTest::newRow("entity bomb") << QByteArray("<!DOCTYPE Panel [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
                                               "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">"
                                               "<!ENTITY e \"&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;\"><!ENTITY f \"&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;\">]>"
                                               "<Panel width=\"1\" height=\"1\">&f;&f;&f;&f;&f;&f;&f;&f;&f;&f;</Panel>")
                                 << "1 E not well-formed XML";
}

void tst_PanelChecker::hostile()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, first);
    QElapsedTimer timer;
    timer.start();
    const QList<PanelChecker::Finding> f = checker().check(xml);
    QVERIFY(timer.elapsed() < 10000);
    QVERIFY(!f.isEmpty());
    QVERIFY2(QStringLiteral("%1 %2 %3").arg(f.first().line).arg(f.first().error ? 'E' : 'W').arg(f.first().message).startsWith(first),
             qPrintable(f.first().message));
}

QTEST_GUILESS_MAIN(tst_PanelChecker)
#include "tst_panelchecker.moc"
