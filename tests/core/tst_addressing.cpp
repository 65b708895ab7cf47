#include "controls/dial/dial_variants.h"
#include "controls/fader/fader_variants.h"
#include "controls/indicator/indicator_variants.h"
#include "plugin/ExternalDevicesDB.h"
#include "plugin/WidgetFactory.h"
#include "support/Files.h"
#include "support/RecordingHost.h"
#include "support/Xml.h"

#include <QDomDocument>
#include <QTemporaryDir>
#include <QWidget>
#include <QtTest>

#include <memory>

using Xml::element;

namespace {

bool registered(ParameterManagementRegistry &registry, const QString &prmAddr, BaseWidget *w)
{
    registry.commitAll();
    ParameterManagementBase *m = registry.manager(ParameterManagementRegistry::categoryOf(prmAddr), "dev1");
    return m && m->registrations().contains(prmAddr, static_cast<IWidgetCore *>(w));
}

QString lastRequestAddress(const RecordingHost &host)
{
    return host.requests.isEmpty() ? QString()
                                   : host.requests.last().address.value("prmAddr").toString();
}

/*
    A control made by the factory from its type name, as a panel makes it, on
    a recording host and registry of its own.
*/
struct Made
{
    RecordingHost host;
    ParameterManagementRegistry registry;
    QWidget parent;
    BaseWidget *w = nullptr;

