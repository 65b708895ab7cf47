#include "ParameterDatabase.h"

#include <QtTest>

#include <cmath>

namespace {

class Recorder : public IParameterObserver
{
public:
    void parameterChanged(const QVariantMap &address) override { changes.append(address); }
    QList<QVariantMap> changes;
};

QVariantMap at(const QString &device, const QString &prmAddr)
{
    return {{QStringLiteral("dev_uniq_id"), device}, {QStringLiteral("prmAddr"), prmAddr}};
}

// One device "d" of model "M" holding the parameters given as XML.
bool setUp(ParameterDatabase &db, const QString &parameters, QStringList *errors = nullptr)
{
    const QString xml = QStringLiteral("<DeviceModel name=\"M\">%1</DeviceModel>").arg(parameters);
    const bool ok = db.loadModel(xml.toUtf8(), QStringLiteral("M.xml"), errors);
    db.addDevice(QStringLiteral("d"), QStringLiteral("M"));
    return ok;
}

QString read(const ParameterDatabase &db, const QString &prmAddr, const char *key)
{
    QVariantMap answer;
    db.readParameter(at(QStringLiteral("d"), prmAddr), answer);
    return answer.value(QLatin1String(key)).toString();
}

Value readValue(const ParameterDatabase &db, const QVariantMap &address)
{
    Value value;
    db.readParameter(address, value);
    return value;
}

QString described(const QMap<QString, QString> &texts)
{
    QStringList entries;
    for (auto it = texts.cbegin(); it != texts.cend(); ++it)
        entries << it.key() + QLatin1Char('=') + it.value();
    return entries.join(QLatin1String(", "));
}

// How a read into a Value differs from a read into a map, which formats
// every text afresh; empty when they agree.
QString difference(const ParameterDatabase &db, const QVariantMap &address)
{
    QVariantMap answer;
    Value value;
    const bool mapRead = db.readParameter(address, answer);
    const bool valueRead = db.readParameter(address, value);
    const QString where = address.value(QStringLiteral("dev_uniq_id")).toString() + QLatin1Char(' ')
        + address.value(QStringLiteral("prmAddr")).toString() + QLatin1String(": ");
    if (mapRead != valueRead)
        return where + QStringLiteral("read %1 into a map, %2 into a value").arg(mapRead).arg(valueRead);
    QMap<QString, QString> texts;
    for (auto it = answer.cbegin(); it != answer.cend(); ++it) {
        if (it->userType() != QMetaType::QString)
            return where + it.key() + QLatin1String(" is not a text");
        texts.insert(it.key(), it->toString());
    }
    if (texts != value.attributes())
        return where + QLatin1String("map {") + described(texts) + QLatin1String("}, value {")
            + described(value.attributes()) + QLatin1Char('}');
    if (value.payload() != answer.value(QStringLiteral("ui_prm_val")))
        return where + QLatin1String("payload ") + value.payload().toString();
    return QString();
}

} // namespace

class tst_ParameterDB : public QObject
{
    Q_OBJECT

private slots:
    void requests_data();
    void requests();
    void unknownParameterOrDeviceChangesNothing();
    void readOnlyParametersRefuseRequests();
    void storedTextsOverrideUntilTheNextRequest();
    void storeCreatesUndeclaredParameters();
    void malformedModels_data();
    void malformedModels();
    void repeatExpandsAddresses();
    void positionOfText_data();
    void positionOfText();
    void convertDelay_data();
    void convertDelay();
    void queryAnswersEveryDeviceOfTheModel();
    void optionListsAreReadWithTheValue_data();
    void optionListsAreReadWithTheValue();
    void reloadedModelAnswersItsOwnTexts_data();
    void reloadedModelAnswersItsOwnTexts();
    void bothReadsAnswerAlike_data();
    void bothReadsAnswerAlike();
    void writeAfterReadIsSeen_data();
    void writeAfterReadIsSeen();
    void valueTextHasTenSignificantDigits_data();
    void valueTextHasTenSignificantDigits();
    void storedTextReplacesItsKeyAlone_data();
    void storedTextReplacesItsKeyAlone();
    void computedTextsFollowTheirBands();
    void metersFollowTheSignal();
};

