#include <corvane/IExternalDevicesDB.h>
#include <corvane/IPanelFactory.h>
#include <corvane/IWidgetCore.h>
#include <corvane/IWidgetFactory.h>
#include <corvane/ParameterManagement.h>
#include <corvane/Version.h>

#include "support/Files.h"
#include "support/RecordingHost.h"

#include <QDomDocument>
#include <QJsonArray>
#include <QLibrary>
#include <QPluginLoader>
#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

/*
    The plug-in as a host sees it: loaded with QPluginLoader, reached only
    through the SDK's interfaces and its exported functions.
*/
namespace {

// Every type name the factory knows, in the order of its chain.
const char *const expectedTypeNames[] = {
    // Buttons
    "Button", "SelectButton", "SelectButtonWithMessage", "DeviceStatusSelectButton", "FlatButton",
    "FbsButton", "FbsFlatButton", "ChannelSelectButton", "ParentPanelButton", "MatrixButton",
    "BrioCreateEditorButton", "BrioCreateEditorHideButton", "ChannelSelectFlatButton",
    "ChannelSelectLibraryRecallButton", "ChannelSelectLibraryRecallButtonFIR",
    "ChannelSelectLibraryStoreButton", "ChannelSelectLibraryStoreButtonFIR", "ChannelSelectSelectButton",
    "EquivalentButton", "FixedTriggerButton", "ProtectButton", "SpeakerChannelSelectButton", "SpeakerButton",
    "TuningZoneSoloButton", "BandSharingButton", "BandSharingFlatButton", "BandSharingMatchValueButton",
    "BandSharingSelectButton", "TuningZoneButton", "TuningZoneMasterResetButton", "TuningZoneStepButton",
    "SpeakerSelectButton", "SpeakerEquivalentButton", "SpeakerFlatButton", "SpeakerGuidSelectButton",
    "SpeakerLibraryRecallButton", "SpeakerLibraryStoreButton", "SpeakerPortNameButton",
    "GroupEditorConfirmButton", "MatrixMixerToolButton", "ChildWindowButton", "QuayPatchPasteButton",
    "FbsDetectControlButton", "StepButton", "BlinkButton", "ResetButton", "ProbeOnButton", "SendTestButton",
    "MatrixMixerButton", "BrioMatrixButton", "AecInputPortSelButton", "AecOutputPortSelButton",
    "FbsDetectButton", "BrioMatrixMixerButton", "AudioCodecButton", "PairButton", "SDPlayButton",
    "SDListButton", "VelaMatrixMixerButton", "CreateEditorButton", "ChangeEnableButton", "RejectFocusButton",
    "TapTempoButton", "MatchValueButton", "ReturnButton", "TmpLinkRegisterButton",
    // Dials
    "Dial", "ChannelSelectDial", "TuningZoneDial", "SpeakerDial", "HideDial", "DelayMatrixDial", "BeamDial",
    "BeamConvertDial", "DirectionDial", "ControlFaderDial", "RejectFocusDial",
    // Panels
    "PanelContainer", "DisablePanelContainer", "DisablePanelMulti", "DragPanel", "PanelStacker",
    "ProtectPanelStacker", "ChannelSelectPanelStacker", "ChannelSelectDragPanel", "TuningZonePanelContainer",
    "TuningZonePanelStacker", "TuningZoneDevicePanelStacker", "BandSharingPanelStacker",
    "SpeakerPanelContainer", "SpeakerPanelStacker", "SpeakerProtectPanelStacker", "SpeakerTypePanelContainer",
    "SpeakerDragPanel", "ScrollPanel", "AutomixerGroupController",
    // Faders and indicators
    "Fader", "TuningZoneFader", "TuningZoneMatchFader", "GeqFader", "MatrixMixerFader", "HorizontalFader",
    "HaloFader", "BrioMatrixMixerFader", "BrioAecMicFader", "VelaMatrixMixerFader", "LevelScalePointer",
    "ChannelSelectFader", "Indicator", "RedundantIndicator", "ChannelSelectIndicator", "TuningZoneIndicator",
    "BandSharingIndicator", "TuningZoneOrIndicator", "TuningZoneXorIndicator", "SpeakerIndicator",
    "ChannelNumberIndicator", "LockIndicator", "SrcIndicator", "WordClockIndicator", "FbsIndicator",
    // Images and frames
    "Image", "ParameterImage", "ChannelSelectParameterImage", "ChannelSelectParameterGreaterThanImage",
    "SpeakerColorImage", "SpeakerParameterGreaterThanImage", "SelectFrame", "ParameterColor", "BeamArea",
    "ImageStacker", "MicDirection", "AudioCodecStatus",
    // Number boxes and texts
    "NumberBox", "Text", "ParameterText", "OnlineText", "ImpedanceText", "BandWidthNumberBox",
    "DelaySubTimeNumberBox", "ChannelSelectBandWidthNumberBox", "ChannelSelectDelaySubTimeNumberBox",
    "ChannelSelectNumberBox", "ChannelSelectOnOffText", "ChannelSelectParameterText", "TitleText",
    "ChannelSelectThresholdVText", "InformationText", "BandSharingTextArea", "TuningZoneBandWidthNumberBox",
    "TuningZoneMasterDelaySubTimeNumberBox", "TuningZoneMasterNumberBox", "TuningZoneNumberBox",
    "SpeakerNumberBox", "SpeakerDelaySubTimeNumberBox", "SpeakerBandWidthNumberBox", "SpeakerParameterText",
    "SpeakerOnOffText", "SpeakerThresholdVText", "ValueText", "GcNumberBox", "CardName", "SlotPortNumber",
    "ClockSource", "CurrentPattern", "AbstractValueText", "FbsValueText", "MaxChText", "RoomLabel",
    "IPAddressTextBox", "HexTextBox", "AsciiTextBox", "MatrixMixerNumberBox", "MatrixMixerParameterText",
    "DelayMatrixSubTimeNumberBox", "HaloNumberBox", "RevTimeNumberBox", "HideNumberBox", "BrioMatrixPan",
    "BrioMatrixPanNumberBox", "BrioBandWidthNumberBox", "BrioMatrixMixerParameterText",
    "BrioMatrixMixerNumberBox", "VelaMatrixMixerNumberBox", "BeamNumberBox", "BeamConvertNumberBox",
    "DirectionNumberBox", "ValidateTextBox", "VelaMatrixPan", "VelaMatrixPanNumberBox", "MeterValueNumberBox",
    "RejectFocusNumberBox", "RejectFocusParameterText", "FixedScaleDelaySubTimeNumberBox",
    // Meters, grids and matrices
    "Meter", "ChannelSelectMeter", "ChannelSelectMeterGR", "SpeakerMeter", "SpeakerMeterGR", "GRMeter",
    "PallasGRMeter", "PeakMeter", "IndicatorStyleMeter", "BorderMeter", "MatrixGrid", "RouterGrid",
    "MatrixMixer", "BrioMatrixMixer", "Router", "BrioRouter", "RoomCombine", "DelayMatrix", "QuaySlotPatch",
    "BrioOutputPatch", "VelaMatrixMixer", "BrioOscillatorRouter", "BrioZoneGroup", "PallasMatrixMixer",
    "PallasDelayMatrix", "OstraMatrixMixer", "OstraDelayMatrix", "OstraZoneGroup", "FenRouter", "KiteRouter",
    // Combo boxes
    "ComboBox", "PrmViewComboBox", "KeyInMultiComboBox", "ProbeMonitorComboBox", "ChannelSelectComboBox",
    "TuningZoneComboBox", "TuningZoneDeviceComboBox", "SpeakerComboBox", "CardSelector",
    "BrioAddressComboBox", "VelaAddressComboBox", "ValueTextComboBox", "SDPlayComboBox", "AlertComboBox",
    "RejectFocusComboBox", "CategoryComboBox", "PhonesComboBox", "EffectiveMicComboBox",
    // Graphs
    "ParametricEqualizerGraphBack", "ParametricEqualizerGraph", "BrioParametricEqualizerGraph",
    "GraphControlPoint", "PeqGraphControlPoint", "HpfGraphControlPoint", "SpeakerProcessorGraph",
    "SpeakerProcessorPhaseGraph", "ProtectSpeakerProcessorGraph", "ProtectSpeakerProcessorPhaseGraph",
    "SpeakerProcessorGraphBack", "SpeakerProcessorPeqGraph", "SpeakerProcessorPeqGraphBack",
    "SpeakerProcessorPeqPhaseGraphBack", "SpeakerProcessorPeqPhaseGraph", "SpeakerProcessorPhaseGraphBack",
    "TuningZoneGraphControlPoint", "SpeakerEditorGraph", "SpeakerEditorPhaseGraph", "SpeakerEditorPeqGraph",
    "SpeakerEditorPeqPhaseGraph", "SpeakerGraphControlPoint", "Graph", "GraphicEqualizerGraph", "Halo3DGraph",
    "TrackingArea",
    // Switchers, scales and the rest
    "Switcher", "ChannelSelectSwitcher", "SpeakerSwitcher", "GraphSppHScale", "GraphSppVScalePhase",
    "GraphSppVScaleSP", "GraphSppVScalePEQ", "MeterScaleGR", "MeterScaleVoltage", "RoomCombineChecker",
    "ColorBox", "PairDeviceList",
};

} // namespace