    bool make(const QString &type)
    {
        WidgetFactory factory;
        w = dynamic_cast<BaseWidget *>(factory.create(type, &parent, &host, &registry));
        return w;
    }
    void configure(const QString &children) { w->configure(Xml::widget(children)); }
    void change(const QString &prmAddr, const QString &val, const QString &str)
    {
        host.setParameter("dev1", prmAddr, val, str);
        w->notifyValueChanged(RecordingHost::parameterKeys(prmAddr));
    }
    bool registered(const QString &prmAddr) { return ::registered(registry, prmAddr, w); }
};

// The families each way of finding an address is mixed into, by the type names panels use.
const QList<QPair<const char *, QStringList>> strategyFamilies{
    {"ChannelSelect",
     {"ChannelSelectDial", "ChannelSelectFader", "ChannelSelectNumberBox", "ChannelSelectButton",
      "ChannelSelectFlatButton", "ChannelSelectSelectButton", "ChannelSelectComboBox", "ChannelSelectSwitcher",
      "ChannelSelectIndicator", "ChannelSelectMeter", "ChannelSelectMeterGR", "ChannelSelectParameterText",
      "ChannelSelectOnOffText", "ChannelSelectParameterImage", "ChannelSelectBandWidthNumberBox"}},
    {"BandSharing",
     {"BandSharingButton", "BandSharingFlatButton", "BandSharingSelectButton", "BandSharingMatchValueButton",
      "BandSharingIndicator", "BandSharingTextArea"}},
    {"Speaker",
     {"SpeakerDial", "SpeakerNumberBox", "SpeakerButton", "SpeakerFlatButton", "SpeakerSelectButton",
      "SpeakerComboBox", "SpeakerSwitcher", "SpeakerIndicator", "SpeakerMeter", "SpeakerMeterGR",
      "SpeakerParameterText", "SpeakerOnOffText", "SpeakerColorImage", "SpeakerBandWidthNumberBox"}},
    {"TuningZone",
     {"TuningZoneDial", "TuningZoneFader", "TuningZoneNumberBox", "TuningZoneButton", "TuningZoneStepButton",
      "TuningZoneComboBox", "TuningZoneIndicator", "TuningZoneBandWidthNumberBox"}},
    {"MatrixCell",
     {"MatrixMixerFader", "MatrixMixerNumberBox", "MatrixMixerParameterText", "DelayMatrixDial", "MatrixButton"}},
    {"RejectFocus",
     {"RejectFocusDial", "RejectFocusNumberBox", "RejectFocusButton", "RejectFocusComboBox",
      "RejectFocusParameterText"}},
    {"Hide", {"HideDial", "HideNumberBox"}},
};

// A selector fills the placeholder; its change rebinds and re-registers the control's own address.
void checkNumberSelected(Made &m, const QString &tag, const QString &placeholder)
{
    m.host.setParameter("dev1", "Local:Sel", "0", "1");
    m.host.setParameter("dev1", "P/1/Gain", "0.1", "one");
    m.host.setParameter("dev1", "P/3/Gain", "0.9", "three");
    m.configure(QStringLiteral("<Address prmAddr='P/{%1}/Gain'/><%2 prmAddr='Local:Sel'/>").arg(placeholder, tag));
    QCOMPARE(m.w->address(0).prmAddr(), QString("P/1/Gain"));
    QCOMPARE(m.w->displayText(0), QString("one"));
    QVERIFY(m.registered("P/1/Gain"));
    const int selector = m.w->addressCount() - 1;
    QVERIFY(selector > 0);
    QCOMPARE(m.w->address(selector).prmAddr(), QString("Local:Sel"));
    QCOMPARE(m.w->address(selector).key("AddrType"), placeholder);

    m.change("Local:Sel", "0", "3");
    QCOMPARE(m.w->address(0).prmAddr(), QString("P/3/Gain"));
    QCOMPARE(m.w->displayText(0), QString("three"));
    QVERIFY(m.registered("P/3/Gain"));
    QVERIFY(!m.registered("P/1/Gain"));
    QVERIFY(m.w->requestText("0"));
    QCOMPARE(lastRequestAddress(m.host), QString("P/3/Gain"));
}

// The connected loudspeaker's model picks the base address; unlisted models take DEFAULT.
void checkSpeaker(Made &m)
{
    m.host.setParameter("dev1", "Preference:Sp/Model", "0", "SP-12");
    m.configure("<Address prmAddr='{BaseAddress}/Level{indexY}'/><AddressIndexY>2</AddressIndexY>"
                "<DEFAULT>Def</DEFAULT><ModelToBaseAddressMap prmAddr='Preference:Sp/Model'>"
                "<Model name='SP-12'>S12</Model><Model name='SP-15' base='S15'/></ModelToBaseAddressMap>");
    QCOMPARE(m.w->address(0).prmAddr(), QString("S12/Level2"));
    QVERIFY(m.registered("S12/Level2"));

    m.change("Preference:Sp/Model", "0", "SP-15");
    QCOMPARE(m.w->address(0).prmAddr(), QString("S15/Level2"));
    QVERIFY(m.registered("S15/Level2"));
    QVERIFY(!m.registered("S12/Level2"));

    m.change("Preference:Sp/Model", "0", "Unknown");
    QCOMPARE(m.w->address(0).prmAddr(), QString("Def/Level2"));
    QVERIFY(m.registered("Def/Level2"));
    QVERIFY(!m.registered("S15/Level2"));
    QVERIFY(m.w->requestText("0"));
    QCOMPARE(lastRequestAddress(m.host), QString("Def/Level2"));
}

// Addresses carry the zone: from "Zone", which also fills "{Zone}", or else from the editor.
void checkTuningZone(Made &m, const QString &type)
{
    m.host.editor.insert("zone_uniq_id", "zoneA");
    m.configure("<Address prmAddr='Zone/Gain'/><Address prmAddr='Zone/Mute' zone_uniq_id='z9'/>");
    QCOMPARE(m.w->address(0).zoneId(), QString("zoneA"));
    QCOMPARE(m.w->address(1).zoneId(), QString("z9"));

    Made tagged;
    QVERIFY(tagged.make(type));
    tagged.host.editor.insert("zone_uniq_id", "zoneA");
    tagged.configure("<Zone>zB</Zone><Address prmAddr='Z{Zone}/Gain'/>");
    QCOMPARE(tagged.w->address(0).prmAddr(), QString("ZzB/Gain"));
    QCOMPARE(tagged.w->address(0).zoneId(), QString("zB"));
    QVERIFY(tagged.w->requestText("0"));
    QCOMPARE(tagged.host.requests.last().address.value("zone_uniq_id").toString(), QString("zB"));
}

// "{x}" and "{y}" of the address form follow "XIndex" and "YIndex", whichever comes first.
void checkMatrixCell(Made &m)
{
    m.configure("<XIndex>3</XIndex><AddressForm prmAddr='Mix/In{y}/Out{x}/Gain'/><YIndex>5</YIndex>");
    QCOMPARE(m.w->address(0).prmAddr(), QString("Mix/In5/Out3/Gain"));
    QVERIFY(m.registered("Mix/In5/Out3/Gain"));
    m.configure("<XIndex>4</XIndex>");
    QCOMPARE(m.w->address(0).prmAddr(), QString("Mix/In5/Out4/Gain"));
    QVERIFY(m.registered("Mix/In5/Out4/Gain"));
    QVERIFY(!m.registered("Mix/In5/Out3/Gain"));
    QVERIFY(m.w->requestText("0"));
    QCOMPARE(lastRequestAddress(m.host), QString("Mix/In5/Out4/Gain"));
}

// A listed step of the parameter switches the control's state: disabled, or hidden.
void checkGate(Made &m, const QString &tag, bool (*gated)(const BaseWidget &))
{
    m.host.setParameter("dev1", "Mode", "0.5", "Auto");
    m.configure(QStringLiteral("<Address prmAddr='Mode'/><range>2</range><%1>1,2</%1>").arg(tag));
    QVERIFY(gated(*m.w)); // step 1 of 2 is listed
    m.change("Mode", "0", "Off");
    QVERIFY(!gated(*m.w));
    m.change("Mode", "1", "On");
    QVERIFY(gated(*m.w));
}

} // namespace

