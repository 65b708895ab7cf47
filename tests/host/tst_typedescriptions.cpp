#include "TypeDescriptions.h"

#include <QtTest>

class tst_TypeDescriptions : public QObject
{
    Q_OBJECT

private slots:
    void parse_data();
    void parse();
    void describeKeepsOrderAndMarksMissing();
};

void tst_TypeDescriptions::parse_data()
{
    QTest::addColumn<QString>("markdown");
    QTest::addColumn<QStringList>("expected"); // "Name=line"

    const QString head = QStringLiteral("# Dials\n\n## Type names\n\n| Type | What it is |\n|---|---|\n");
    QTest::newRow("rows") << head + "| `Dial` | a knob |\n| `BeamDial` | behaves as its family |\n"
                          << QStringList{"BeamDial=behaves as its family", "Dial=a knob"};
    QTest::newRow("other tables are not descriptions")
        << "## Tags\n\n| `Color` | the face |\n\n" + head + "| `Dial` | a knob |\n" << QStringList{"Dial=a knob"};
    QTest::newRow("the section ends at the next heading")
        << head + "| `Dial` | a knob |\n\n## Input\n\n| `Up` | a step |\n" << QStringList{"Dial=a knob"};
    QTest::newRow("a subsection ends it too") << head + "### More\n| `Dial` | a knob |\n" << QStringList{};
    QTest::newRow("an empty line is no line") << head + "| `Dial` |  |\n" << QStringList{};
    QTest::newRow("the first line of a name wins")
        << head + "| `Dial` | a knob |\n| `Dial` | another |\n" << QStringList{"Dial=a knob"};
    QTest::newRow("backticks inside the line") << head + "| `HideDial` | the dial hidden (`HideValue`) |\n"
                                               << QStringList{"HideDial=the dial hidden (`HideValue`)"};
    QTest::newRow("no section") << QStringLiteral("| `Dial` | a knob |\n") << QStringList{};
}

void tst_TypeDescriptions::parse()
{
    QFETCH(QString, markdown);
    QFETCH(QStringList, expected);
    const QMap<QString, QString> got = TypeDescriptions::parse(markdown);
    QStringList flat;
    for (auto it = got.cbegin(); it != got.cend(); ++it)
        flat << it.key() + QLatin1Char('=') + it.value();
    QCOMPARE(flat, expected);
}

void tst_TypeDescriptions::describeKeepsOrderAndMarksMissing()
{
    const QMap<QString, QString> d{{"Fader", "a fader"}, {"Dial", "a knob"}};
    QCOMPARE(TypeDescriptions::describe({"Dial", "Meter", "Fader"}, d),
             (QStringList{"Dial\ta knob", "Meter\t", "Fader\ta fader"}));
}

QTEST_GUILESS_MAIN(tst_TypeDescriptions)
#include "tst_typedescriptions.moc"
