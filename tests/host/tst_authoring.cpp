// What panelview tells panel authors: the tag table against the plug-in,
// the schema, the parameter lists and the type descriptions.
#include "Discovery.h"
#include "Linter.h"
#include "ParameterDatabase.h"
#include "Schema.h"
#include "TagForms.h"
#include "TypeNames.h"

#include <corvane/IWidgetFactory.h>

#include <QDomDocument>
#include <QPluginLoader>
#include <QtTest>

class tst_Authoring : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyTagHasAForm();
    void schema();
    void listParameters_data();
    void listParameters();
    void describe_data();
    void describe();

private:
    QString m_pluginPath;
    IWidgetFactory *m_factory = nullptr;
    QStringList m_types;
    QMap<QString, QStringList> m_tags;
};

void tst_Authoring::initTestCase()
{
    m_pluginPath = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("libCorvaneWidgets.so"));
    QPluginLoader loader(m_pluginPath);
    m_factory = qobject_cast<IWidgetFactory *>(loader.instance());
    QVERIFY2(m_factory, qPrintable(loader.errorString()));
    QString error;
    QVERIFY2(TypeNames::of(m_pluginPath, &m_types, &error), qPrintable(error));
    for (const QString &type : qAsConst(m_types))
        QCOMPARE(Linter::tagsOf(m_factory, type, &m_tags[type]), PanelChecker::KnownTypeWithTags);
}

void tst_Authoring::everyTagHasAForm()
{
    // A tag the plug-in reads without an entry would be described, checked and validated as plain text.
    QStringList missing;
    for (auto it = m_tags.cbegin(); it != m_tags.cend(); ++it) {
        for (const QString &tag : it.value()) {
            if (!TagForms::find(tag) && !missing.contains(tag))
                missing << tag + QLatin1String(" (") + it.key() + QLatin1Char(')');
        }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QStringLiteral(", "))));
    // Declared children have entries of their own.
    for (const QString &tag : TagForms::tags()) {
        for (const QString &child : TagForms::find(tag)->children) {
            if (child != QLatin1String("*") && child != QLatin1String("Widget"))
                QVERIFY2(TagForms::find(child, tag), qPrintable(tag + QLatin1Char('/') + child));
        }
    }
}

void tst_Authoring::schema()
{
    QDomDocument document;
    QString message;
    QVERIFY2(document.setContent(Schema::generate(m_types, m_tags), true, &message), qPrintable(message));
    const QString xs = QStringLiteral("http://www.w3.org/2001/XMLSchema");

    QMap<QString, QDomElement> types;
    const QDomNodeList named = document.documentElement().childNodes();
    for (int i = 0; i < named.count(); ++i) {
        const QDomElement e = named.at(i).toElement();
        if (e.hasAttribute(QStringLiteral("name")))
            types.insert(e.attribute(QStringLiteral("name")), e);
    }
    // The type attribute takes exactly the plug-in's names, in its order.
    QStringList enumerated;
    const QDomNodeList values = types.value(QStringLiteral("TypeName")).elementsByTagNameNS(xs, QStringLiteral("enumeration"));
    for (int i = 0; i < values.count(); ++i)
        enumerated << values.at(i).toElement().attribute(QStringLiteral("value"));
    QCOMPARE(enumerated, m_types);

    // A Widget holds every tag some type reads, each once, typed by its form.
    QSet<QString> all;
    for (const QStringList &tags : qAsConst(m_tags))
        all += QSet<QString>(tags.cbegin(), tags.cend());
    QMap<QString, QDomElement> declared;
    const QDomElement choice = types.value(QStringLiteral("Widget")).firstChildElement();
    for (QDomElement e = choice.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        QVERIFY2(!declared.contains(e.attribute(QStringLiteral("name"))), qPrintable(e.attribute(QStringLiteral("name"))));
        declared.insert(e.attribute(QStringLiteral("name")), e);
    }
    QCOMPARE(QSet<QString>(declared.keyBegin(), declared.keyEnd()), all);
    const auto base = [&](const QString &tag) {
        return declared.value(tag).elementsByTagNameNS(xs, QStringLiteral("extension")).at(0).toElement().attribute(QStringLiteral("base"));
    };
    QCOMPARE(base(QStringLiteral("DragEnabled")), QString("ExactBoolean"));
    QCOMPARE(base(QStringLiteral("BackgroundColor")), QString("Colour"));
    QCOMPARE(base(QStringLiteral("TabOrder")), QString("WholeNumber"));
    QCOMPARE(base(QStringLiteral("Text")), QString("xs:string"));
    QVERIFY2(!declared.contains(QStringLiteral("Widget")), "a Widget never holds a Widget");
}

