#include "core/BaseWidget.h"
#include "core/TagTable.h"
#include "plugin/WidgetFactory.h"
#include "support/RecordingHost.h"

#include <QDomDocument>
#include <QProcess>
#include <QtTest>

#include <memory>

namespace {

// Configures \a w from the description children \a xml.
void configure(BaseWidget &w, const QString &xml)
{
    QDomDocument doc;
    QVERIFY(doc.setContent(QLatin1String("<Widget>") + xml + QLatin1String("</Widget>")));
    w.configure(doc.documentElement());
}

// One property of each type the table parses, and a handler override.
class Probe : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(bool flag MEMBER m_flag)
    Q_PROPERTY(bool looseFlag MEMBER m_looseFlag)
    Q_PROPERTY(bool sticky MEMBER m_sticky)
    Q_PROPERTY(int count MEMBER m_count)
    Q_PROPERTY(int wide MEMBER m_wide)
    Q_PROPERTY(double ratio MEMBER m_ratio)
    Q_PROPERTY(QColor tint MEMBER m_tint)
    Q_PROPERTY(QString label MEMBER m_label)
    Q_PROPERTY(QString name MEMBER m_name)

public:
    using BaseWidget::BaseWidget;

    static const TagTable &tags()
    {
        static const TagTable table = TagTable::of<Probe>(&BaseWidget::tags(), {
            {"Flag", TagTable::boolean("flag")},
            {"LooseFlag", TagTable::boolean("looseFlag").ignoringCase()},
            {"Sticky", TagTable::boolean("sticky").settingOnlyTrue()},
            {"Count", TagTable::integer("count", 0, 100)},
            {"Wide", TagTable::integer("wide")},
            {"Ratio", TagTable::number("ratio")},
            {"Tint", TagTable::color("tint")},
            {"Label", TagTable::text("label")},
            {"Name", TagTable::trimmedText("name").refusingEmpty()},
        });
        return table;
    }
    const TagTable &tagTable() const override { return tags(); }

    bool readFocus(const QDomElement &e) override
    {
        focusTexts.append(e.text());
        return BaseWidget::readFocus(e);
    }

    QStringList focusTexts;
    bool m_flag = false;
    bool m_looseFlag = false;
    bool m_sticky = true;
    int m_count = 7;
    int m_wide = 7;
    double m_ratio = 0.5;
    QColor m_tint = Qt::blue;
    QString m_label = QStringLiteral("unset");
    QString m_name = QStringLiteral("unset");
};

// Takes "Flag" over with a handler of its own and adds nothing else.
class DerivedProbe : public Probe
{
    Q_OBJECT

public:
    using Probe::Probe;

    static const TagTable &tags()
    {
        static const TagTable table = TagTable::of<DerivedProbe>(&Probe::tags(), {
            {"Flag", &DerivedProbe::readFlag},
        });
        return table;
    }
    const TagTable &tagTable() const override { return tags(); }

    bool readFlag(const QDomElement &e)
    {
        flagTexts.append(e.text());
        return true;
    }

    QStringList flagTexts;
};

} // namespace

class TestTagTable : public QObject
{
    Q_OBJECT

private slots:
    void parsing_data();
    void parsing();
    void lookup();
    void baseHandlersDispatchVirtually();
    void badBindingIsCaught();
    void realControls_data();
    void realControls();
    void everyRealTableIsBound();
};