class tst_Addressing : public QObject
{
    Q_OBJECT

private slots:
    void tagTablesFallBack();
    void strategiesAcrossFamilies_data();
    void strategiesAcrossFamilies();
    void channelSelectFollowsSelector_data();
    void channelSelectFollowsSelector();
    void channelSelectFixedNumber();
    void selectorStaysBehindOwnAddresses();
    void speakerBaseAddressList();
    void speakerConnectedAtPort_data();
    void speakerConnectedAtPort();
    void tuningZone();
    void rejectFocus();
};

void tst_Addressing::tagTablesFallBack()
{
    Dial dial(nullptr, nullptr, nullptr);
    ChannelSelectDial channel(nullptr, nullptr, nullptr);
    SpeakerDial speaker(nullptr, nullptr, nullptr);
    QVERIFY(!dial.handledTags().contains("ChNum"));
    QVERIFY(channel.handledTags().contains("ChNum"));
    QVERIFY(channel.handledTags().contains("Rect"));
    QVERIFY(speaker.handledTags().contains("ModelToBaseAddressMap"));
    QVERIFY(!speaker.handledTags().contains("ChNum"));
    // Each variant answers its own name.
    QCOMPARE(QString(channel.metaObject()->className()), QString("ChannelSelectDial"));
    QVERIFY(qobject_cast<Dial *>(&channel));
}

void tst_Addressing::strategiesAcrossFamilies_data()
{
    QTest::addColumn<QString>("strategy");
    QTest::addColumn<QString>("type");
    for (const auto &entry : strategyFamilies) {
        for (const QString &type : entry.second)
            QTest::addRow("%s %s", entry.first, qPrintable(type)) << QString(entry.first) << type;
    }
}

void tst_Addressing::strategiesAcrossFamilies()
{
    QFETCH(QString, strategy);
    QFETCH(QString, type);

    Made m;
    QVERIFY2(m.make(type), "the factory makes no control of this type");
    if (strategy == QLatin1String("ChannelSelect")) {
        checkNumberSelected(m, "ChNum", "ChNum");
    } else if (strategy == QLatin1String("BandSharing")) {
        checkNumberSelected(m, "BandNum", "Band");
    } else if (strategy == QLatin1String("Speaker")) {
        checkSpeaker(m);
    } else if (strategy == QLatin1String("TuningZone")) {
        checkTuningZone(m, type);
    } else if (strategy == QLatin1String("MatrixCell")) {
        checkMatrixCell(m);
    } else if (strategy == QLatin1String("RejectFocus")) {
        QCOMPARE(m.w->focusPolicy(), Qt::NoFocus);
        checkGate(m, "RejectValue", [](const BaseWidget &w) { return !w.isEnabled(); });
    } else {
        checkGate(m, "HideValue", [](const BaseWidget &w) { return w.isHidden(); });
    }
}

void tst_Addressing::channelSelectFollowsSelector_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("str");
    QTest::addColumn<QString>("bound");
    QTest::newRow("display text") << "<ChNum prmAddr='Local:ChSel'/>" << "0" << "3" << "In/Ch3/Gain";
    QTest::newRow("step with offset") << "<ChNum prmAddr='Local:ChSel' range='7' offset='1'/>" << "0.5" << "Ch 4"
                                      << "In/Ch5/Gain";
}