void tst_ParameterDB::requests_data()
{
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<QString>("before"); // text set first, kind 1
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("argument");
    QTest::addColumn<bool>("applied");
    QTest::addColumn<QString>("str");
    QTest::addColumn<QString>("val");

    const QString gain = QStringLiteral("type=\"linear\" min=\"-6\" max=\"66\" default=\"20\" unit=\"dB\"");
    QTest::newRow("linear position") << gain << "" << 0 << "ui_prm_val" << "0.5" << true << "30 dB" << "0.5";
    QTest::newRow("linear position clamped") << gain << "" << 0 << "ui_prm_val" << "1.7" << true << "66 dB" << "1";
    QTest::newRow("linear position not a number") << gain << "" << 0 << "ui_prm_val" << "x" << false << "20 dB" << "0.361111";
    QTest::newRow("linear text with unit, rounded") << gain << "" << 1 << "ui_prm_str" << "12.4 dB" << true << "12 dB" << "0.25";
    QTest::newRow("linear text unit without blank") << gain << "" << 1 << "ui_prm_str" << "-2dB" << true << "-2 dB" << "0.0555556";
    QTest::newRow("linear text clamped high") << gain << "" << 1 << "ui_prm_str" << "100" << true << "66 dB" << "1";
    QTest::newRow("linear text clamped low") << gain << "" << 1 << "ui_prm_str" << "-20" << true << "-6 dB" << "0";
    QTest::newRow("linear text wrong unit") << gain << "" << 1 << "ui_prm_str" << "12 Hz" << false << "20 dB" << "0.361111";
    QTest::newRow("linear text garbage") << gain << "" << 1 << "ui_prm_str" << "loud" << false << "20 dB" << "0.361111";
    QTest::newRow("linear step up") << gain << "" << 2 << "ui_prm_step" << "1" << true << "21 dB" << "0.375";
    QTest::newRow("linear step down at minimum") << gain << "-6" << 2 << "ui_prm_step" << "-1" << true << "-6 dB" << "0";
    QTest::newRow("linear default") << gain << "40" << 3 << "" << "" << true << "20 dB" << "0.361111";

    const QString fader = QStringLiteral("type=\"level\" min=\"-138\" max=\"10\" default=\"0\" inf=\"true\" "
                                         "curve=\"0:-138 0.05:-80 0.25:-40 0.5:-20 0.75:-6 1:10\"");
    QTest::newRow("level position on curve") << fader << "" << 0 << "ui_prm_val" << "0.5" << true << "-20.0 dB" << "0.5";
    QTest::newRow("level position between points") << fader << "" << 0 << "ui_prm_val" << "0.625" << true << "-13.0 dB" << "0.625";
    QTest::newRow("level position zero is -inf") << fader << "" << 0 << "ui_prm_val" << "0" << true << "-inf dB" << "0";
    QTest::newRow("level text -inf") << fader << "" << 1 << "ui_prm_str" << "-inf" << true << "-inf dB" << "0";
    QTest::newRow("level text on curve") << fader << "" << 1 << "ui_prm_str" << "-6 dB" << true << "-6.0 dB" << "0.75";
    QTest::newRow("level text rounded") << fader << "" << 1 << "ui_prm_str" << "5.56" << true << "5.6 dB" << "0.93125";
    QTest::newRow("level step from -inf") << fader << "-inf" << 2 << "ui_prm_step" << "1" << true << "-137.9 dB" << "8.62069e-05";

    const QString freq = QStringLiteral("type=\"frequency\" default=\"1000\"");
    QTest::newRow("frequency default row") << freq << "" << 2 << "ui_prm_step" << "0" << true << "1000 Hz" << "0.566667";
    QTest::newRow("frequency text in k") << freq << "" << 1 << "ui_prm_str" << "2k" << true << "2000 Hz" << "0.666667";
    QTest::newRow("frequency text in kHz") << freq << "" << 1 << "ui_prm_str" << "1.5 kHz" << true << "1500 Hz" << "0.625";
    QTest::newRow("frequency text nearest step") << freq << "" << 1 << "ui_prm_str" << "1010" << true << "1000 Hz" << "0.566667";
    QTest::newRow("frequency text wrong unit") << freq << "" << 1 << "ui_prm_str" << "10 dB" << false << "1000 Hz" << "0.566667";
    QTest::newRow("frequency step") << freq << "" << 2 << "ui_prm_step" << "1" << true << "1030 Hz" << "0.570833";
    QTest::newRow("frequency position bottom") << freq << "" << 0 << "ui_prm_val" << "0" << true << "20.0 Hz" << "0";
    QTest::newRow("frequency position top") << freq << "" << 0 << "ui_prm_val" << "1" << true << "20000 Hz" << "1";
    const QString hpf = QStringLiteral("type=\"frequency\" min=\"20\" max=\"600\" default=\"80\"");
    QTest::newRow("frequency range clamps text") << hpf << "" << 1 << "ui_prm_str" << "5k" << true << "600 Hz" << "1";

    const QString ratio = QStringLiteral("type=\"options\" options=\"1:1|2:1|4:1\" default=\"2:1\"");
    QTest::newRow("options position") << ratio << "" << 0 << "ui_prm_val" << "1" << true << "4:1" << "1";
    QTest::newRow("options position rounds") << ratio << "" << 0 << "ui_prm_val" << "0.2" << true << "1:1" << "0";
    QTest::newRow("options text any case") << ratio << "" << 1 << "ui_prm_str" << "4:1" << true << "4:1" << "1";
    QTest::newRow("options text index") << ratio << "" << 1 << "ui_prm_str" << "0" << true << "1:1" << "0";
    QTest::newRow("options text unknown") << ratio << "" << 1 << "ui_prm_str" << "8:1" << false << "2:1" << "0.5";
    QTest::newRow("options step stops at the end") << ratio << "4:1" << 2 << "ui_prm_step" << "1" << true << "4:1" << "1";

    const QString mute = QStringLiteral("type=\"onoff\"");
    QTest::newRow("onoff text on") << mute << "" << 1 << "ui_prm_str" << "on" << true << "On" << "1";
    QTest::newRow("onoff text true") << mute << "" << 1 << "ui_prm_str" << "true" << true << "On" << "1";
    QTest::newRow("onoff position below half") << mute << "On" << 0 << "ui_prm_val" << "0.4" << true << "Off" << "0";
    QTest::newRow("onoff step") << mute << "" << 2 << "ui_prm_step" << "1" << true << "On" << "1";

    const QString name = QStringLiteral("type=\"text\" default=\"Ch 1\" maxLength=\"6\"");
    QTest::newRow("text set") << name << "" << 1 << "ui_prm_str" << "Lead" << true << "Lead" << "0";
    QTest::newRow("text cut to length") << name << "" << 1 << "ui_prm_str" << "Vocals 2" << true << "Vocals" << "0";
    QTest::newRow("text has no position") << name << "" << 0 << "ui_prm_val" << "0.5" << false << "Ch 1" << "0";
    QTest::newRow("text default") << name << "Bass" << 3 << "" << "" << true << "Ch 1" << "0";
}

