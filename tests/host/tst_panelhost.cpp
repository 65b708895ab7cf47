#include "PanelHost.h"
#include "ParameterDatabase.h"
#include "SignalClock.h"

#include <corvane/IPanelFactory.h>
#include <corvane/IWidgetCore.h>

#include <QtTest>

namespace {

// A control that only records what the host tells it.
class FakeControl : public QWidget, public IWidgetCore
{
public:
    explicit FakeControl(QWidget *parent) : QWidget(parent) { }
    QList<QVariantMap> notified;
    QString name;

    bool configure(const QDomNode &) override { return true; }
    bool passToHost(int) override { return true; }
    bool setZoom(float zoom) override { zooms.append(zoom); return zoom > 0; }
    float zoomFactor() const override { return 1; }
    void setHighlight(bool) override { }
    QMap<QString, Value> attributeMap() const override { return {}; }
    QMap<QString, Value> &attributeMapRef() override { return attributes; }
    bool setWidgetName(const QString &n) override { name = n; return true; }
    QString &widgetName() override { return name; }
    bool isParameterWidget() const override { return true; }
    int addressCount() const override { return 0; }
    ParameterAddress &address(int) override { return empty; }
    bool applyValues(const QList<Value> &) override { return true; }
    void updateAddresses(const QList<QVariantMap> &) override { }
    QList<ParameterAddress> validAddresses() const override { return {}; }
    QMap<QString, Value> addressValues() const override { return {}; }
    QVariantList addressList() const override { return {}; }
    QJsonDocument exchangeAddressData(const QJsonDocument &) override { return {}; }
    QList<QVariant> &sideList() override { return side; }
    bool applyAddressValues(const QList<QVariantMap> &) override { return true; }
    void notifyValueChanged(const QVariantMap &parameter) override
    {
        notified.append(parameter);
        if (onNotify)
            onNotify();
    }
    const QMetaObject *widgetMetaObject() const override { return metaObject(); }
    void refresh() override { }
    bool acceptOperation(int, const QVariant &, const QVariant &) override { return false; }
    bool acceptCommand(const QVariant &) override { return false; }
    void setActive(bool) override { }
    IHostCore *hostCore() const override { return nullptr; }

    std::function<void()> onNotify;
    QList<float> zooms;

private:
    QMap<QString, Value> attributes;
    ParameterAddress empty;
    QList<QVariant> side;
};

// Builds one FakeControl per <Widget>.
class FakeFactory : public IPanelFactory
{
public:
    QWidget *createPanel(const QDomElement &panel, QWidget *parent, IHostCore *, ParameterManagementRegistry *,
                         const QVariantMap &) override
    {
        auto *page = new QWidget(parent);
        for (QDomElement e = panel.firstChildElement("Widget"); !e.isNull(); e = e.nextSiblingElement("Widget")) {
            auto *c = new FakeControl(page);
            c->setObjectName(e.attribute("name"));
        }
        return page;
    }
    QWidget *createPanelByName(const QString &, QWidget *, IHostCore *, ParameterManagementRegistry *,
                               const QVariantMap &) override
    {
        return nullptr;
    }
};

const char *const panelXml = R"(<Panel width="100" height="50">
  <Device id="dev1" model="M"/>
  <Device id="dev2" model="M"/>
  <Widget type="Fake" name="a"/>
  <Widget type="Fake" name="b"/>
  <Widget type="Fake" name="c"/>
</Panel>)";

QVariantMap at(const QString &device, const QString &prmAddr)
{
    return {{"dev_uniq_id", device}, {"prmAddr", prmAddr}};
}

} // namespace

class tst_PanelHost : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void buildsAndKnowsItsControls();
    void requestIsReportedAppliedAndDelivered();
    void requestWithApplyOffIsOnlyReported();
    void deliveryReachesTheDeviceAndDefaultManagers();
    void deliveryCommitsFirstAndSkipsDeadControls();
    void deliveryFollowsControlsThatComeAndGo();
    void registryEvent();
    void readsFillTheValue();
    void readsKeepWhatTheValueHeld();
    void loadRefusesOtherRoots();
    void devicesStartWithTheirValuesAndSignals();
    void clockRunsTheSignalsInRealTime();

private:
    FakeControl *fake(const char *name) { return static_cast<FakeControl *>(host->control(name)); }

    ParameterDatabase *db = nullptr;
    PanelHost *host = nullptr;
    FakeFactory factory;
    QStringList events;
};

