#include "core/AddressBinding.h"

#include <corvane/ParameterManagement.h>

#include <QtTest>

namespace {

// An address as a description gives it: "prmAddr" holds the template.
ParameterAddress address(const QString &templ, const QString &type = QString())
{
    QVariantMap keys{{"prmAddr", templ}, {"dev_uniq_id", "dev1"}};
    if (!type.isEmpty())
        keys.insert("AddrType", type);
    return ParameterAddress(keys);
}

QStringList templates(const AddressBinding &b)
{
    QStringList list;
    for (const AddressBinding::Entry &e : b.entries())
        list.append(e.templ);
    return list;
}

} // namespace

class tst_AddressBinding : public QObject
{
    Q_OBJECT

private slots:
    void selectorsStayBehind_data();
    void selectorsStayBehind();
    void binding_data();
    void binding();
    void placeholderUsers();
    void rebind();
    void category_data();
    void category();
    void outsideTheList();
};

// Each character inserts one entry: an upper-case letter is a selector of
// that type, a lower-case one an own address with that template.
void tst_AddressBinding::selectorsStayBehind_data()
{
    QTest::addColumn<QString>("sequence");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("ownCount");

    QTest::newRow("own only") << "abc" << "abc" << 3;
    QTest::newRow("selector only") << "A" << "A" << 0;
    QTest::newRow("selector first") << "Aab" << "abA" << 2;
    QTest::newRow("selectors between") << "aBcDe" << "aceBD" << 3;
    QTest::newRow("selectors keep their order") << "BAa" << "aBA" << 1;
}

void tst_AddressBinding::selectorsStayBehind()
{
    QFETCH(QString, sequence);
    QFETCH(QString, expected);
    QFETCH(int, ownCount);

    AddressBinding b;
    for (const QChar c : sequence) {
        const bool selector = c.isUpper();
        const int at = b.insert(address(QString(c), selector ? QString(c) : QString()));
        QCOMPARE(b.at(at).templ, QString(c));
    }
    QCOMPARE(templates(b).join(QString()), expected);
    QCOMPARE(b.ownCount(), ownCount);
    for (int i = 0; i < b.count(); ++i) {
        QCOMPARE(b.isSelector(i), i >= ownCount);
        QCOMPARE(b.selectorType(i), i >= ownCount ? b.at(i).templ : QString());
        // The type stays in the keys: hosts read it there.
        QCOMPARE(b.at(i).address.key("AddrType"), b.selectorType(i));
    }
    for (const QChar c : sequence) {
        if (c.isUpper())
            QCOMPARE(b.indexOfType(QString(c)), int(expected.indexOf(c)));
    }
    QCOMPARE(b.indexOfType("Z"), -1);
}

void tst_AddressBinding::binding_data()
{
    QTest::addColumn<QString>("templ");
    QTest::addColumn<QStringList>("placeholders"); // name=value pairs set before insertion
    QTest::addColumn<bool>("complete");
    QTest::addColumn<QString>("bound");

    QTest::newRow("plain") << "In/Gain" << QStringList() << true << "In/Gain";
    QTest::newRow("unknown placeholder") << "In/Ch{ChNum}/Gain" << QStringList() << false << "";
    QTest::newRow("known") << "In/Ch{ChNum}/Gain" << QStringList{"ChNum=3"} << true << "In/Ch3/Gain";
    QTest::newRow("one of two missing") << "{x}/{y}" << QStringList{"x=1"} << false << "";
    QTest::newRow("two, and repeated") << "{x}/{y}/{x}" << QStringList{"x=1", "y=2"} << true << "1/2/1";
    QTest::newRow("empty value binds") << "Ch{ChNum}" << QStringList{"ChNum="} << true << "Ch";
    QTest::newRow("braces that name nothing") << "A{-}B{}" << QStringList() << true << "A{-}B{}";
    QTest::newRow("value with braces is not expanded again")
        << "{a}" << QStringList{"a={b}", "b=x"} << true << "{b}";
    QTest::newRow("names are case-sensitive") << "{chnum}" << QStringList{"ChNum=1"} << false << "";
}

void tst_AddressBinding::binding()
{
    QFETCH(QString, templ);
    QFETCH(QStringList, placeholders);
    QFETCH(bool, complete);
    QFETCH(QString, bound);

    AddressBinding b;
    for (const QString &p : placeholders) {
        const int eq = p.indexOf('=');
        b.setPlaceholder(p.left(eq), p.mid(eq + 1));
    }
    bool ok = false;
    const QString text = b.bound(templ, &ok);
    QCOMPARE(ok, complete);
    if (complete)
        QCOMPARE(text, bound);

    const int at = b.insert(address(templ));
    const AddressBinding::Entry &e = b.at(at);
    QCOMPARE(e.templ, templ);
    QCOMPARE(e.address.isValid(), complete && !bound.isEmpty());
    QCOMPARE(e.address.keys().contains("prmAddr"), complete);
    if (complete)
        QCOMPARE(e.address.prmAddr(), bound);
    QCOMPARE(e.address.deviceId(), QString("dev1"));
    QVERIFY(!e.registered);
}