void tst_ParameterDB::requests()
{
    QFETCH(QString, parameter);
    QFETCH(QString, before);
    QFETCH(int, kind);
    QFETCH(QString, key);
    QFETCH(QString, argument);
    QFETCH(bool, applied);
    QFETCH(QString, str);
    QFETCH(QString, val);

    ParameterDatabase db;
    QStringList errors;
    QVERIFY2(setUp(db, QStringLiteral("<Parameter address=\"P\" %1/>").arg(parameter), &errors), qPrintable(errors.join('\n')));
    if (!before.isEmpty())
        QVERIFY(db.request(at("d", "P"), 1, {{QStringLiteral("ui_prm_str"), before}}));
    Recorder recorder;
    db.setObserver(&recorder);

    QMap<QString, QString> arguments;
    if (!key.isEmpty())
        arguments.insert(key, argument);
    QCOMPARE(db.request(at("d", "P"), kind, arguments), applied);
    QCOMPARE(recorder.changes.size(), applied ? 1 : 0);
    QCOMPARE(read(db, "P", "ui_prm_str"), str);
    QCOMPARE(read(db, "P", "ui_prm_val"), val);
}

void tst_ParameterDB::unknownParameterOrDeviceChangesNothing()
{
    ParameterDatabase db;
    QVERIFY(setUp(db, "<Parameter address=\"P\" type=\"onoff\"/>"));
    Recorder recorder;
    db.setObserver(&recorder);
    const QMap<QString, QString> on{{QStringLiteral("ui_prm_str"), QStringLiteral("On")}};

    QVERIFY(!db.request(at("d", "Q"), 1, on));
    QVERIFY(!db.request(at("e", "P"), 1, on));
    QVERIFY(!db.request(at("d", "P"), 7, on));
    QVariantMap answer;
    QVERIFY(!db.readParameter(at("e", "P"), answer));
    QVERIFY(!db.readParameter(at("d", "Q"), answer));
    QVERIFY(answer.isEmpty());
    QVERIFY(!db.parameterExists(at("d", "Q")));
    QVERIFY(db.parameterExists(at("d", "P")));
    QVERIFY(recorder.changes.isEmpty());
    QCOMPARE(read(db, "P", "ui_prm_str"), QStringLiteral("Off"));
}

void tst_ParameterDB::readOnlyParametersRefuseRequests()
{
    ParameterDatabase db;
    QVERIFY(setUp(db, "<Parameter address=\"Meter:L\" type=\"meter\" min=\"-60\" max=\"0\"/>"
                      "<Parameter address=\"On\" type=\"state\" options=\"offline|online\" default=\"online\"/>"
                      "<Parameter address=\"G\" type=\"linear\" min=\"0\" max=\"1\" readonly=\"true\"/>"));
    for (const char *p : {"Meter:L", "On", "G"}) {
        for (int kind = 0; kind <= 3; ++kind)
            QVERIFY(!db.request(at("d", p), kind, {{"ui_prm_val", "1"}, {"ui_prm_str", "0"}, {"ui_prm_step", "1"}}));
    }
    QCOMPARE(read(db, "Meter:L", "ui_prm_str"), QStringLiteral("-60.0 dB"));
    QCOMPARE(read(db, "Meter:L", "ui_prm_prak"), QStringLiteral("0"));
    QCOMPARE(read(db, "On", "ui_prm_val"), QStringLiteral("online"));
}