void tst_PanelHost::init()
{
    db = new ParameterDatabase;
    QVERIFY(db->loadModel(R"(<DeviceModel name="M"><Parameter address="G" type="linear" min="0" max="10"/>
                             <Parameter address="Meter:L" type="meter" min="-60" max="0"/></DeviceModel>)",
                          "M.xml"));
    host = new PanelHost(db);
    events.clear();
    host->setEventSink([this](const QString &line) { events << line; });
    QString error;
    QVERIFY(host->load(panelXml, "panel.xml", &error));
    QVERIFY(host->build(&factory, &error));
}

void tst_PanelHost::cleanup()
{
    delete host;
    delete db;
}

void tst_PanelHost::buildsAndKnowsItsControls()
{
    QCOMPARE(host->controls().size(), 3);
    QVERIFY(fake("b"));
    QVERIFY(!host->control("nobody"));
    QCOMPARE(host->panel()->size(), QSize(100, 50));
    QCOMPARE(host->ownerDevice(fake("a")).value("dev_uniq_id").toString(), QStringLiteral("dev1"));
    QCOMPARE(db->devices(), QStringList({"dev1", "dev2"}));
    host->setZoom(1.5f);
    QCOMPARE(host->panel()->size(), QSize(150, 75));
    QCOMPARE(fake("c")->zooms, QList<float>{1.5f});
    host->setZoom(0);
    QCOMPARE(host->zoomFactor(), 1.5f);
}

void tst_PanelHost::requestIsReportedAppliedAndDelivered()
{
    host->registry()->add("Prm", "dev1", "G", static_cast<IWidgetCore *>(fake("a")));
    host->registry()->commitAll();
    QVERIFY(host->sendRequest(fake("b"), 2, at("dev1", "G"), 1, {{"ui_prm_str", "7 "}, {"x", "\"q\""}}));
    QCOMPARE(events, QStringList{R"({"event":"request","widget":"b","index":2,"kind":1,"args":{"ui_prm_str":"7 ","x":"\"q\""}})"});
    QCOMPARE(fake("a")->notified.size(), 1);
    QCOMPARE(fake("a")->notified.first().value("prmAddr").toString(), QStringLiteral("G"));
    QVERIFY(fake("b")->notified.isEmpty());
    QVariantMap answer;
    QVERIFY(db->readParameter(at("dev1", "G"), answer));
    QCOMPARE(answer.value("ui_prm_str").toString(), QStringLiteral("7"));

    // Refused by the database: reported, nothing delivered.
    QVERIFY(!host->sendRequest(fake("b"), 0, at("dev1", "Meter:L"), 0, {{"ui_prm_val", "1"}}));
    QCOMPARE(events.size(), 2);
    QCOMPARE(fake("a")->notified.size(), 1);
}

void tst_PanelHost::requestWithApplyOffIsOnlyReported()
{
    host->registry()->add("Prm", "dev1", "G", static_cast<IWidgetCore *>(fake("a")));
    db->setApplyRequests(false);
    QVERIFY(!host->sendRequest(fake("a"), 0, at("dev1", "G"), 3, {}));
    QCOMPARE(events, QStringList{R"({"event":"request","widget":"a","index":0,"kind":3,"args":{}})"});
    QVERIFY(fake("a")->notified.isEmpty());
    db->setApplyRequests(true);
    QVERIFY(host->sendRequest(fake("a"), 0, at("dev1", "G"), 3, {}));
    QCOMPARE(fake("a")->notified.size(), 1);
}

void tst_PanelHost::deliveryReachesTheDeviceAndDefaultManagers()
{
    ParameterManagementRegistry *r = host->registry();
    r->add("Prm", "dev1", "G", static_cast<IWidgetCore *>(fake("a")));
    r->add("Prm", "dev2", "G", static_cast<IWidgetCore *>(fake("b")));
    r->addToDefault("Prm", "G", static_cast<IWidgetCore *>(fake("c")));
    r->add("Meter", "dev1", "G", static_cast<IWidgetCore *>(fake("b"))); // same text, other category
    r->add("Prm", "dev1", "G", static_cast<IWidgetCore *>(fake("a")));  // twice: told once
    QVERIFY(db->store(at("dev1", "G"), {{"ui_prm_str", "x"}}));
    QCOMPARE(fake("a")->notified.size(), 1);
    QCOMPARE(fake("b")->notified.size(), 0);
    QCOMPARE(fake("c")->notified.size(), 1);
    QCOMPARE(fake("c")->notified.first().value("dev_uniq_id").toString(), QStringLiteral("dev1"));

    QVERIFY(db->store(at("dev1", "Meter:G"), {{"ui_prm_str", "x"}}));
    QCOMPARE(fake("b")->notified.size(), 0);
    r->add("Meter", "dev1", "Meter:G", static_cast<IWidgetCore *>(fake("b")));
    QVERIFY(db->store(at("dev1", "Meter:G"), {{"ui_prm_str", "y"}}));
    QCOMPARE(fake("b")->notified.size(), 1);
}