void tst_Authoring::listParameters_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("line");
    QTest::newRow("level") << "Vela8" << "Ch1/Fader" << "Ch1/Fader\tlevel\t-138..10\tdB\t";
    QTest::newRow("options") << "Vela8" << "Ch2/Input" << "Ch2/Input\toptions\t\t\tMic|Line|USB|Network";
    QTest::newRow("read-only state") << "Vela8" << "Dev/Online" << "Dev/Online\tstate (read-only)\t\t\toffline|online";
    QTest::newRow("frequency in hertz") << "Vela8" << "Ch1/EQ/Band1/Freq" << "Ch1/EQ/Band1/Freq\tfrequency\t20.0..20000\tHz\t";
}

void tst_Authoring::listParameters()
{
    QFETCH(QString, model);
    QFETCH(QString, address);
    QFETCH(QString, line);
    const ParameterDatabase &database = *ParameterDatabase::instance();
    QString text, error;
    QTextStream out(&text);
    QVERIFY(Discovery::listParameters(database, model, out, &error));
    out.flush();
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), database.definitions(model).size() + 1);
    QCOMPARE(lines.first(), QString("address\tkind\trange\tunit\toptions"));
    const QStringList matching = lines.filter(QRegularExpression(QLatin1Char('^') + QRegularExpression::escape(address) + QLatin1Char('\t')));
    QCOMPARE(matching, QStringList{line});

    QVERIFY(!Discovery::listParameters(database, model.toLower(), out, &error));
    QCOMPARE(error, QStringLiteral("no device model \"%1\"; did you mean %2?").arg(model.toLower(), model));
}

void tst_Authoring::describe_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("expected"); // lines the description holds, in order
    QTest::newRow("meter") << "PeakMeter" << QStringList{"PeakMeter: PeakMeter : Meter : BaseWidget", "Addresses:", "  0: the level",
                                                         "  1: the peak switch", "  2: the online state (optional)", "Tags:"};
    QTest::newRow("selector after the own address") << "ChannelSelectDial"
                                                    << QStringList{"  0: the parameter the control shows and changes",
                                                                   "  then: the channel selector (ChNum)", "Tags:"};
    QTest::newRow("children of a tag") << "Dial" << QStringList{"    Color: colour R,G,B[,A], the pointer's colour",
                                                                "    Start: whole number (16 bits), where the pointer starts, 0 to 300"};
    QTest::newRow("properties") << "NumberBox" << QStringList{"Properties:", "  highlight (bool)", "  editing (bool, read-only)"};
}

void tst_Authoring::describe()
{
    QFETCH(QString, type);
    QFETCH(QStringList, expected);
    QString text, error;
    QTextStream out(&text);
    QVERIFY(Discovery::describe(m_factory, m_types, type, out, &error));
    out.flush();
    const QStringList lines = text.split(QLatin1Char('\n'));
    int at = 0;
    for (const QString &line : expected) {
        const int found = lines.indexOf(line, at);
        QVERIFY2(found >= 0, qPrintable(line + QLatin1String("\n--- in ---\n") + text));
        at = found + 1;
    }
    // Every tag the type reads is listed.
    for (const QString &tag : m_tags.value(type))
        QVERIFY2(text.contains(QLatin1String("\n  ") + tag + QLatin1Char(' ')), qPrintable(tag));

    QVERIFY(!Discovery::describe(m_factory, m_types, type + QLatin1Char('x'), out, &error));
    QVERIFY2(error.startsWith(QStringLiteral("no type \"%1x\"; did you mean ").arg(type)), qPrintable(error));
}

QTEST_MAIN(tst_Authoring)
#include "tst_authoring.moc"