void tst_ParameterDB::storedTextsOverrideUntilTheNextRequest()
{
    ParameterDatabase db;
    QVERIFY(setUp(db, "<Parameter address=\"G\" type=\"linear\" min=\"0\" max=\"10\" unit=\"dB\"/>"));
    Recorder recorder;
    db.setObserver(&recorder);
    QVERIFY(db.store(at("d", "G"), {{"ui_prm_val", "0.5"}, {"ui_prm_str", "-6.0 dB"}}));
    QCOMPARE(recorder.changes.size(), 1);
    QCOMPARE(recorder.changes.first().value("prmAddr").toString(), QStringLiteral("G"));
    QCOMPARE(read(db, "G", "ui_prm_str"), QStringLiteral("-6.0 dB")); // unchanged, even if the type would not say so
    QCOMPARE(read(db, "G", "ui_prm_val"), QStringLiteral("0.5"));
    QCOMPARE(read(db, "G", "prmUnit"), QStringLiteral("dB"));

    QVERIFY(db.request(at("d", "G"), 2, {{"ui_prm_step", "1"}, {"ui_prm_val", "0.5"}}));
    QCOMPARE(read(db, "G", "ui_prm_str"), QStringLiteral("1 dB"));
    QCOMPARE(read(db, "G", "ui_prm_val"), QStringLiteral("0.1"));
}

void tst_ParameterDB::storeCreatesUndeclaredParameters()
{
    ParameterDatabase db;
    QVERIFY(setUp(db, QString()));
    QVERIFY(!db.parameterExists(at("d", "X")));
    QVERIFY(db.store(at("d", "X"), {{"ui_prm_str", "hello"}}));
    QVERIFY(db.parameterExists(at("d", "X")));
    QCOMPARE(read(db, "X", "ui_prm_str"), QStringLiteral("hello"));
    // Still not a parameter the device can change.
    QVERIFY(!db.request(at("d", "X"), 1, {{"ui_prm_str", "bye"}}));
    QCOMPARE(read(db, "X", "ui_prm_str"), QStringLiteral("hello"));
    QVERIFY(!db.store(at("nobody", "X"), {{"ui_prm_str", "x"}}));
}

void tst_ParameterDB::malformedModels_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("error");
    QTest::newRow("not XML") << "<DeviceModel name=\"M\">\n<Parameter" << "M.xml:2:";
    QTest::newRow("wrong root") << "<Model name=\"M\"/>" << "expected <DeviceModel";
    QTest::newRow("no name") << "<DeviceModel/>" << "expected <DeviceModel";
    QTest::newRow("unknown type") << "<DeviceModel name=\"M\">\n\n<Parameter address=\"P\" type=\"dial\"/></DeviceModel>"
                                  << "M.xml:3: parameter P: unknown type \"dial\"";
    QTest::newRow("no address") << "<DeviceModel name=\"M\"><Parameter type=\"onoff\"/></DeviceModel>" << "without an address";
    QTest::newRow("bad number") << "<DeviceModel name=\"M\"><Parameter address=\"P\" type=\"linear\" max=\"ten\"/></DeviceModel>"
                                << "max \"ten\" is not a number";
    QTest::newRow("empty range") << "<DeviceModel name=\"M\"><Parameter address=\"P\" type=\"linear\" min=\"3\" max=\"3\"/></DeviceModel>"
                                 << "empty range";
    QTest::newRow("curve off the range") << "<DeviceModel name=\"M\"><Parameter address=\"P\" type=\"linear\" min=\"0\" max=\"10\" curve=\"0:0 1:9\"/></DeviceModel>"
                                         << "the curve must run";
    QTest::newRow("curve not rising") << "<DeviceModel name=\"M\"><Parameter address=\"P\" type=\"linear\" min=\"0\" max=\"10\" curve=\"0:0 0.5:6 0.6:5 1:10\"/></DeviceModel>"
                                      << "malformed curve point \"0.6:5\"";
    QTest::newRow("one option") << "<DeviceModel name=\"M\"><Parameter address=\"P\" type=\"options\" options=\"A\"/></DeviceModel>"
                                << "two or more options";
    QTest::newRow("default not an option") << "<DeviceModel name=\"M\"><Parameter address=\"P\" type=\"options\" options=\"A|B\" default=\"C\"/></DeviceModel>"
                                           << "default \"C\" is not an option";
    QTest::newRow("bad repeat") << "<DeviceModel name=\"M\"><Repeat from=\"3\" to=\"1\"/></DeviceModel>" << "malformed Repeat range";
}

void tst_ParameterDB::malformedModels()
{
    QFETCH(QString, xml);
    QFETCH(QString, error);
    ParameterDatabase db;
    QStringList errors;
    QVERIFY(!db.loadModel(xml.toUtf8(), QStringLiteral("M.xml"), &errors));
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().contains(error), qPrintable(errors.first()));
}

void tst_ParameterDB::repeatExpandsAddresses()
{
    ParameterDatabase db;
    QVERIFY(setUp(db, "<Repeat var=\"n\" from=\"1\" to=\"3\"><Repeat var=\"b\" from=\"1\" to=\"2\">"
                      "<Parameter address=\"Ch{n}/Band{b}\" type=\"linear\" min=\"0\" max=\"{n}\"/>"
                      "</Repeat></Repeat>"));
    QCOMPARE(db.definitions("M").size(), 6);
    QCOMPARE(db.definitions("M").first().address, QStringLiteral("Ch1/Band1"));
    QCOMPARE(db.definitions("M").last().address, QStringLiteral("Ch3/Band2"));
    QVERIFY(db.request(at("d", "Ch3/Band2"), 0, {{"ui_prm_val", "1"}}));
    QCOMPARE(read(db, "Ch3/Band2", "ui_prm_str"), QStringLiteral("3"));
    QVERIFY(!db.parameterExists(at("d", "Ch4/Band1")));
}