void TestTagTable::parsing_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("expected"); // invalid: refused, the property keeps its value

    const QVariant refused;
    QTest::newRow("bool true") << "Flag" << "true" << "flag" << QVariant(true);
    QTest::newRow("bool TRUE is not true") << "Flag" << "TRUE" << "flag" << QVariant(false);
    QTest::newRow("bool padded is not true") << "Flag" << " true" << "flag" << QVariant(false);
    QTest::newRow("bool any case TRUE") << "LooseFlag" << "TRUE" << "looseFlag" << QVariant(true);
    QTest::newRow("bool any case yes") << "LooseFlag" << "yes" << "looseFlag" << QVariant(false);
    QTest::newRow("bool only true: true") << "Sticky" << "true" << "sticky" << QVariant(true);
    QTest::newRow("bool only true: false refused") << "Sticky" << "false" << "sticky" << refused;

    QTest::newRow("int") << "Count" << " 42 " << "count" << QVariant(42);
    QTest::newRow("int lowest") << "Count" << "0" << "count" << QVariant(0);
    QTest::newRow("int highest") << "Count" << "100" << "count" << QVariant(100);
    QTest::newRow("int above range") << "Count" << "101" << "count" << refused;
    QTest::newRow("int below range") << "Count" << "-1" << "count" << refused;
    QTest::newRow("int fraction") << "Count" << "4.5" << "count" << refused;
    QTest::newRow("int exponent") << "Count" << "1e400" << "count" << refused;
    QTest::newRow("int nan") << "Count" << "nan" << "count" << refused;
    QTest::newRow("int minus") << "Count" << "-" << "count" << refused;
    QTest::newRow("int empty") << "Count" << "" << "count" << refused;
    QTest::newRow("int beyond int") << "Wide" << "4294967296" << "wide" << refused;
    QTest::newRow("int int max") << "Wide" << "2147483647" << "wide" << QVariant(2147483647);
    QTest::newRow("int int min") << "Wide" << "-2147483648" << "wide" << QVariant(int(-2147483647 - 1));

    QTest::newRow("double") << "Ratio" << "-0.25" << "ratio" << QVariant(-0.25);
    QTest::newRow("double nan") << "Ratio" << "nan" << "ratio" << refused;
    QTest::newRow("double inf") << "Ratio" << "inf" << "ratio" << refused;
    QTest::newRow("double -inf") << "Ratio" << "-inf" << "ratio" << refused;
    QTest::newRow("double 1e400") << "Ratio" << "1e400" << "ratio" << refused;
    QTest::newRow("double minus") << "Ratio" << "-" << "ratio" << refused;

    QTest::newRow("colour") << "Tint" << "10, 20,30" << "tint" << QVariant(QColor(10, 20, 30));
    QTest::newRow("colour alpha") << "Tint" << "10,20,30,40" << "tint" << QVariant(QColor(10, 20, 30, 40));
    QTest::newRow("colour out of range") << "Tint" << "256,0,0" << "tint" << refused;
    QTest::newRow("colour nan") << "Tint" << "nan" << "tint" << refused;
    QTest::newRow("colour two parts") << "Tint" << "1,2" << "tint" << refused;

    QTest::newRow("text as written") << "Label" << "  a b " << "label" << QVariant(QStringLiteral("  a b "));
    QTest::newRow("text empty") << "Label" << "" << "label" << QVariant(QString());
    QTest::newRow("trimmed text") << "Name" << "  a b " << "name" << QVariant(QStringLiteral("a b"));
    QTest::newRow("trimmed text blank") << "Name" << "   " << "name" << refused;
}

void TestTagTable::parsing()
{
    QFETCH(QString, tag);
    QFETCH(QString, text);
    QFETCH(QString, property);
    QFETCH(QVariant, expected);

    Probe w(nullptr, nullptr, nullptr);
    const QVariant before = w.property(qPrintable(property));
    QDomDocument doc;
    QDomElement e = doc.createElement(tag);
    e.appendChild(doc.createTextNode(text));
    const bool applied = w.tagTable().apply(&w, e);

    QCOMPARE(applied, expected.isValid());
    QCOMPARE(w.property(qPrintable(property)), expected.isValid() ? expected : before);
}