class tst_Plugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void metadata();
    void rootObject();
    void version();
    void typeNames();
    void createsEveryType();
    void unknownNames_data();
    void unknownNames();
    void configureAndRegister();
    void externalDevices();
    void panelFactoryEntry();
    void instanceRecreatedAfterDestruction();

private:
    QStringList names() const;

    QPluginLoader m_loader;
    IWidgetFactory *m_factory = nullptr;
};

void tst_Plugin::initTestCase()
{
    m_loader.setFileName(QStringLiteral(CORVANE_PLUGIN_FILE));
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    m_factory = qobject_cast<IWidgetFactory *>(m_loader.instance());
    QVERIFY(m_factory);
}

void tst_Plugin::metadata()
{
    const QJsonObject meta = m_loader.metaData();
    QCOMPARE(meta.value("IID").toString(), QString("CorvaneDesigner.WidgetFactory"));
    QCOMPARE(meta.value("className").toString(), QString("WidgetFactory"));
    // Release builds (the default, and what ships) say so in their metadata.
    QCOMPARE(meta.value("debug").toBool(), bool(CORVANE_DEBUG_BUILD));
    QVERIFY(meta.value("MetaData").toObject().isEmpty());
    QCOMPARE(meta.value("version").toInt() >> 8, 0x050f);
}