void tst_Addressing::channelSelectFollowsSelector()
{
    QFETCH(QString, selector);
    QFETCH(QString, val);
    QFETCH(QString, str);
    QFETCH(QString, bound);
    RecordingHost host;
    ParameterManagementRegistry registry;
    host.setParameter("dev1", "In/Ch1/Gain", "0.1", "-20 dB");
    host.setParameter("dev1", bound, "0.9", "+6 dB");
    host.setParameter("dev1", "Local:ChSel", "0", "1");
    ChannelSelectDial w(&host, &registry, nullptr);
    w.configure(element("<Widget><Address prmAddr='In/Ch{ChNum}/Gain'/>" + selector + "</Widget>"));
    QCOMPARE(w.addressCount(), 2);

    host.setParameter("dev1", "Local:ChSel", val, str);
    w.notifyValueChanged(RecordingHost::parameterKeys("Local:ChSel"));
    QCOMPARE(w.address(0).prmAddr(), bound);
    QCOMPARE(w.displayText(0), QString("+6 dB"));
    QVERIFY(registered(registry, bound, &w));

    // Requests go to the channel now selected.
    w.requestText("0");
    QCOMPARE(host.requests.last().address.value("prmAddr").toString(), bound);
}

void tst_Addressing::channelSelectFixedNumber()
{
    RecordingHost host;
    ParameterManagementRegistry registry;
    ChannelSelectDial w(&host, &registry, nullptr);
    // The placeholder is unknown while the address is read: it stays unbound until "ChNum".
    w.configure(element("<Widget><Address prmAddr='Out/Ch{ChNum}/Mute'/><ChNum>7</ChNum></Widget>"));
    QCOMPARE(w.addressCount(), 1);
    QCOMPARE(w.address(0).prmAddr(), QString("Out/Ch7/Mute"));
    QVERIFY(registered(registry, "Out/Ch7/Mute", &w));

    ChannelSelectDial unbound(&host, &registry, nullptr);
    unbound.configure(element("<Widget><Address prmAddr='Out/Ch{ChNum}/Mute'/></Widget>"));
    QVERIFY(!unbound.address(0).isValid());
    QVERIFY(!unbound.requestText("1"));
}

void tst_Addressing::selectorStaysBehindOwnAddresses()
{
    RecordingHost host;
    ChannelSelectDial w(&host, nullptr, nullptr);
    w.configure(element("<Widget><ChNum prmAddr='Local:ChSel'/><Address prmAddr='A{ChNum}'/>"
                        "<Address prmAddr='B'/></Widget>"));
    QCOMPARE(w.addressCount(), 3);
    QCOMPARE(w.address(1).prmAddr(), QString("B"));
    QCOMPARE(w.address(2).prmAddr(), QString("Local:ChSel"));
    QCOMPARE(w.address(2).key("AddrType"), QString("ChNum"));
}

void tst_Addressing::speakerBaseAddressList()
{
    RecordingHost host;
    host.setParameter("dev1", "Local:Sp", "0", "1");
    SpeakerDial w(&host, nullptr, nullptr);
    w.configure(element("<Widget><Address prmAddr='{BaseAddress}/Gain'/>"
                        "<BaseAddressList><A>Sp:A</A><A>Sp:B</A></BaseAddressList>"
                        "<ChannelSelectAddress prmAddr='Local:Sp'/></Widget>"));
    QCOMPARE(w.address(0).prmAddr(), QString("Sp:B/Gain"));
}

void tst_Addressing::speakerConnectedAtPort_data()
{
    QTest::addColumn<QString>("map");      // attributes and models of ModelToBaseAddressMap
    QTest::addColumn<bool>("defaultFirst"); // DEFAULT before the map
    QTest::addColumn<QString>("port");     // the connection parameter the widget should read
    QTest::addColumn<QString>("model");    // what is connected
    QTest::addColumn<QString>("bound");

    const QString at3 = QStringLiteral("connect_port_inedx='3'");
    QTest::newRow("the loudspeaker's base") << at3 << false << "ExtDev/SpeakerPort3" << "Arc12" << "Spk/Arc12/Gain";
    QTest::newRow("another loudspeaker") << at3 << false << "ExtDev/SpeakerPort3" << "Arc18S" << "Spk/Arc18S/Gain";
    QTest::newRow("the widget's own map first") << at3 + "><Model name='Arc12'>Own:Arc12</Model"
                                                << false << "ExtDev/SpeakerPort3" << "Arc12" << "Own:Arc12/Gain";
    QTest::newRow("unknown model: DEFAULT") << at3 << false << "ExtDev/SpeakerPort3" << "Nope" << "Def/Gain";
    QTest::newRow("nothing connected: DEFAULT") << at3 << false << "ExtDev/SpeakerPort3" << "" << "Def/Gain";
    QTest::newRow("DEFAULT read first") << at3 << true << "ExtDev/SpeakerPort3" << "" << "Def/Gain";
    QTest::newRow("the device's own port parameter")
        << "connect_port_inedx='0' extdev_speaker_ports='Out{port}/Speaker'" << false << "Out0/Speaker" << "Arc12"
        << "Spk/Arc12/Gain";
    QTest::newRow("a port that is no number: no port") << "connect_port_inedx='x'" << false << "" << "Arc12"
                                                       << "Def/Gain";
}

