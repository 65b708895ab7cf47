#include "CommandLine.h"

#include <QtTest>

// panelview's options as QCommandLineParser reads them.
class tst_CommandLine : public QObject
{
    Q_OBJECT

private slots:
    void everyOption();
    void valueForms();
    void withoutPanel_data();
    void withoutPanel();
    void errors_data();
    void errors();
    void helpListsEveryOption();
};

void tst_CommandLine::everyOption()
{
    CommandLine c;
    QString error;
    QVERIFY2(c.parse({"--check", "--screenshot", "a.png", "--script", "s.txt", "--plugin", "p.so", "--zoom", "1.5",
                      "--trace", "panel.xml"},
                     &error),
             qPrintable(error));
    QVERIFY(c.check);
    QVERIFY(c.trace);
    QVERIFY(!c.listTypes && !c.help && !c.version);
    QCOMPARE(c.screenshot, QString("a.png"));
    QCOMPARE(c.script, QString("s.txt"));
    QCOMPARE(c.plugin, QString("p.so"));
    QCOMPARE(c.zoom, 1.5);
    QCOMPARE(c.panel, QString("panel.xml"));
    QVERIFY(c.headless());

    CommandLine window;
    QVERIFY(window.parse({"panel.xml"}, &error));
    QVERIFY(!window.headless());
    QCOMPARE(window.zoom, 1.0);
}

void tst_CommandLine::valueForms()
{
    CommandLine c;
    QString error;
    // "--name=value", a later value replacing an earlier one, options after
    // the panel, and "-" (standard input) as a value.
    QVERIFY2(c.parse({"--zoom=3", "panel.xml", "--zoom", "2", "--script", "-"}, &error), qPrintable(error));
    QCOMPARE(c.zoom, 2.0);
    QCOMPARE(c.script, QString("-"));
    QCOMPARE(c.panel, QString("panel.xml"));

    CommandLine afterDashes;
    QVERIFY2(afterDashes.parse({"--", "--odd-name.xml"}, &error), qPrintable(error));
    QCOMPARE(afterDashes.panel, QString("--odd-name.xml"));
}

void tst_CommandLine::withoutPanel_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("help");
    QTest::addColumn<bool>("version");
    QTest::addColumn<bool>("listTypes");
    QTest::newRow("--help") << QStringList{"--help"} << true << false << false;
    QTest::newRow("-h") << QStringList{"-h"} << true << false << false;
    QTest::newRow("--version") << QStringList{"--version"} << false << true << false;
    QTest::newRow("-v") << QStringList{"-v"} << false << true << false;
    QTest::newRow("--list-types") << QStringList{"--list-types", "--plugin", "x.so"} << false << false << true;
}

void tst_CommandLine::withoutPanel()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, help);
    QFETCH(bool, version);
    QFETCH(bool, listTypes);
    CommandLine c;
    QString error;
    QVERIFY2(c.parse(arguments, &error), qPrintable(error));
    QCOMPARE(c.help, help);
    QCOMPARE(c.version, version);
    QCOMPARE(c.listTypes, listTypes);
    QCOMPARE(c.aboutOnly(), c.help || c.version);
    QVERIFY(c.panel.isEmpty());
}

void tst_CommandLine::errors_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    QTest::newRow("unknown long") << QStringList{"--bogus", "p.xml"} << "Unknown option 'bogus'.";
    QTest::newRow("unknown short") << QStringList{"-x", "p.xml"} << "Unknown option 'x'.";
    QTest::newRow("missing value") << QStringList{"p.xml", "--zoom"} << "Missing value after '--zoom'.";
    QTest::newRow("zoom 0") << QStringList{"--zoom", "0", "p.xml"} << "--zoom needs a number above 0, not \"0\"";
    QTest::newRow("zoom text") << QStringList{"--zoom=big", "p.xml"} << "--zoom needs a number above 0, not \"big\"";
    QTest::newRow("zoom inf") << QStringList{"--zoom", "inf", "p.xml"} << "--zoom needs a number above 0, not \"inf\"";
    QTest::newRow("flag with value") << QStringList{"--check=yes", "p.xml"} << "Unexpected value after '--check'.";
    QTest::newRow("two panels") << QStringList{"a.xml", "b.xml"} << "one panel at a time (got \"a.xml\" and \"b.xml\")";
    QTest::newRow("no panel") << QStringList{"--check"} << "no panel description given";
    QTest::newRow("nothing") << QStringList{} << "no panel description given";
}

void tst_CommandLine::errors()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    CommandLine c;
    QString reported;
    QVERIFY(!c.parse(arguments, &reported));
    QCOMPARE(reported, error);
}

void tst_CommandLine::helpListsEveryOption()
{
    const QString help = CommandLine::usage();
    QVERIFY2(help.startsWith("Usage: panelview [options] PANEL.xml\n"), qPrintable(help));
    for (const char *option : {"--help", "--version", "--check", "--screenshot <FILE>", "--script <FILE>", "--zoom <F>",
                               "--plugin <PATH>", "--list-types", "--trace", "PANEL.xml"})
        QVERIFY2(help.contains(QLatin1String(option)), option);
    QCOMPARE(CommandLine::helpHint(), QString("Try 'panelview --help' for more information.\n"));
}

QTEST_GUILESS_MAIN(tst_CommandLine)
#include "tst_commandline.moc"