void tst_Plugin::rootObject()
{
    QObject *root = m_loader.instance();
    QCOMPARE(m_loader.instance(), root); // one instance
    QCOMPARE(QString(root->metaObject()->className()), QString("WidgetFactory"));
    void *asFactory = root->qt_metacast("IWidgetFactory");
    QVERIFY(asFactory);
    QCOMPARE(asFactory, static_cast<void *>(m_factory));
    QCOMPARE(root->qt_metacast("com.tessaro.skd.MainApplication.IWidgetFactory/0.0"), asFactory);
    QCOMPARE(root->qt_metacast("WidgetFactory"), static_cast<void *>(root));
    QVERIFY(!root->qt_metacast("IWidgetCore"));
}

// The version rides on the root object's class info; the metadata record
// keeps only what every Qt plug-in has.
void tst_Plugin::version()
{
    const QMetaObject *meta = m_loader.instance()->metaObject();
    const int at = meta->indexOfClassInfo("Version");
    QVERIFY(at >= 0);
    QCOMPARE(QString::fromLatin1(meta->classInfo(at).value()), QStringLiteral(CORVANE_VERSION_STR));
    QCOMPARE(meta->classInfoCount(), 1);
    QCOMPARE(QString::fromLatin1(meta->classInfo(at).value()).split(QLatin1Char('.')).size(), 3);
    QCOMPARE(CORVANE_VERSION, CORVANE_VERSION_CHECK(CORVANE_VERSION_MAJOR, CORVANE_VERSION_MINOR, CORVANE_VERSION_PATCH));
    QVERIFY(CORVANE_VERSION > CORVANE_VERSION_CHECK(0, 0, 99));

    QStringList keys = m_loader.metaData().keys();
    keys.sort();
    QCOMPARE(keys, (QStringList{"IID", "archreq", "className", "debug", "version"}));
}