void tst_ParameterDB::positionOfText_data()
{
    QTest::addColumn<QString>("prmAddr");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("position");
    QTest::newRow("on the curve") << "F" << "0 dB" << "0.84375";
    QTest::newRow("without unit") << "F" << "-20" << "0.5";
    QTest::newRow("minus infinity") << "F" << "-inf" << "0";
    QTest::newRow("clamped") << "F" << "40 dB" << "1";
    QTest::newRow("no value") << "F" << "loud" << "";
    QTest::newRow("an option") << "O" << "B" << "0.5";
    QTest::newRow("text parameter") << "T" << "x" << "";
    QTest::newRow("unknown parameter") << "Nope" << "1" << "";
}

void tst_ParameterDB::positionOfText()
{
    QFETCH(QString, prmAddr);
    QFETCH(QString, text);
    QFETCH(QString, position);
    ParameterDatabase db;
    QVERIFY(setUp(db, "<Parameter address=\"F\" type=\"level\" min=\"-138\" max=\"10\" default=\"-6\" inf=\"true\""
                      " curve=\"0:-138 0.05:-80 0.25:-40 0.5:-20 0.75:-6 1:10\"/>"
                      "<Parameter address=\"O\" type=\"options\" options=\"A|B|C\"/><Parameter address=\"T\" type=\"text\"/>"));
    const QString before = read(db, prmAddr, "ui_prm_val");
    QCOMPARE(db.positionOfText(at("d", prmAddr), text), position);
    QCOMPARE(read(db, prmAddr, "ui_prm_val"), before); // nothing is set
}

void tst_ParameterDB::convertDelay_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("position");
    QTest::newRow("metres") << "meter" << "34.3" << "0.1";
    QTest::newRow("feet") << "feet" << "112.5328" << "0.1";
    QTest::newRow("samples at the device's rate") << "sample" << "9600" << "0.2";
    QTest::newRow("frames") << "frame" << "3" << "0.1";
    QTest::newRow("clamped") << "meter" << "10000" << "1";
    QTest::newRow("not a number") << "meter" << "far" << "";
    QTest::newRow("unknown unit") << "ms" << "5" << "";
}

void tst_ParameterDB::convertDelay()
{
    QFETCH(QString, unit);
    QFETCH(QString, text);
    QFETCH(QString, position);
    ParameterDatabase db;
    QVERIFY(setUp(db, "<Parameter address=\"Ch/Delay/Time\" type=\"linear\" min=\"0\" max=\"1000\" decimals=\"2\" unit=\"ms\"/>"
                      "<Parameter address=\"Setup/0/Config/DesiredFs:0:0\" type=\"linear\" min=\"0\" max=\"96000\" default=\"48000\"/>"));
    QCOMPARE(db.convertDelay(at("d", "Ch/Delay/Time"), unit, text), position);
    QCOMPARE(db.convertDelay(at("d", "Setup/0/Config/DesiredFs:0:0"), unit, text), QString());
}

void tst_ParameterDB::queryAnswersEveryDeviceOfTheModel()
{
    ParameterDatabase db;
    QVERIFY(setUp(db, "<Parameter address=\"P\" type=\"onoff\"/>"));
    db.addDevice("d2", "M");
    db.addDevice("x", "Other");
    QVERIFY(!db.addDevice("d2", "M"));
    QVERIFY(db.request(at("d2", "P"), 1, {{"ui_prm_str", "On"}}));
    QMap<QString, QVariantMap> answer;
    QVERIFY(db.queryParameter("M", {{"prmAddr", "P"}, {"cptName", "Setup:1:1x1"}}, answer));
    QCOMPARE(answer.keys(), QStringList({"d", "d2"}));
    QCOMPARE(answer.value("d").value("ui_prm_str").toString(), QStringLiteral("Off"));
    QCOMPARE(answer.value("d2").value("ui_prm_str").toString(), QStringLiteral("On"));
    QCOMPARE(answer.value("d2").value("componentname").toString(), QStringLiteral("Setup:1:1x1"));
    answer.clear();
    QVERIFY(!db.queryParameter("Other", {{"prmAddr", "P"}}, answer));
    QVERIFY(answer.isEmpty());
    QCOMPARE(db.device("x").value("dev_model").toString(), QStringLiteral("Other"));
    QVERIFY(db.device("nobody").isEmpty());
}

void tst_ParameterDB::optionListsAreReadWithTheValue_data()
{
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<QString>("options");
    QTest::newRow("options") << "type=\"options\" options=\"1:1|2:1|inf:1\"" << "1:1|2:1|inf:1";
    QTest::newRow("on/off has none") << "type=\"onoff\"" << "";
    QTest::newRow("state has none") << "type=\"state\" options=\"offline|online\"" << "";
    QTest::newRow("linear has none") << "type=\"linear\" min=\"0\" max=\"1\"" << "";
}

