#include <corvane/ParameterManagement.h>

#include <QThread>
#include <QtTest>

#include <typeinfo>

namespace {
void *item(int n) { return reinterpret_cast<void *>(quintptr(n)); }
}

class tst_ParameterManagement : public QObject
{
    Q_OBJECT

private slots:
    void cycles_data();
    void cycles();
    void snapshotsAreIsolated();
    void categories_data();
    void categories();
    void categoryOfPrefix_data();
    void categoryOfPrefix();
    void keyedManagers();
    void removeFromDefaultGoesToPrm();
    void unknownCategoryIsRefused();
    void concurrentAdds();
};

void tst_ParameterManagement::cycles_data()
{
    // "+a1" adds item 1 at "a", "-a1" removes it, "commit" commits; then the
    // registrations, each address with its items in order, and the queued counts.
    QTest::addColumn<QStringList>("ops");
    QTest::addColumn<QString>("registered");
    QTest::addColumn<int>("additions");
    QTest::addColumn<int>("removals");

    QTest::newRow("additions wait for the commit") << QStringList{"+a1"} << "" << 1 << 0;
    QTest::newRow("committed") << QStringList{"+a1", "commit"} << "a=1" << 0 << 0;
    QTest::newRow("removals wait too") << QStringList{"+a1", "commit", "-a1"} << "a=1" << 0 << 1;
    QTest::newRow("duplicate pairs are kept") << QStringList{"+a1", "+a1", "commit"} << "a=1,1" << 0 << 0;
    QTest::newRow("remove, then add in one cycle")
        << QStringList{"+a1", "commit", "-a1", "+a1", "commit"} << "a=1" << 0 << 0;
    QTest::newRow("remove takes every matching entry")
        << QStringList{"+a1", "+a1", "+a2", "+b1", "commit", "-a1", "commit"} << "a=2 b=1" << 0 << 0;
    QTest::newRow("removing an unknown pair does nothing")
        << QStringList{"+a1", "commit", "-a2", "-z1", "commit"} << "a=1" << 0 << 0;
    // New entries stand ahead of the older ones, newest first.
    QTest::newRow("addition order per address")
        << QStringList{"+a1", "commit", "+a2", "+a3", "commit"} << "a=3,2,1" << 0 << 0;
    QTest::newRow("addition order in a first commit")
        << QStringList{"+a1", "+b2", "+a2", "+a3", "commit"} << "a=3,2,1 b=2" << 0 << 0;
    QTest::newRow("a table emptied, then filled again")
        << QStringList{"+a1", "commit", "-a1", "+b1", "+a2", "commit", "+a3", "commit", "-b1", "commit"} << "a=3,2"
        << 0 << 0;
}

void tst_ParameterManagement::cycles()
{
    QFETCH(QStringList, ops);
    QFETCH(QString, registered);
    QFETCH(int, additions);
    QFETCH(int, removals);

    ParameterManagement m;
    for (const QString &op : ops) {
        if (op == QLatin1String("commit"))
            QVERIFY(m.commit());
        else if (op.startsWith(QLatin1Char('+')))
            QVERIFY(m.add(op.mid(1, 1), item(op.mid(2).toInt())));
        else
            m.remove(op.mid(1, 1), item(op.mid(2).toInt()));
    }
    const auto table = m.registrations();
    QStringList got;
    for (const QString &address : table.uniqueKeys()) {
        QStringList items;
        for (void *p : table.values(address))
            items << QString::number(quintptr(p));
        got << address + QLatin1Char('=') + items.join(QLatin1Char(','));
    }
    QCOMPARE(got.join(QLatin1Char(' ')), registered);
    QCOMPARE(m.pendingAdditions().size(), additions);
    QCOMPARE(m.pendingRemovals().size(), removals);
}

void tst_ParameterManagement::snapshotsAreIsolated()
{
    ParameterManagement m;
    m.add("a", item(1));
    m.commit();
    const auto snapshot = m.registrations();
    const auto queued = m.pendingAdditions();
    m.add("b", item(2));
    m.remove("a", item(1));
    m.commit();
    QCOMPARE(snapshot.size(), 1);
    QVERIFY(snapshot.contains("a", item(1)));
    QVERIFY(queued.isEmpty());
    QCOMPARE(m.registrations().size(), 1);
    QVERIFY(m.registrations().contains("b", item(2)));
}

void tst_ParameterManagement::categories_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("type");
    QTest::newRow("Prm") << "Prm" << typeid(ParameterManagement).name();
    QTest::newRow("Meter") << "Meter" << typeid(ParameterManagementMeter).name();
    QTest::newRow("Graph") << "Graph" << typeid(ParameterManagementGraph).name();
    QTest::newRow("Local") << "Local" << typeid(ParameterManagementLocal).name();
    QTest::newRow("Preference") << "Preference" << typeid(ParameterManagementPreference).name();
    QTest::newRow("Editor") << "Editor" << typeid(ParameterManagementEditor).name();
}