QStringList tst_Plugin::names() const
{
    QLibrary library(m_loader.fileName());
    auto listNames = reinterpret_cast<void (*)(QStringList *)>(library.resolve("CorvaneWidgetTypeNames"));
    QStringList result;
    if (listNames)
        listNames(&result);
    return result;
}

void tst_Plugin::typeNames()
{
    const QStringList all = names();
    QStringList expected;
    for (const char *name : expectedTypeNames)
        expected << QLatin1String(name);
    QCOMPARE(expected.size(), 280);
    for (int i = 0; i < qMin(all.size(), expected.size()); ++i)
        QVERIFY2(all.at(i) == expected.at(i), qPrintable(QStringLiteral("%1: %2, expected %3").arg(i).arg(all.at(i), expected.at(i))));
    QCOMPARE(all, expected);
    QCOMPARE(all.size(), 280);
    QCOMPARE(all.first(), QString("Button"));
    QCOMPARE(all.last(), QString("PairDeviceList"));
    QCOMPARE(all.indexOf("Dial"), 66);           // buttons come first
    QCOMPARE(all.indexOf("PanelContainer"), 77); // then the eleven dials
    QCOMPARE(QSet<QString>(all.begin(), all.end()).size(), 280);
}

void tst_Plugin::createsEveryType()
{
    RecordingHost host;
    ParameterManagementRegistry registry;
    QWidget parent;
    const QStringList all = names();
    QVERIFY(!all.isEmpty());
    QSet<IWidgetCore *> made;
    for (const QString &name : all) {
        IWidgetCore *core = m_factory->create(name, &parent, &host, &registry);
        QVERIFY2(core, qPrintable(name));
        QWidget *widget = widgetOf(core);
        QVERIFY2(widget, qPrintable(name));
        QCOMPARE(QString(widget->metaObject()->className()), name);
        QCOMPARE(QString(core->widgetMetaObject()->className()), name);
        QCOMPARE(widget->parentWidget(), &parent);
        QCOMPARE(core->hostCore(), static_cast<IHostCore *>(&host));
        QVERIFY(widget->objectName().isEmpty()); // the factory sets nothing
        QVERIFY(widget->inherits("BaseWidget"));
        made.insert(core);
    }
    QCOMPARE(made.size(), 280);
    QCOMPARE(parent.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(), 280);
}

void tst_Plugin::unknownNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("lower case") << "button";
    QTest::newRow("upper case") << "BUTTON";
    QTest::newRow("empty") << "";
    QTest::newRow("leading space") << " Button";
    QTest::newRow("trailing space") << "Button ";
    QTest::newRow("family base") << "BaseWidget";
    QTest::newRow("abstract scale") << "GraphScale";
    QTest::newRow("editor class") << "LineEdit";
}

void tst_Plugin::unknownNames()
{
    QFETCH(QString, name);
    QWidget parent;
    QVERIFY(!m_factory->create(name, &parent, nullptr, nullptr));
    QVERIFY(parent.children().isEmpty());
}