void tst_ParameterDB::optionListsAreReadWithTheValue()
{
    QFETCH(QString, parameter);
    QFETCH(QString, options);
    ParameterDatabase db;
    QStringList errors;
    QVERIFY2(setUp(db, QStringLiteral("<Parameter address=\"P\" %1/>").arg(parameter), &errors), qPrintable(errors.join('\n')));
    QVariantMap answer;
    QVERIFY(db.readParameter(at("d", "P"), answer));
    QCOMPARE(answer.contains("ui_prm_option"), !options.isEmpty());
    QCOMPARE(answer.value("ui_prm_option").toString(), options);
    // The list stays with the parameter whatever it is set to.
    if (!options.isEmpty()) {
        QVERIFY(db.request(at("d", "P"), 2, {{"ui_prm_step", "1"}, {"ui_prm_val", "0"}}));
        QCOMPARE(read(db, "P", "ui_prm_option"), options);
    }
}

void tst_ParameterDB::reloadedModelAnswersItsOwnTexts_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("key");
    QTest::newRow("minimum") << "type=\"linear\" min=\"0\" max=\"1\"" << "type=\"linear\" min=\"-5\" max=\"1\""
                             << "prmMin";
    QTest::newRow("maximum") << "type=\"linear\" min=\"0\" max=\"1\"" << "type=\"linear\" min=\"0\" max=\"7\""
                             << "prmMax";
    QTest::newRow("type") << "type=\"linear\" min=\"0\" max=\"1\"" << "type=\"onoff\"" << "prmType";
    QTest::newRow("options") << "type=\"options\" options=\"a|b\"" << "type=\"options\" options=\"a|b|c\""
                             << "ui_prm_option";
}

void tst_ParameterDB::reloadedModelAnswersItsOwnTexts()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(QString, key);
    ParameterDatabase db;
    QVERIFY(setUp(db, QStringLiteral("<Parameter address=\"P\" %1/><Parameter address=\"Q\" %1/>").arg(before)));
    const QString first = read(db, "P", qPrintable(key));
    // Read twice: the second answer must not differ from the first.
    QCOMPARE(read(db, "P", qPrintable(key)), first);
    // "Q" holds a state (set back to its default), "P" none.
    QVERIFY(db.request(at("d", "Q"), 3, {}));
    QCOMPARE(readValue(db, at("d", "P")).text(key), first);
    QCOMPARE(readValue(db, at("d", "Q")).text(key), first);
    QVERIFY(setUp(db, QStringLiteral("<Parameter address=\"P\" %1/><Parameter address=\"Q\" %1/>").arg(after)));
    ParameterDatabase fresh;
    QVERIFY(setUp(fresh, QStringLiteral("<Parameter address=\"P\" %1/>").arg(after)));
    QCOMPARE(read(db, "P", qPrintable(key)), read(fresh, "P", qPrintable(key)));
    QVERIFY(read(db, "P", qPrintable(key)) != first);
    QCOMPARE(readValue(db, at("d", "P")).text(key), read(fresh, "P", qPrintable(key)));
    QCOMPARE(readValue(db, at("d", "Q")).text(key), read(fresh, "P", qPrintable(key)));
}

void tst_ParameterDB::bothReadsAnswerAlike_data()
{
    QTest::addColumn<QString>("file");
    const QDir devices(QStringLiteral(CORVANE_DEVICES_DIR));
    const QStringList files = devices.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    QVERIFY(!files.isEmpty());
    for (const QString &file : files)
        QTest::newRow(qPrintable(file)) << devices.filePath(file);
}

// Every parameter of a bundled model, moved to the ends of its range and
// between, stepped, given texts that are refused and set back: a read into
// a value, whose answers are kept, answers what a fresh read into a map
// answers, on the device that changed and on one that did not.
void tst_ParameterDB::bothReadsAnswerAlike()
{
    QFETCH(QString, file);
    ParameterDatabase db;
    QStringList errors;
    QVERIFY2(db.loadModelFile(file, &errors), qPrintable(errors.join('\n')));
    QCOMPARE(db.models().size(), 1);
    const QString model = db.models().first();
    QVERIFY(db.addDevice(QStringLiteral("a"), model));
    QVERIFY(db.addDevice(QStringLiteral("b"), model));
    const QList<ParameterDefinition> definitions = db.definitions(model);
    QVERIFY(!definitions.isEmpty());
    auto checkAll = [&] {
        for (const ParameterDefinition &d : definitions) {
            for (const QString device : {"a", "b"}) {
                const QString diff = difference(db, at(device, d.address));
                if (!diff.isEmpty())
                    return diff;
            }
        }
        return QString();
    };
    QString diff = checkAll();
    QVERIFY2(diff.isEmpty(), qPrintable(diff));

    using Step = QPair<int, QMap<QString, QString>>;
    const auto position = [](const char *p) { return Step(0, {{QStringLiteral("ui_prm_val"), QLatin1String(p)}}); };
    const auto typed = [](const QString &t) { return Step(1, {{QStringLiteral("ui_prm_str"), t}}); };
    const auto stepped = [](const char *n) { return Step(2, {{QStringLiteral("ui_prm_step"), QLatin1String(n)}}); };
    const QList<Step> steps{position("0"),   position("1"),       position("0.5"), position("0.123456789"),
                            stepped("1"),    stepped("-1"),       position("nan"), position("inf"),
                            position("-inf"), typed("nan"),       typed("inf"),    typed("1e308"),
                            typed("Lead"),   typed(QString(40, QLatin1Char('x'))), Step(3, {})};
    for (const ParameterDefinition &d : definitions) {
        const QVariantMap address = at(QStringLiteral("a"), d.address);
        for (const Step &step : steps) {
            const Value before = readValue(db, address);
            const bool applied = db.request(address, step.first, step.second);
            if (!d.isNumeric() && step.first == 0)
                QVERIFY2(!applied, qPrintable(d.address));
            if (step.first == 0 && !std::isfinite(step.second.first().toDouble()))
                QVERIFY2(!applied, qPrintable(d.address + QLatin1String(" took ") + step.second.first()));
            if (!applied)
                QVERIFY2(readValue(db, address) == before, qPrintable(d.address));
            diff = difference(db, address);
            QVERIFY2(diff.isEmpty(), qPrintable(diff));
        }
    }
    diff = checkAll();
    QVERIFY2(diff.isEmpty(), qPrintable(diff));
}