void TestTagTable::lookup()
{
    const TagTable &table = DerivedProbe::tags();
    QVERIFY(!table.find(QStringLiteral("Nonsense")));
    QVERIFY(!table.find(QStringLiteral("flag"))); // tags are case sensitive
    QVERIFY(table.find(QStringLiteral("Count")));  // from the base table
    QVERIFY(table.find(QStringLiteral("TabOrder"))); // from BaseWidget's

    // Every tag of the chain is listed once, sorted.
    const QStringList tags = table.tags();
    QCOMPARE(tags.count(QStringLiteral("Flag")), 1);
    QVERIFY(tags.contains(QStringLiteral("Rect")));
    QVERIFY(tags.contains(QStringLiteral("Name")));
    QStringList sorted = tags;
    sorted.sort();
    QCOMPARE(tags, sorted);

    // The derived handler wins over the base's property; the rest falls back.
    DerivedProbe w(nullptr, nullptr, nullptr);
    configure(w, "<Flag>true</Flag><Count>12</Count><TabOrder>3</TabOrder>");
    QCOMPARE(w.flagTexts, QStringList{QStringLiteral("true")});
    QCOMPARE(w.m_flag, false);
    QCOMPARE(w.m_count, 12);
    QCOMPARE(w.tabOrder(), 3);
    QCOMPARE(w.handledTags(), tags);
}

void TestTagTable::baseHandlersDispatchVirtually()
{
    // BaseWidget's own tags still go through its virtual handlers.
    DerivedProbe w(nullptr, nullptr, nullptr);
    configure(w, "<Focus>strong</Focus><Focus>bogus</Focus>");
    QCOMPARE(w.focusTexts, (QStringList{QStringLiteral("strong"), QStringLiteral("bogus")}));
    QCOMPARE(w.focusPolicy(), Qt::StrongFocus);
}

void TestTagTable::badBindingIsCaught()
{
    // A debug build asserts while the table is built; a release build keeps
    // the entry out and lists it. The child does the building either way.
    if (qEnvironmentVariableIsSet("CORVANE_TAGTABLE_CHILD")) {
        const TagTable table = TagTable::of<Probe>(&BaseWidget::tags(), {
            {"Missing", TagTable::integer("noSuchProperty")},
            {"WrongType", TagTable::integer("label")},
            {"ReadOnly", TagTable::integer("tabOrder")},
            {"Good", TagTable::integer("count")},
        });
        QCOMPARE(table.problems().size(), 3);
        QVERIFY(!table.find(QStringLiteral("Missing")));
        QVERIFY(!table.find(QStringLiteral("WrongType")));
        QVERIFY(!table.find(QStringLiteral("ReadOnly")));
        QVERIFY(table.find(QStringLiteral("Good")));
        return;
    }
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("CORVANE_TAGTABLE_CHILD"), QStringLiteral("1"));
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("badBindingIsCaught")});
    QVERIFY(child.waitForFinished(60000));
    const QByteArray output = child.readAll();
#ifdef QT_NO_DEBUG
    QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0, output.constData());
#else
    QVERIFY2(child.exitStatus() == QProcess::CrashExit, output.constData());
    QVERIFY2(output.contains("noSuchProperty"), output.constData());
#endif
}