void tst_ParameterManagement::categories()
{
    QFETCH(QString, word);
    QFETCH(QString, type);
    ParameterManagementRegistry registry;
    QVERIFY(registry.defaultManager(word));
    QCOMPARE(QString(typeid(*registry.defaultManager(word)).name()), type);
    QVERIFY(registry.add(word, "dev1", "x", item(1)));
    ParameterManagementBase *keyed = registry.manager(word, "dev1");
    QVERIFY(keyed);
    QVERIFY(keyed != registry.defaultManager(word));
    QCOMPARE(QString(typeid(*keyed).name()), type);
}

void tst_ParameterManagement::categoryOfPrefix_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("category");
    QTest::newRow("plain") << "Ch/Gain" << "Prm";
    QTest::newRow("graph") << "Graph:Peq/Curve" << "Graph";
    QTest::newRow("meter") << "Meter:In/Level" << "Meter";
    QTest::newRow("local") << "Local:ChSel" << "Local";
    QTest::newRow("preference") << "Preference:Unit" << "Preference";
    QTest::newRow("editor") << "Editor:Page" << "Editor";
    QTest::newRow("editor needs its colon") << "Editor/Page" << "Prm";
    QTest::newRow("meter needs its colon") << "MeterIn/Level" << "Prm";
    QTest::newRow("lower-case meter") << "meter:In/Level" << "Prm";
    QTest::newRow("prefix inside") << "Ch/Meter:Level" << "Prm";
    QTest::newRow("empty") << "" << "Prm";
}

void tst_ParameterManagement::categoryOfPrefix()
{
    QFETCH(QString, address);
    QFETCH(QString, category);
    QCOMPARE(ParameterManagementRegistry::categoryOf(address), category);
}

void tst_ParameterManagement::keyedManagers()
{
    ParameterManagementRegistry registry;
    QVERIFY(!registry.manager("Prm", "dev1"));
    QVERIFY(!registry.remove("Prm", "dev1", "a", item(1))); // no manager for the key yet
    registry.add("Prm", "dev1", "a", item(1));
    ParameterManagementBase *first = registry.manager("Prm", "dev1");
    registry.add("Prm", "dev1", "b", item(2));
    QCOMPARE(registry.manager("Prm", "dev1"), first);        // found, not created again
    registry.add("Prm", "dev2", "a", item(3));
    QVERIFY(registry.manager("Prm", "dev2") != first);
    QVERIFY(!registry.manager("Meter", "dev1"));
    registry.commitAll();
    QCOMPARE(first->registrations().size(), 2);
    QVERIFY(registry.remove("Prm", "dev1", "a", item(1)));
    registry.commitAll();
    QCOMPARE(first->registrations().size(), 1);
    QCOMPARE(registry.managers("Prm").size(), 2);
}

void tst_ParameterManagement::removeFromDefaultGoesToPrm()
{
    ParameterManagementRegistry registry;
    QVERIFY(registry.addToDefault("Meter", "m", item(1)));
    QCOMPARE(registry.defaultManager("Meter")->pendingAdditions().size(), 1);
    QVERIFY(registry.removeFromDefault("Meter", "m", item(1)));
    QVERIFY(registry.defaultManager("Meter")->pendingRemovals().isEmpty());
    QCOMPARE(registry.defaultManager("Prm")->pendingRemovals().values("m"), QList<void *>{item(1)});
    registry.commitAll();
    // The Meter default manager keeps its entry: its removal went elsewhere.
    QVERIFY(registry.defaultManager("Meter")->registrations().contains("m", item(1)));
}

void tst_ParameterManagement::unknownCategoryIsRefused()
{
    ParameterManagementRegistry registry;
    QVERIFY(!registry.add("meter", "dev1", "a", item(1)));
    QVERIFY(!registry.addToDefault("meter", "a", item(1)));
    QVERIFY(!registry.removeFromDefault("meter", "a", item(1)));
    QVERIFY(!registry.remove("Nope", "dev1", "a", item(1)));
    QVERIFY(!registry.defaultManager("meter"));
    QVERIFY(registry.managers("meter").isEmpty());
    QVERIFY(registry.defaultManager("Prm")->pendingRemovals().isEmpty());
}

void tst_ParameterManagement::concurrentAdds()
{
    ParameterManagement m;
    const int perThread = 2000;
    QList<QThread *> threads;
    for (int t = 0; t < 4; ++t) {
        threads.append(QThread::create([&m, t, perThread] {
            for (int i = 0; i < perThread; ++i) {
                m.add(QString::number(i % 50), item(t * perThread + i + 1));
                if (i % 100 == 0)
                    m.commit();
            }
        }));
    }
    for (QThread *t : threads)
        t->start();
    for (QThread *t : threads) {
        t->wait();
        delete t;
    }
    m.commit();
    QCOMPARE(m.registrations().size(), 4 * perThread);
}

QTEST_GUILESS_MAIN(tst_ParameterManagement)
#include "tst_parametermanagement.moc"