void tst_Plugin::configureAndRegister()
{
    RecordingHost host;
    ParameterManagementRegistry registry;
    QWidget parent;
    QDomDocument doc;
    QVERIFY(doc.setContent(QStringLiteral(
        "<Widget type='Dial' name='gain'><Rect x='4' y='6' width='40' height='40'/>"
        "<Address prmAddr='Ch/Gain'/><Address prmAddr='Meter:Ch/Level' dev_uniq_id='dev2'/></Widget>")));
    IWidgetCore *core = m_factory->create("Dial", &parent, &host, &registry);
    QVERIFY(core->configure(doc.documentElement()));
    QVERIFY(core->setZoom(2.0f));
    QCOMPARE(widgetOf(core)->geometry(), QRect(8, 12, 80, 80));
    QCOMPARE(core->addressCount(), 2);
    registry.commitAll();
    QVERIFY(registry.manager("Prm", "dev1")->registrations().contains("Ch/Gain", core));
    QVERIFY(registry.manager("Meter", "dev2")->registrations().contains("Meter:Ch/Level", core));
}

void tst_Plugin::externalDevices()
{
    QLibrary library(m_loader.fileName());
    auto get = reinterpret_cast<IExternalDevicesDB *(*)()>(library.resolve("GetExternalDevicesDB"));
    QVERIFY(get);
    IExternalDevicesDB *db = get();
    QVERIFY(db);
    QCOMPARE(get(), db);

    QTemporaryDir dir;
    QVERIFY(writeFile(dir.filePath("speakers.xml"), "<Devices><Speaker model='SP-12' impedance='8'><Ways>2</Ways>"
                                                    "</Speaker><InterfaceDevice model='DI-4'/><Speaker/></Devices>"));
    QVERIFY(db->load(dir.path()));
    QCOMPARE(db->speakerModels(), QStringList{"SP-12"});
    QCOMPARE(db->speaker("SP-12").value("impedance").toString(), QString("8"));
    QCOMPARE(db->speaker("SP-12").value("Ways").toString(), QString("2"));
    QCOMPARE(db->interfaceDevices(), QStringList{"DI-4"});
    QVERIFY(db->speaker("none").isEmpty());
    QVERIFY(!db->load(dir.filePath("missing")));
    QVERIFY(db->speakerModels().isEmpty());
}

void tst_Plugin::panelFactoryEntry()
{
    // The panel plug-in is the host's; whether it sits next to this test
    // depends on what was built. Either way the answer must match the file.
    const QString path = QDir::cleanPath(QCoreApplication::applicationDirPath() + "/libPanel.so");
    QPluginLoader panel(path);
    IPanelFactory *factory = qobject_cast<IPanelFactory *>(panel.instance());
    if (QFile::exists(path))
        QVERIFY2(factory, qPrintable(panel.errorString()));
    else
        QVERIFY(!factory);
}

// qt_plugin_instance keeps one factory while it lives and makes a new one
// once it has been destroyed. Runs last: it replaces the loader's instance.
void tst_Plugin::instanceRecreatedAfterDestruction()
{
    QLibrary library(m_loader.fileName());
    using Instance = QObject *(*)();
    auto instance = reinterpret_cast<Instance>(library.resolve("qt_plugin_instance"));
    QVERIFY(instance);
    QPointer<QObject> first = instance();
    QVERIFY(first);
    QCOMPARE(instance(), first.data());
    delete first.data();
    QVERIFY(!first);
    QObject *second = instance();
    QVERIFY(second);
    QCOMPARE(QString(second->metaObject()->className()), QString("WidgetFactory"));
    QCOMPARE(instance(), second);
    m_factory = qobject_cast<IWidgetFactory *>(second);
    QVERIFY(m_factory);

    RecordingHost host;
    ParameterManagementRegistry registry;
    QWidget parent;
    QVERIFY(m_factory->create(QStringLiteral("Dial"), &parent, &host, &registry));
}

QTEST_MAIN(tst_Plugin)
#include "tst_plugin.moc"