void tst_Addressing::speakerConnectedAtPort()
{
    QFETCH(QString, map);
    QFETCH(bool, defaultFirst);
    QFETCH(QString, port);
    QFETCH(QString, model);
    QFETCH(QString, bound);

    QTemporaryDir dir;
    QVERIFY(writeFile(dir.filePath("speakers.xml"), "<ExternalDevices>"
                                                    "<Speaker model='Arc12'><BaseAddress>Spk/Arc12</BaseAddress></Speaker>"
                                                    "<Speaker model='Arc18S' BaseAddress='Spk/Arc18S'/>"
                                                    "<Speaker model='Bare'/>"
                                                    "</ExternalDevices>"));
    QVERIFY(ExternalDevicesDB::instance().load(dir.path()));

    RecordingHost host;
    ParameterManagementRegistry registry;
    if (!port.isEmpty())
        host.setParameter("dev1", port, "0", model);
    SpeakerDial w(&host, &registry, nullptr);
    const QString def = QStringLiteral("<DEFAULT>Def</DEFAULT>");
    const QString mapTag = map.contains(QLatin1String("<Model"))
        ? QStringLiteral("<ModelToBaseAddressMap %1></ModelToBaseAddressMap>").arg(map)
        : QStringLiteral("<ModelToBaseAddressMap %1/>").arg(map);
    w.configure(element("<Widget><Address prmAddr='{BaseAddress}/Gain'/>" + (defaultFirst ? def + mapTag : mapTag + def)
                        + "</Widget>"));
    QCOMPARE(w.address(0).prmAddr(), bound);
    QVERIFY(registered(registry, bound, &w));
    if (port.isEmpty())
        return;
    QCOMPARE(w.address(1).prmAddr(), port);

    // Another loudspeaker connected: the address follows, the old one is let go.
    host.setParameter("dev1", port, "0", "Arc18S");
    w.notifyValueChanged(RecordingHost::parameterKeys(port));
    const QString now = bound.startsWith(QLatin1String("Own:")) || model != QLatin1String("Arc18S")
        ? QStringLiteral("Spk/Arc18S/Gain") : bound;
    QCOMPARE(w.address(0).prmAddr(), now);
    QVERIFY(registered(registry, now, &w));
    if (now != bound)
        QVERIFY(!registered(registry, bound, &w));
}

void tst_Addressing::tuningZone()
{
    RecordingHost host;
    host.editor.insert("zone_uniq_id", "zoneA");
    // A plain dial keeps addresses zone-less.
    Dial plain(&host, nullptr, nullptr);
    plain.configure(element("<Widget><Address prmAddr='Zone/Gain'/></Widget>"));
    QCOMPARE(plain.address(0).zoneId(), QString());
}

void tst_Addressing::rejectFocus()
{
    // The gate by steps is checked across the families; here the text flag and a gate without a list.
    RecordingHost host;
    host.setParameter("dev1", "Mode", "0", "Off");
    QWidget parent;
    RejectFocusDial byText(&host, nullptr, &parent);
    byText.configure(element("<Widget><Address prmAddr='Mode'/><StrValFlg>true</StrValFlg><RejectValue>Off</RejectValue></Widget>"));
    QVERIFY(!byText.isEnabled());

    RejectFocusDial unlisted(&host, nullptr, &parent);
    unlisted.setEnabled(false); // the host's own choice is left alone without a list
    unlisted.configure(element("<Widget><Address prmAddr='Mode'/></Widget>"));
    unlisted.notifyValueChanged(RecordingHost::parameterKeys("Mode"));
    QVERIFY(!unlisted.isEnabled());
}

QTEST_MAIN(tst_Addressing)
#include "tst_addressing.moc"
