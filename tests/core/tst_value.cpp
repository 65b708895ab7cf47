#include <corvane/Value.h>

#include "core/SharedKeys.h"

#include <QtTest>

class tst_Value : public QObject
{
    Q_OBJECT

private slots:
    void setReportsChange();
    void textOfAbsentKeyDoesNotInsert();
    void keysAreOrdered();
    void removeAlwaysSucceeds();
    void assignKeepsAbsentKeys();
    void emptyIgnoresPayload();
    void equality_data();
    void equality();
    void copiesAreIndependent();
    void wellKnownKeysAreShared_data();
    void wellKnownKeysAreShared();
};

void tst_Value::setReportsChange()
{
    Value v;
    QVERIFY(v.set("ui_prm_str", "-6.0 dB"));
    QVERIFY(!v.set("ui_prm_str", "-6.0 dB"));
    QVERIFY(v.set("ui_prm_str", "-5.0 dB"));
    QCOMPARE(v.text("ui_prm_str"), QString("-5.0 dB"));
    // An empty text is a text: setting it on an absent key is a change.
    QVERIFY(v.set("ui_prm_val", QString()));
    QVERIFY(!v.set("ui_prm_val", ""));
}

void tst_Value::textOfAbsentKeyDoesNotInsert()
{
    Value v;
    QCOMPARE(v.text("missing"), QString());
    QVERIFY(!v.contains("missing"));
    QVERIFY(v.isEmpty());
}

void tst_Value::keysAreOrdered()
{
    Value v;
    v.set("ui_prm_val", "0.5");
    v.set("prmAddr", "Ch/Gain");
    v.set("ui_prm_str", "x");
    QCOMPARE(v.keys(), QStringList({"prmAddr", "ui_prm_str", "ui_prm_val"}));
}

void tst_Value::removeAlwaysSucceeds()
{
    Value v;
    v.set("a", "1");
    QVERIFY(v.remove("absent"));
    QCOMPARE(v.keys(), QStringList({"a"}));
    QVERIFY(v.remove("a"));
    QVERIFY(v.isEmpty());
}

void tst_Value::assignKeepsAbsentKeys()
{
    Value target;
    target.set("a", "1");
    target.set("b", "2");
    Value other;
    other.set("b", "2");
    QVERIFY(!target.assign(other));       // nothing new
    other.set("c", "3");
    QVERIFY(target.assign(other));        // c added
    QCOMPARE(target.keys(), QStringList({"a", "b", "c"}));
    other.set("a", "9");
    QVERIFY(target.assign(other));        // a changed
    QCOMPARE(target.text("a"), QString("9"));
    QVERIFY(!target.assign(Value()));     // an empty value changes nothing
    QCOMPARE(target.keys().size(), 3);
}

void tst_Value::emptyIgnoresPayload()
{
    Value v;
    v.setPayload(42);
    QVERIFY(v.isEmpty());
    QCOMPARE(v.payload().toInt(), 42);
    v.payload() = QStringLiteral("text");
    QCOMPARE(v.payload().toString(), QString("text"));
}

void tst_Value::equality_data()
{
    QTest::addColumn<QStringList>("left");
    QTest::addColumn<QStringList>("right");
    QTest::addColumn<bool>("equal");
    QTest::newRow("both empty") << QStringList() << QStringList() << true;
    QTest::newRow("same") << QStringList{"a=1", "b=2"} << QStringList{"b=2", "a=1"} << true;
    QTest::newRow("other text") << QStringList{"a=1"} << QStringList{"a=2"} << false;
    QTest::newRow("other key") << QStringList{"a=1"} << QStringList{"b=1"} << false;
    QTest::newRow("extra key") << QStringList{"a=1"} << QStringList{"a=1", "b=1"} << false;
}

void tst_Value::equality()
{
    QFETCH(QStringList, left);
    QFETCH(QStringList, right);
    QFETCH(bool, equal);
    auto make = [](const QStringList &pairs) {
        Value v;
        for (const QString &p : pairs)
            v.set(p.section('=', 0, 0), p.section('=', 1));
        return v;
    };
    Value l = make(left), r = make(right);
    l.setPayload(1); // the payload takes no part in equality
    QCOMPARE(l == r, equal);
    QCOMPARE(l != r, !equal);
}

void tst_Value::copiesAreIndependent()
{
    Value a;
    a.set("k", "1");
    Value b = a;
    b.set("k", "2");
    QCOMPARE(a.text("k"), QString("1"));
    QCOMPARE(b.text("k"), QString("2"));
}

void tst_Value::wellKnownKeysAreShared_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("known");
    QTest::newRow("position") << "ui_prm_val" << true;
    QTest::newRow("display text") << "ui_prm_str" << true;
    QTest::newRow("minimum") << "prmMin" << true;
    QTest::newRow("maximum") << "prmMax" << true;
    QTest::newRow("value") << "prmValue" << true;
    QTest::newRow("selector type, same size as value") << "AddrType" << true;
    QTest::newRow("address") << "prmAddr" << true;
    QTest::newRow("device") << "dev_uniq_id" << true;
    QTest::newRow("same size and last letter") << "prmMxn" << false;
    QTest::newRow("case differs") << "UI_PRM_VAL" << false;
    QTest::newRow("unknown") << "colour" << false;
    QTest::newRow("empty") << "" << false;
}

// Maps of many controls hold one copy of each well-known key between them;
// any other key is handed back as it came.
void tst_Value::wellKnownKeysAreShared()
{
    QFETCH(QString, key);
    QFETCH(bool, known);
    const QString first(key.constData(), key.size());
    const QString second(key.constData(), key.size());
    const QString &a = sharedKey(first);
    const QString &b = sharedKey(second);
    QCOMPARE(a, key);
    QCOMPARE(b, key);
    if (!key.isEmpty()) // empty texts share Qt's one empty text anyway
        QCOMPARE(a.isSharedWith(b), known);
    QCOMPARE(&a == &first, !known);
}

QTEST_APPLESS_MAIN(tst_Value)
#include "tst_value.moc"