void TestTagTable::realControls_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("expected"); // invalid: the default stays

    const QVariant unchanged;
    QTest::newRow("Button colour") << "Button" << "<TextColor>1,2,3</TextColor>" << "textColor"
                                   << QVariant(QColor(1, 2, 3));
    QTest::newRow("Button reverse any case") << "Button" << "<Reverse>True</Reverse>" << "reverse" << QVariant(true);
    QTest::newRow("Button image trimmed") << "Button" << "<OffImage> off.png </OffImage>" << "offImage"
                                          << QVariant(QStringLiteral("off.png"));
    QTest::newRow("Button read only not cleared") << "Button" << "<ReadOnly>true</ReadOnly><ReadOnly>false</ReadOnly>"
                                                 << "readOnly" << QVariant(true);
    QTest::newRow("Button text as written") << "Button" << "<Text> A </Text>" << "text" << QVariant(QStringLiteral(" A "));
    QTest::newRow("BeamDial width") << "BeamDial" << "<BeamWidth>180</BeamWidth>" << "beamWidth" << QVariant(180);
    QTest::newRow("BeamDial width too wide") << "BeamDial" << "<BeamWidth>181</BeamWidth>" << "beamWidth" << unchanged;
    QTest::newRow("Fader fill exact case") << "Fader" << "<FillLevel>TRUE</FillLevel>" << "fillLevel" << QVariant(false);
    QTest::newRow("Fader fill") << "Fader" << "<FillLevel>true</FillLevel>" << "fillLevel" << QVariant(true);
    QTest::newRow("Image stretch any case") << "Image" << "<Stretch>TRUE</Stretch>" << "stretch" << QVariant(true);
    QTest::newRow("SelectFrame width zero") << "SelectFrame" << "<FrameWidth>0</FrameWidth>" << "frameWidth" << unchanged;
    QTest::newRow("SelectFrame width") << "SelectFrame" << "<FrameWidth>3</FrameWidth>" << "frameWidth" << QVariant(3);
    QTest::newRow("Indicator image") << "Indicator" << "<OnImage> on.png</OnImage>" << "onImage"
                                     << QVariant(QStringLiteral("on.png"));
    QTest::newRow("HexTextBox negative") << "HexTextBox" << "<MaxLength>-1</MaxLength>" << "maxLength" << unchanged;
    QTest::newRow("HexTextBox huge") << "HexTextBox" << "<MaxLength>1e400</MaxLength>" << "maxLength" << unchanged;
    QTest::newRow("Text indent") << "Text" << "<PadLeft>12</PadLeft>" << "padLeft" << QVariant(12);
    QTest::newRow("Text indent float") << "Text" << "<PadLeft>1e9</PadLeft>" << "padLeft" << unchanged;
    QTest::newRow("Text background") << "Text" << "<BackgroundColor>9,8,7,6</BackgroundColor>" << "backgroundColor"
                                     << QVariant(QColor(9, 8, 7, 6));
    QTest::newRow("TitleText button") << "TitleText" << "<WithButton>true</WithButton>" << "withButton" << QVariant(true);
    QTest::newRow("BeamArea angle inf") << "BeamArea" << "<Angle>inf</Angle>" << "angle" << unchanged;
    QTest::newRow("BeamArea angle") << "BeamArea" << "<Angle>12.5</Angle>" << "angle" << QVariant(12.5);
    QTest::newRow("master number nan") << "TuningZoneMasterNumberBox" << "<MaxValue>nan</MaxValue>" << "maxValue"
                                       << unchanged;
    QTest::newRow("master number") << "TuningZoneMasterNumberBox" << "<MaxValue>20000</MaxValue>" << "maxValue"
                                   << QVariant(20000.0);
    QTest::newRow("window title") << "ChildWindowButton" << "<Title> Eq </Title>" << "windowTitle" << QVariant(QStringLiteral("Eq"));
}

void TestTagTable::realControls()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(QString, property);
    QFETCH(QVariant, expected);

    RecordingHost host;
    ParameterManagementRegistry registry;
    WidgetFactory factory;
    QWidget parent;
    IWidgetCore *core = factory.create(type, &parent, &host, &registry);
    QVERIFY(core);
    auto *w = dynamic_cast<BaseWidget *>(core);
    QVERIFY(w);
    const QVariant before = w->property(qPrintable(property));
    QVERIFY(before.isValid());
    configure(*w, xml);
    QCOMPARE(w->property(qPrintable(property)), expected.isValid() ? expected : before);
}

void TestTagTable::everyRealTableIsBound()
{
    RecordingHost host;
    ParameterManagementRegistry registry;
    WidgetFactory factory;
    QWidget parent;
    for (const QString &type : WidgetFactory::typeNames()) {
        auto *w = dynamic_cast<BaseWidget *>(factory.create(type, &parent, &host, &registry));
        QVERIFY2(w, qPrintable(type));
        const QStringList problems = w->tagTable().problems();
        QVERIFY2(problems.isEmpty(), qPrintable(type + QLatin1String(": ") + problems.join(QLatin1String("; "))));
        delete w;
    }
}

QTEST_MAIN(TestTagTable)
#include "tst_tagtable.moc"