void tst_ParameterDB::writeAfterReadIsSeen_data()
{
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<int>("kind"); // -1 stores the texts
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("zone");

    const QString gain = QStringLiteral("type=\"linear\" min=\"-6\" max=\"66\" default=\"20\" unit=\"dB\"");
    QTest::newRow("position") << gain << 0 << "ui_prm_val" << "0.75" << "0" << "";
    QTest::newRow("text") << gain << 1 << "ui_prm_str" << "12" << "13 dB" << "";
    QTest::newRow("step") << gain << 2 << "ui_prm_step" << "1" << "-3" << "";
    QTest::newRow("in a zone") << gain << 0 << "ui_prm_val" << "0.75" << "1" << "z1";
    QTest::newRow("stored") << gain << -1 << "ui_prm_str" << "loud" << "louder" << "";
    QTest::newRow("stored key of its own") << gain << -1 << "note" << "a" << "b" << "";
    QTest::newRow("options") << "type=\"options\" options=\"1:1|2:1|4:1\"" << 1 << "ui_prm_str" << "4:1" << "2:1" << "";
    QTest::newRow("on/off") << "type=\"onoff\"" << 2 << "ui_prm_step" << "1" << "-1" << "";
    QTest::newRow("text parameter") << "type=\"text\" default=\"Ch 1\"" << 1 << "ui_prm_str" << "Lead" << "Bass" << "";
    QTest::newRow("state parameter") << "type=\"state\" options=\"off|on\"" << -1 << "ui_prm_val" << "on" << "off" << "";
}

// Every write to a parameter is seen by the next read into a value, after
// reads that kept the answer: twice, then back to the default.
void tst_ParameterDB::writeAfterReadIsSeen()
{
    QFETCH(QString, parameter);
    QFETCH(int, kind);
    QFETCH(QString, key);
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(QString, zone);
    ParameterDatabase db;
    QStringList errors;
    QVERIFY2(setUp(db, QStringLiteral("<Parameter address=\"P\" %1/>").arg(parameter), &errors),
             qPrintable(errors.join('\n')));
    QVERIFY(db.addDevice(QStringLiteral("e"), QStringLiteral("M")));
    QVariantMap address = at(QStringLiteral("d"), QStringLiteral("P"));
    if (!zone.isEmpty())
        address.insert(QStringLiteral("zone_uniq_id"), zone);
    const Value initial = readValue(db, address);
    QVERIFY(!initial.isEmpty());
    QCOMPARE(readValue(db, address), initial);

    Value last = initial;
    for (const QString &argument : {first, second}) {
        const bool applied = kind < 0 ? db.store(address, {{key, argument}}) : db.request(address, kind, {{key, argument}});
        QVERIFY(applied);
        const QString diff = difference(db, address);
        QVERIFY2(diff.isEmpty(), qPrintable(diff));
        const Value now = readValue(db, address);
        QVERIFY2(now != last, qPrintable(described(now.attributes())));
        QCOMPARE(readValue(db, address), now);
        last = now;
    }
    if (!parameter.contains(QLatin1String("state"))) { // which the device alone sets
        QVERIFY(db.request(address, 3, {}));
        QCOMPARE(readValue(db, address), initial);
    }
    // Neither the other device nor the parameter outside the zone moved.
    QCOMPARE(readValue(db, at(QStringLiteral("e"), QStringLiteral("P"))), initial);
    if (!zone.isEmpty()) {
        QVERIFY(db.request(address, 0, {{QStringLiteral("ui_prm_val"), QStringLiteral("1")}}));
        QCOMPARE(readValue(db, at(QStringLiteral("d"), QStringLiteral("P"))), initial);
    }
}