void tst_PanelHost::deliveryCommitsFirstAndSkipsDeadControls()
{
    ParameterManagementRegistry *r = host->registry();
    r->add("Prm", "dev1", "G", static_cast<IWidgetCore *>(fake("a")));
    r->add("Prm", "dev1", "G", static_cast<IWidgetCore *>(fake("b")));
    // The first control told takes the second down (a page switch would).
    fake("a")->onNotify = [this] { delete fake("b"); };
    host->deliver(at("dev1", "G"));
    QCOMPARE(fake("a")->notified.size(), 1);
    QVERIFY(!host->control("b"));
    QCOMPARE(host->controls().size(), 2);
}

void tst_PanelHost::deliveryFollowsControlsThatComeAndGo()
{
    ParameterManagementRegistry *r = host->registry();
    r->addToDefault("Meter", "Meter:L", static_cast<IWidgetCore *>(fake("a")));
    r->addToDefault("Meter", "Meter:L", static_cast<IWidgetCore *>(fake("b")));
    host->deliver(at("dev1", "Meter:L"));
    QCOMPARE(fake("a")->notified.size(), 1);
    QCOMPARE(fake("b")->notified.size(), 1);

    // The removal of a default registration lands on "Prm", so the "Meter"
    // table keeps the item of a control that is gone: it is skipped, again
    // and again, while the others are still told.
    IWidgetCore *gone = fake("b");
    r->removeFromDefault("Meter", "Meter:L", static_cast<IWidgetCore *>(fake("b")));
    delete fake("b");
    host->deliver(at("dev1", "Meter:L"));
    host->deliver(at("dev1", "Meter:L"));
    QCOMPARE(fake("a")->notified.size(), 3);
    QVERIFY(r->defaultManager("Meter")->registrations().values("Meter:L").contains(static_cast<void *>(gone)));

    // A control that arrives after the first delivery is told too, also
    // when it took the place of the one that is gone (the allocator often
    // hands out the same block again) and a script line committed it.
    auto *late = new FakeControl(host->panel());
    late->setObjectName("late");
    r->addToDefault("Meter", "Meter:L", static_cast<IWidgetCore *>(late));
    host->commitRegistry();
    host->deliver(at("dev1", "Meter:L"));
    QCOMPARE(late->notified.size(), 1);
    QCOMPARE(fake("a")->notified.size(), 4);

    // A control outside the panel is never told, whatever it registered.
    FakeControl stray(nullptr);
    r->addToDefault("Meter", "Meter:L", static_cast<IWidgetCore *>(&stray));
    host->deliver(at("dev1", "Meter:L"));
    QCOMPARE(stray.notified.size(), 0);
    QCOMPARE(late->notified.size(), 2);
}

void tst_PanelHost::registryEvent()
{
    ParameterManagementRegistry *r = host->registry();
    r->add("Meter", "dev1", "Meter:L", static_cast<IWidgetCore *>(fake("c")));
    r->add("Prm", "dev2", "G", static_cast<IWidgetCore *>(fake("b")));
    r->add("Prm", "dev1", "G", static_cast<IWidgetCore *>(fake("a")));
    r->addToDefault("Prm", "H", static_cast<IWidgetCore *>(fake("c")));
    QCOMPARE(host->registryEvent(), QStringLiteral(R"({"event":"registry","entries":[]})"));
    r->commitAll();
    QCOMPARE(host->registryEvent(),
             QStringLiteral(R"({"event":"registry","entries":[)"
                            R"({"category":"Prm","key":"","address":"H","widget":"c"},)"
                            R"({"category":"Prm","key":"dev1","address":"G","widget":"a"},)"
                            R"({"category":"Prm","key":"dev2","address":"G","widget":"b"},)"
                            R"({"category":"Meter","key":"dev1","address":"Meter:L","widget":"c"}]})"));
}

void tst_PanelHost::readsFillTheValue()
{
    Value value;
    QMap<QString, QString> attributes;
    QVERIFY(host->readParameter(ParameterAddress(at("dev2", "G")), value, attributes));
    QCOMPARE(value.text("ui_prm_str"), QStringLiteral("0"));
    QCOMPARE(value.text("ui_prm_val"), QStringLiteral("0"));
    QCOMPARE(attributes.value("prmType"), QStringLiteral("linear"));
    Value unknown;
    unknown.setPayload(5);
    QVERIFY(!host->readParameter(ParameterAddress(at("dev3", "G")), unknown, attributes));
    QVERIFY(!unknown.payload().isValid());
    QVERIFY(unknown.isEmpty());
}