void tst_AddressBinding::placeholderUsers()
{
    AddressBinding b;
    b.insert(address("A{Ch}"));
    b.insert(address("B{ChNum}"));
    b.insert(address("Local:Sel", "ChNum"));
    b.insert(address("C{Ch}/{ChNum}"));

    // Entries are reported in list order; a longer name is another placeholder.
    QCOMPARE(b.setPlaceholder("Ch", "1"), (QVector<int>{0, 2}));
    QCOMPARE(b.setPlaceholder("ChNum", "2"), (QVector<int>{1, 2}));
    // The same value again changes nothing.
    QCOMPARE(b.setPlaceholder("Ch", "1"), QVector<int>());
    QCOMPARE(b.setPlaceholder("Ch", "4"), (QVector<int>{0, 2}));
    QCOMPARE(b.placeholder("Ch"), QString("4"));
    QVERIFY(!b.hasPlaceholder("x"));
    // An empty value is a value: setting it the first time is a change.
    b.insert(address("D{x}"));
    QVERIFY(!b.hasPlaceholder("x"));
    QCOMPARE(b.setPlaceholder("x", QString()), QVector<int>{3});
    QVERIFY(b.hasPlaceholder("x"));
    QCOMPARE(b.setPlaceholder("x", QString()), QVector<int>());
}

void tst_AddressBinding::rebind()
{
    AddressBinding b;
    const int at = b.insert(address("Meter:Ch{ChNum}"));
    QVERIFY(!b.at(at).address.isValid());

    b.setPlaceholder("ChNum", "1");
    QVariantMap keys = b.at(at).address.keys();
    QVERIFY(b.bind(at, keys));
    QCOMPARE(keys.value("prmAddr").toString(), QString("Meter:Ch1"));
    b[at].address.value().set("ui_prm_val", "0.5");
    b.assign(at, keys);
    QCOMPARE(b.at(at).address.prmAddr(), QString("Meter:Ch1"));
    QCOMPARE(b.at(at).category, AddressBinding::Meter);
    QVERIFY(b.at(at).address.value().text("ui_prm_val").isEmpty()); // another parameter: its value is not known yet

    // Binding again to the same parameter reports no change.
    keys = b.at(at).address.keys();
    QVERIFY(!b.bind(at, keys));

    // A new template takes effect at the next binding; the category follows the bound address.
    b.setTemplate(at, "Graph:Ch{ChNum}");
    keys = b.at(at).address.keys();
    QVERIFY(b.bind(at, keys));
    b.assign(at, keys);
    QCOMPARE(b.at(at).address.prmAddr(), QString("Graph:Ch1"));
    QCOMPARE(b.at(at).category, AddressBinding::Graph);

    // A template that loses its placeholder value unbinds.
    b.setTemplate(at, "Ch{Other}");
    keys = b.at(at).address.keys();
    QVERIFY(b.bind(at, keys));
    QVERIFY(!keys.contains("prmAddr"));
}

void tst_AddressBinding::category_data()
{
    QTest::addColumn<QString>("prmAddr");
    QTest::newRow("plain") << "In/Ch1/Gain";
    QTest::newRow("meter") << "Meter:In/Ch1";
    QTest::newRow("graph") << "Graph:Peq/Curve";
    QTest::newRow("local") << "Local:SelectedChannel";
    QTest::newRow("preference") << "Preference:Sp1/Model";
    QTest::newRow("editor") << "Editor:Zone";
    QTest::newRow("prefix case matters") << "meter:In";
    QTest::newRow("prefix not at the start") << "In/Meter:1";
    QTest::newRow("empty") << "";
}

void tst_AddressBinding::category()
{
    QFETCH(QString, prmAddr);
    // The enum stands for the registry's word, so registrations land where the registry expects them.
    const AddressBinding::Category c = AddressBinding::categoryOf(prmAddr);
    QCOMPARE(AddressBinding::categoryName(c), ParameterManagementRegistry::categoryOf(prmAddr));

    AddressBinding b;
    const int at = b.insert(address(prmAddr));
    QCOMPARE(b.at(at).category, c);
}

void tst_AddressBinding::outsideTheList()
{
    AddressBinding b;
    b.insert(address("A"));
    for (int i : {-1, 1, 100}) {
        QVERIFY(!b.contains(i));
        QVERIFY(!b.isSelector(i));
        QVERIFY(b.selectorType(i).isEmpty());
        QVariantMap keys{{"prmAddr", "A"}};
        QVERIFY(!b.bind(i, keys));
        b.assign(i, keys);
        b.setTemplate(i, "X");
    }
    QCOMPARE(b.count(), 1);
    QCOMPARE(b.at(0).templ, QString("A"));
}

QTEST_GUILESS_MAIN(tst_AddressBinding)
#include "tst_addressbinding.moc"