void tst_ParameterDB::valueTextHasTenSignificantDigits_data()
{
    QTest::addColumn<double>("value");
    for (double v : {0.0, -0.0, 1.0, -1.0, 20.0, -138.0, 48000.0, 999999.0, -999999.0, 1e6, -1e6, 1234567.0,
                     1234567890.0, 12345678901.0, 1e15, 1e300, 0.5, -0.25, 1e-5, 123456.5, 999999.5, 0.1 + 0.2,
                     qInf(), -qInf(), qQNaN()})
        QTest::addRow("%.17g", v) << v;
}

// What "prmValue" has always held: the general 'g' formatting, whatever
// shortcut the value takes.
void tst_ParameterDB::valueTextHasTenSignificantDigits()
{
    QFETCH(double, value);
    QCOMPARE(ParameterDefinition::valueText(value), QString::number(value, 'g', 10));
}

void tst_ParameterDB::storedTextReplacesItsKeyAlone_data()
{
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<QString>("key");
    const QString meter = QStringLiteral("type=\"meter\" min=\"-60\" max=\"0\" default=\"-20\" inf=\"true\"");
    const QString gain = QStringLiteral("type=\"linear\" min=\"-6\" max=\"66\" default=\"20\" unit=\"dB\"");
    for (const char *key : {"ui_prm_val", "ui_prm_str", "prmValue", "ui_prm_prak", "prmMin", "note"}) {
        QTest::addRow("meter %s", key) << meter << key;
        QTest::addRow("linear %s", key) << gain << key;
    }
    QTest::newRow("text ui_prm_val") << "type=\"text\" default=\"Ch 1\"" << "ui_prm_val";
}

// A stored text replaces the answer's text of its key and leaves every
// other one as the parameter's type formats it.
void tst_ParameterDB::storedTextReplacesItsKeyAlone()
{
    QFETCH(QString, parameter);
    QFETCH(QString, key);
    ParameterDatabase db;
    QVERIFY(setUp(db, QStringLiteral("<Parameter address=\"P\" %1/>").arg(parameter)));
    QMap<QString, QString> expected = readValue(db, at("d", "P")).attributes();
    QVERIFY(!expected.isEmpty());
    expected.insert(key, QStringLiteral("stored"));
    QVERIFY(db.store(at("d", "P"), {{key, "stored"}}));
    QCOMPARE(readValue(db, at("d", "P")).attributes(), expected);
    const QString diff = difference(db, at("d", "P"));
    QVERIFY2(diff.isEmpty(), qPrintable(diff));
}

// An equaliser's handle and curves change with the band they follow,
// however often they were read before.
void tst_ParameterDB::computedTextsFollowTheirBands()
{
    ParameterDatabase db;
    QVERIFY(setUp(db, "<Equalizer path=\"EQ\" bands=\"2\" frequencies=\"100 1000\"/>"));
    const QStringList followers{"EQ/Band1/Point", "Graph:EQ/Curve", "Graph:EQ/Total"};
    // A text of its own gives the total a state; the others have none.
    QVERIFY(db.store(at("d", "Graph:EQ/Total"), {{"note", "x"}}));
    QList<Value> before;
    for (const QString &prmAddr : followers) {
        before << readValue(db, at("d", prmAddr));
        QVERIFY2(!before.last().text("ui_prm_str").isEmpty(), qPrintable(prmAddr));
        QCOMPARE(readValue(db, at("d", prmAddr)), before.last());
    }
    QVERIFY(db.request(at("d", "EQ/Band1/Gain"), 1, {{"ui_prm_str", "6"}}));
    for (int i = 0; i < followers.size(); ++i) {
        const QString diff = difference(db, at("d", followers.at(i)));
        QVERIFY2(diff.isEmpty(), qPrintable(diff));
        QVERIFY2(readValue(db, at("d", followers.at(i))) != before.at(i), qPrintable(followers.at(i)));
    }
}

void tst_ParameterDB::metersFollowTheSignal()
{
    ParameterDatabase db;
    QVERIFY(setUp(db, "<Parameter address=\"Meter:L\" type=\"meter\" min=\"-60\" max=\"0\" inf=\"true\"/>"
                      "<Input name=\"In\" level=\"Meter:L\" attack=\"10\" release=\"300\" hold=\"1000\"/>"));
    const Value silent = readValue(db, at("d", "Meter:L"));
    QCOMPARE(readValue(db, at("d", "Meter:L")), silent);
    SignalSource tone;
    tone.kind = SignalSource::Tone;
    tone.level = -12;
    QVERIFY(db.setSignal("d", "In", tone));
    for (int frame = 0; frame < 3; ++frame) {
        const Value last = readValue(db, at("d", "Meter:L"));
        db.advance(40);
        const QString diff = difference(db, at("d", "Meter:L"));
        QVERIFY2(diff.isEmpty(), qPrintable(diff));
        QVERIFY(readValue(db, at("d", "Meter:L")) != last);
    }
    QVERIFY(readValue(db, at("d", "Meter:L")).text("ui_prm_prak") != silent.text("ui_prm_prak"));
}

QTEST_GUILESS_MAIN(tst_ParameterDB)
#include "tst_parameterdb.moc"