// A value or attributes that already hold texts keep those the answer
// does not replace; a change made to a value read before leaves the next
// read as it was.
void tst_PanelHost::readsKeepWhatTheValueHeld()
{
    Value first;
    QMap<QString, QString> shared;
    QVERIFY(host->readParameter(ParameterAddress(at("dev2", "G")), first, shared));
    QVERIFY(first.set("ui_prm_str", "changed"));

    Value value;
    value.set("mine", "kept");
    value.set("ui_prm_str", "old");
    QMap<QString, QString> attributes{{"extra", "kept"}};
    QVERIFY(host->readParameter(ParameterAddress(at("dev2", "G")), value, attributes));
    QCOMPARE(value.text("mine"), QStringLiteral("kept"));
    QCOMPARE(value.text("ui_prm_str"), QStringLiteral("0"));
    QCOMPARE(value.text("prmMax"), QStringLiteral("10"));
    QCOMPARE(value.payload(), QVariant(QStringLiteral("0")));
    QCOMPARE(attributes.value("extra"), QStringLiteral("kept"));
    QCOMPARE(attributes.value("ui_prm_str"), QStringLiteral("0"));
    QCOMPARE(attributes.value("prmType"), QStringLiteral("linear"));
    QVERIFY(!attributes.contains("mine"));

    QVERIFY(db->request(at("dev2", "G"), 0, {{"ui_prm_val", "1"}}));
    QVERIFY(host->readParameter(ParameterAddress(at("dev2", "G")), value, attributes));
    QCOMPARE(value.text("ui_prm_str"), QStringLiteral("10"));
    QCOMPARE(value.payload(), QVariant(QStringLiteral("1")));
    QCOMPARE(attributes.value("ui_prm_val"), QStringLiteral("1"));
}

void tst_PanelHost::loadRefusesOtherRoots()
{
    PanelHost other(db);
    QString error;
    QVERIFY(!other.load("<Page/>", "p.xml", &error));
    QCOMPARE(error, QStringLiteral("p.xml:1: error: the root element must be <Panel>, not <Page>"));
    QVERIFY(!other.load("<Panel>", "p.xml", &error));
    QVERIFY(error.startsWith("p.xml:1: error: "));
}

void tst_PanelHost::devicesStartWithTheirValuesAndSignals()
{
    QVERIFY(db->loadModel(R"(<DeviceModel name="S">
                               <Parameter address="G" type="linear" min="0" max="10"/>
                               <Parameter address="Meter:L" type="meter" min="-60" max="0"/>
                               <Input name="In" gain="G" level="Meter:L" attack="0" release="0" hold="0"/>
                             </DeviceModel>)",
                          "S.xml"));
    PanelHost other(db);
    QString error;
    QVERIFY(other.load(R"(<Panel>
  <Device id="s" model="S">
    <Value prmAddr="G">4</Value>
    <Value prmAddr="G">eleven</Value>
    <Value prmAddr="Nothing">1</Value>
    <Signal input="In" source="tone" level="-30"/>
    <Signal input="Out" source="tone" level="-30"/>
    <Signal input="In" source="hum"/>
  </Device>
</Panel>)",
                       "p.xml", &error));
    QCOMPARE(other.warnings(), QStringList({
                                   "4: warning: \"G\" cannot be set to \"eleven\"",
                                   "5: warning: \"Nothing\" cannot be set to \"1\"",
                                   "7: warning: device \"s\" has no input \"Out\"",
                                   "8: warning: a signal is \"off\", \"tone DB\", \"noise DB\" or \"envelope FILE\"",
                               }));
    QVariantMap answer;
    QVERIFY(db->readParameter(at("s", "G"), answer));
    QCOMPARE(answer.value("ui_prm_str").toString(), QStringLiteral("4"));
    // -30 dB through a gain of 4 dB, meters without ballistics.
    db->advance(10);
    QVERIFY(db->readParameter(at("s", "Meter:L"), answer));
    QCOMPARE(answer.value("ui_prm_str").toString(), QStringLiteral("-26.0 dB"));
}

void tst_PanelHost::clockRunsTheSignalsInRealTime()
{
    SignalClock clock(db);
    clock.start(nullptr);
    QCOMPARE(clock.interval(), 16);
    const double before = db->simulatedTime();
    QElapsedTimer real;
    real.start();
    QTRY_VERIFY(db->simulatedTime() >= before + 100);
    clock.stop();
    // Never ahead of the time that really passed.
    QVERIFY(db->simulatedTime() - before <= real.elapsed() + 1);
}

QTEST_MAIN(tst_PanelHost)
#include "tst_panelhost.moc"
