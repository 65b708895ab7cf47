#include "controls/dial/dial_variants.h"
#include "controls/fader/fader_variants.h"
#include "controls/indicator/indicator_variants.h"
#include "plugin/ExternalDevicesDB.h"
#include "support/RecordingHost.h"

#include <QDomDocument>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QDomElement element(const QString &xml)
{
    static QList<QDomDocument> keep;
    QDomDocument doc;
    const bool ok = doc.setContent(xml);
    Q_ASSERT(ok);
    keep.append(doc);
    return doc.documentElement();
}

QVariantMap parameter(const QString &prmAddr, const QString &device = "dev1")
{
    return {{"prmAddr", prmAddr}, {"dev_uniq_id", device}};
}

bool registered(ParameterManagementRegistry &registry, const QString &prmAddr, BaseWidget *w)
{
    registry.commitAll();
    ParameterManagementBase *m = registry.manager(ParameterManagementRegistry::categoryOf(prmAddr), "dev1");
    return m && m->registrations().contains(prmAddr, static_cast<IWidgetCore *>(w));
}

} // namespace

class tst_Addressing : public QObject
{
    Q_OBJECT

private slots:
    void tagTablesFallBack();
    void channelSelectFollowsSelector_data();
    void channelSelectFollowsSelector();
    void channelSelectFixedNumber();
    void selectorStaysBehindOwnAddresses();
    void speakerModelMap();
    void speakerBaseAddressList();
    void speakerConnectedAtPort_data();
    void speakerConnectedAtPort();
    void tuningZone();
    void matrixCell();
    void bandSharing();
    void rejectFocus();
    void hide();
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
    w.notifyValueChanged(parameter("Local:ChSel"));
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

void tst_Addressing::speakerModelMap()
{
    RecordingHost host;
    ParameterManagementRegistry registry;
    host.setParameter("dev1", "Preference:Sp1/Model", "0", "SP-12");
    SpeakerDial w(&host, &registry, nullptr);
    w.configure(element("<Widget><Address prmAddr='{BaseAddress}/Level{indexY}'/>"
                        "<AddressIndexY>2</AddressIndexY><DEFAULT>Lumen:Default</DEFAULT>"
                        "<ModelToBaseAddressMap prmAddr='Preference:Sp1/Model'>"
                        "<Model name='SP-12'>Lumen:Sp12</Model><Model name='SP-15' base='Lumen:Sp15'/>"
                        "</ModelToBaseAddressMap></Widget>"));
    QCOMPARE(w.address(0).prmAddr(), QString("Lumen:Sp12/Level2"));
    QVERIFY(registered(registry, "Lumen:Sp12/Level2", &w));

    host.setParameter("dev1", "Preference:Sp1/Model", "0", "SP-15");
    w.notifyValueChanged(parameter("Preference:Sp1/Model"));
    QCOMPARE(w.address(0).prmAddr(), QString("Lumen:Sp15/Level2"));
    QVERIFY(registered(registry, "Lumen:Sp15/Level2", &w));
    QVERIFY(!registered(registry, "Lumen:Sp12/Level2", &w));

    host.setParameter("dev1", "Preference:Sp1/Model", "0", "Unknown");
    w.notifyValueChanged(parameter("Preference:Sp1/Model"));
    QCOMPARE(w.address(0).prmAddr(), QString("Lumen:Default/Level2"));
    QVERIFY(registered(registry, "Lumen:Default/Level2", &w));
    QVERIFY(!registered(registry, "Lumen:Sp15/Level2", &w));
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
    QFile f(dir.filePath("speakers.xml"));
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("<ExternalDevices>"
            "<Speaker model='Arc12'><BaseAddress>Spk/Arc12</BaseAddress></Speaker>"
            "<Speaker model='Arc18S' BaseAddress='Spk/Arc18S'/>"
            "<Speaker model='Bare'/>"
            "</ExternalDevices>");
    f.close();
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
    w.notifyValueChanged(parameter(port));
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
    TuningZoneDial fromHost(&host, nullptr, nullptr);
    fromHost.configure(element("<Widget><Address prmAddr='Zone/Gain'/><Address prmAddr='Zone/Mute' zone_uniq_id='z9'/></Widget>"));
    QCOMPARE(fromHost.address(0).zoneId(), QString("zoneA"));
    QCOMPARE(fromHost.address(1).zoneId(), QString("z9"));

    TuningZoneDial fromTag(&host, nullptr, nullptr);
    fromTag.configure(element("<Widget><Zone>zoneB</Zone><Address prmAddr='Zone{Zone}/Gain'/></Widget>"));
    QCOMPARE(fromTag.address(0).zoneId(), QString("zoneB"));
    QCOMPARE(fromTag.address(0).prmAddr(), QString("ZonezoneB/Gain"));

    // A plain dial keeps addresses zone-less.
    Dial plain(&host, nullptr, nullptr);
    plain.configure(element("<Widget><Address prmAddr='Zone/Gain'/></Widget>"));
    QCOMPARE(plain.address(0).zoneId(), QString());
}

void tst_Addressing::matrixCell()
{
    RecordingHost host;
    MatrixMixerFader w(&host, nullptr, nullptr);
    w.configure(element("<Widget><XIndex>3</XIndex><AddressForm prmAddr='Mix/In{y}/Out{x}/Gain'/><YIndex>5</YIndex></Widget>"));
    QCOMPARE(w.address(0).prmAddr(), QString("Mix/In5/Out3/Gain"));
    w.readXIndex(element("<XIndex>4</XIndex>"));
    QCOMPARE(w.address(0).prmAddr(), QString("Mix/In5/Out4/Gain"));
}

void tst_Addressing::bandSharing()
{
    RecordingHost host;
    host.setParameter("dev1", "Local:Band", "0", "2");
    BandSharingIndicator w(&host, nullptr, nullptr);
    w.configure(element("<Widget><Address prmAddr='Peq/Band{Band}/On'/><BandNum prmAddr='Local:Band'/></Widget>"));
    QCOMPARE(w.address(0).prmAddr(), QString("Peq/Band2/On"));
}

void tst_Addressing::rejectFocus()
{
    RecordingHost host;
    host.setParameter("dev1", "Mode", "0.5", "Auto");
    QWidget parent;
    RejectFocusDial w(&host, nullptr, &parent);
    QCOMPARE(w.focusPolicy(), Qt::NoFocus);
    w.configure(element("<Widget><Address prmAddr='Mode'/><range>2</range><RejectValue>1,2</RejectValue></Widget>"));
    QVERIFY(!w.isEnabled()); // step 1 of 2 is listed
    host.setParameter("dev1", "Mode", "0", "Off");
    w.notifyValueChanged(parameter("Mode"));
    QVERIFY(w.isEnabled());

    RejectFocusDial byText(&host, nullptr, &parent);
    byText.configure(element("<Widget><Address prmAddr='Mode'/><StrValFlg>true</StrValFlg><RejectValue>Off</RejectValue></Widget>"));
    QVERIFY(!byText.isEnabled());

    RejectFocusDial unlisted(&host, nullptr, &parent);
    unlisted.setEnabled(false); // the host's own choice is left alone without a list
    unlisted.configure(element("<Widget><Address prmAddr='Mode'/></Widget>"));
    unlisted.notifyValueChanged(parameter("Mode"));
    QVERIFY(!unlisted.isEnabled());
}

void tst_Addressing::hide()
{
    RecordingHost host;
    host.setParameter("dev1", "Type", "1", "B");
    QWidget parent;
    HideDial w(&host, nullptr, &parent);
    w.configure(element("<Widget><Address prmAddr='Type'/><range>1</range><HideValue>,1,</HideValue></Widget>"));
    QVERIFY(w.isHidden());
    host.setParameter("dev1", "Type", "0", "A");
    w.notifyValueChanged(parameter("Type"));
    QVERIFY(!w.isHidden());
}

QTEST_MAIN(tst_Addressing)
#include "tst_addressing.moc"
