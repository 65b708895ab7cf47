// Numeric addresses, parameter and device records, fixed queries.
#include "support/InChildProcess.h"
#include "FakeDatabase.h"

#include "data/AbstractDatabase.h"
#include "data/ParameterKeys.h"
#include "data/ParameterRecords.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtTest>

namespace {

QVariantMap props(std::initializer_list<std::pair<QString, QVariant>> entries)
{
    QVariantMap m;
    for (const auto &e : entries)
        m.insert(e.first, e.second);
    return m;
}

QVariantMap boundProperties()
{
    return props({ { "dev_model", "Ferrule" },
                   { "dev_uniq_id", "dev-1" },
                   { "prmAddr", "0/0012/3/4/5/6/7" },
                   { "cptName", "Input:1:1x1" } });
}

} // namespace

class TestParameterRecords : public QObject
{
    Q_OBJECT

private:
    FakeDatabase db;

private slots:
    void init()
    {
        db.answers.clear();
        db.queries.clear();
        db.answers["Ferrule"]["dev-1"] = props({ { "category", "Input" },
                                                 { "componentname", "InCh" },
                                                 { "prmValue", "48000" } });
        setAbstractDatabase(&db);
    }
    void cleanup() { setAbstractDatabase(nullptr); }

    void parse_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("memno");
        QTest::addColumn<quint32>("componentid");
        QTest::addColumn<quint16>("elementno");
        QTest::addColumn<quint16>("x");
        QTest::addColumn<quint16>("y");
        QTest::addColumn<quint16>("paramno");
        QTest::addColumn<quint32>("index");

        // Rows that fail leave the sentinel outputs (see below) untouched.
        QTest::newRow("six fields") << "1/2/3/4/5/6" << false << "keep" << 99u << quint16(99) << quint16(99) << quint16(99) << quint16(99) << 99u;
        QTest::newRow("empty") << "" << false << "keep" << 99u << quint16(99) << quint16(99) << quint16(99) << quint16(99) << 99u;
        QTest::newRow("plain") << "0/1/2/3/4/5/6" << true << "0" << 1u << quint16(2) << quint16(3) << quint16(4) << quint16(5) << 6u;
        QTest::newRow("eighth ignored") << "A/1/2/3/4/5/6/7" << true << "A" << 1u << quint16(2) << quint16(3) << quint16(4) << quint16(5) << 6u;
        QTest::newRow("32-bit componentid") << "x/70000/1/1/1/1/1" << true << "x" << 70000u << quint16(1) << quint16(1) << quint16(1) << quint16(1) << 1u;
        QTest::newRow("16-bit elementno overflow") << "x/1/70000/1/1/1/1" << true << "x" << 1u << quint16(0) << quint16(1) << quint16(1) << quint16(1) << 1u;
        QTest::newRow("widths at maximum") << "m/4294967295/65535/65535/65535/65535/4294967295" << true << "m" << 4294967295u << quint16(65535) << quint16(65535) << quint16(65535) << quint16(65535) << 4294967295u;
        QTest::newRow("widths just over") << "m/4294967296/65536/65536/65536/65536/4294967296" << true << "m" << 0u << quint16(0) << quint16(0) << quint16(0) << quint16(0) << 0u;
        QTest::newRow("not numbers read as 0") << "m/abc/1x/-1/0x10/2.5/z" << true << "m" << 0u << quint16(0) << quint16(0) << quint16(0) << quint16(0) << 0u;
        QTest::newRow("empty parts kept") << "//////" << true << "" << 0u << quint16(0) << quint16(0) << quint16(0) << quint16(0) << 0u;
        QTest::newRow("leading zeros") << "007/0012/003/04/05/06/0007" << true << "007" << 12u << quint16(3) << quint16(4) << quint16(5) << quint16(6) << 7u;
    }
    void parse()
    {
        // Short records ("six fields") are out-of-bounds reads without their guard.
        CORVANE_RUN_IN_CHILD_PROCESS();
        QFETCH(QString, address);
        QString memno = "keep";
        quint32 componentid = 99, index = 99;
        quint16 elementno = 99, x = 99, y = 99, paramno = 99;
        QTEST(parseParameterAddress(address, memno, componentid, elementno, x, y, paramno, index),
              "ok");
        QTEST(memno, "memno");
        QTEST(componentid, "componentid");
        QTEST(elementno, "elementno");
        QTEST(x, "x");
        QTEST(y, "y");
        QTEST(paramno, "paramno");
        QTEST(index, "index");
    }

    void recordMemberOrder()
    {
        RecordFields fields;
        QVERIFY(buildParameterFields(fields, boundProperties(), "Input 1"));
        const RecordFields expected = {
            { "category", "Input" }, { "componentname", "InCh" }, { "componentlabel", "Input 1" },
            { "memno", "0" }, { "componentid", "12" }, { "elementno", "3" }, { "x", "4" },
            { "y", "5" }, { "paramno", "6" }, { "index", "7" },
        };
        QCOMPARE(fields, expected);

        // The query: the model, and exactly the two request keys.
        QCOMPARE(db.queries.size(), 1);
        QCOMPARE(db.queries.at(0).model, QString("Ferrule"));
        QCOMPARE(db.queries.at(0).request,
                 props({ { "prmAddr", "0/0012/3/4/5/6/7" }, { "cptName", "Input:1:1x1" } }));
    }

    void recordObject()
    {
        QJsonObject record { { "keep", "me" } };
        QVERIFY(buildParameterRecord(record, boundProperties(), "Input 1"));
        QCOMPARE(record.value("keep").toString(), QString("me"));
        const QJsonArray parameter = record.value("parameter").toArray();
        QCOMPARE(parameter.size(), 1);
        const QJsonObject p = parameter.at(0).toObject();
        QCOMPARE(p.size(), 10);
        const QStringList order = { "category", "componentname", "componentlabel", "memno",
                                    "componentid", "elementno", "x", "y", "paramno", "index" };
        const QStringList values = { "Input", "InCh", "Input 1", "0", "12", "3", "4", "5", "6", "7" };
        for (int i = 0; i < order.size(); ++i) {
            QVERIFY2(p.value(order.at(i)).isString(), qPrintable(order.at(i)));
            QCOMPARE(p.value(order.at(i)).toString(), values.at(i));
        }
    }

    void recordAnswerChoice_data()
    {
        QTest::addColumn<QString>("deviceId");
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("componentname");
        QTest::newRow("named device") << "dev-2" << "Output" << "OutCh";
        QTest::newRow("unknown device takes the first") << "dev-9" << "Input" << "InCh";
        QTest::newRow("answer without names") << "dev-3" << "Setup" << "Setup:1:1x1";
    }
    void recordAnswerChoice()
    {
        QFETCH(QString, deviceId);
        db.answers["Ferrule"]["dev-2"] = props({ { "category", "Output" }, { "componentname", "OutCh" } });
        db.answers["Ferrule"]["dev-3"] = props({ { "prmValue", "1" } });
        QVariantMap p = boundProperties();
        p["dev_uniq_id"] = deviceId;
        p["cptName"] = "Setup:1:1x1";
        RecordFields fields;
        QVERIFY(buildParameterFields(fields, p, "L"));
        QTEST(fields.at(0).second, "category");
        QTEST(fields.at(1).second, "componentname");
    }

    void recordRefused_data()
    {
        QTest::addColumn<QVariantMap>("properties");
        QTest::addColumn<bool>("queried");
        QVariantMap p = boundProperties();
        p.remove("cptName");
        QTest::newRow("no cptName") << p << false;
        p = boundProperties();
        p.remove("dev_model");
        QTest::newRow("no dev_model") << p << false;
        p = boundProperties();
        p["prmAddr"] = "";
        QTest::newRow("empty prmAddr") << p << false;
        p = boundProperties();
        p["prmAddr"] = "1/2/3/4/5/6";
        QTest::newRow("short address") << p << false;
        p = boundProperties();
        p["dev_model"] = "Unknown";
        QTest::newRow("database refuses") << p << true;
    }
    void recordRefused()
    {
        QFETCH(QVariantMap, properties);
        const QJsonObject before { { "keep", "me" } };
        QJsonObject record = before;
        QVERIFY(!buildParameterRecord(record, properties, "L"));
        QCOMPARE(record, before);
        QJsonObject device = before;
        QVERIFY(!buildDeviceRecord(device, properties, "L"));
        QCOMPARE(device, before);
        QFETCH(bool, queried);
        QCOMPARE(!db.queries.isEmpty(), queried);
    }

    void noDatabase()
    {
        // This test's application directory holds no CorvaneParameterDB.
        setAbstractDatabase(nullptr);
        QCOMPARE(abstractDatabase(), static_cast<IAbstractDB *>(nullptr));
        QJsonObject record;
        QVERIFY(!buildParameterRecord(record, boundProperties(), "L"));
        QVERIFY(record.isEmpty());
        float fs = -1;
        QVERIFY(!queryDesiredSampleRate(boundProperties(), fs));
        QCOMPARE(fs, -1.0f);
        setAbstractDatabase(&db);
        QCOMPARE(abstractDatabase(), static_cast<IAbstractDB *>(&db));
    }

    void deviceRecord_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QStringList>("members");
        QTest::addColumn<QString>("componentlabel");
        QTest::newRow("Ferrule: meter") << "Ferrule" << "L" << QStringList { "identifier", "meter", "model", "parameter" } << "L";
        QTest::newRow("Tarsus: meter") << "Tarsus" << "L" << QStringList { "identifier", "meter", "model", "parameter" } << "L";
        QTest::newRow("Pallas-Net: orv naming") << "Pallas-Net" << "" << QStringList { "address", "identifier", "model", "parameter" } << "OrvInput";
        QTest::newRow("Pallas-Net: label given") << "Pallas-Net" << "L" << QStringList { "address", "identifier", "model", "parameter" } << "L";
        QTest::newRow("Lintel: no snapshot") << "Lintel" << "L" << QStringList { "identifier", "model", "parameter", "snapshot" } << "L";
        QTest::newRow("other model") << "Brio-8" << "" << QStringList { "identifier", "model", "parameter" } << "";
    }
    void deviceRecord()
    {
        QFETCH(QString, model);
        QFETCH(QString, label);
        db.answers[model] = db.answers["Ferrule"];
        QVariantMap p = boundProperties();
        p["dev_model"] = model;
        p["meterID"] = "7";
        p["cptOrvName"] = "OrvInput";
        p["orv_address"] = "Orv/Addr";
        QJsonObject device;
        QVERIFY(buildDeviceRecord(device, p, label));
        QTEST(device.keys(), "members");
        QCOMPARE(device.value("model").toString(), model);
        QCOMPARE(device.value("identifier").toString(), QString("dev-1"));
        const QJsonObject parameter = device.value("parameter").toArray().at(0).toObject();
        QTEST(parameter.value("componentlabel").toString(), "componentlabel");
        QCOMPARE(parameter.value("componentid").toString(), QString("12"));
        if (device.contains("meter"))
            QCOMPARE(device.value("meter").toObject(), QJsonObject({ { "meterid", "7" } }));
        if (device.contains("address"))
            QCOMPARE(device.value("address").toString(), QString("Orv/Addr"));
        if (device.contains("snapshot"))
            QCOMPARE(device.value("snapshot").toString(), QString("false"));
    }

    void deviceRecordNeedsIdentifier()
    {
        QVariantMap p = boundProperties();
        p.remove("dev_uniq_id");
        QJsonObject device;
        QVERIFY(!buildDeviceRecord(device, p, "L"));
        QVERIFY(device.isEmpty());
    }

    void meterOnlyWhenGiven()
    {
        QJsonObject device;
        QVERIFY(buildDeviceRecord(device, boundProperties(), "L"));
        QVERIFY(!device.contains("meter"));
    }

    void desiredSampleRate_data()
    {
        QTest::addColumn<QVariantMap>("properties");
        QTest::addColumn<QString>("prmValue");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<float>("hertz");
        const QVariantMap p = props({ { "dev_model", "Ferrule" }, { "dev_uniq_id", "dev-1" } });
        QTest::newRow("48 kHz") << p << "48000" << true << 48000.0f;
        QTest::newRow("fractional") << p << "44100.5" << true << 44100.5f;
        QTest::newRow("not a number") << p << "fast" << false << -1.0f;
        QVariantMap other = p;
        other["dev_uniq_id"] = "dev-9";
        QTest::newRow("no answer for the device") << other << "48000" << false << -1.0f;
        QVariantMap noId = p;
        noId.remove("dev_uniq_id");
        QTest::newRow("no dev_uniq_id") << noId << "48000" << false << -1.0f;
        QVariantMap unknownModel = p;
        unknownModel["dev_model"] = "Unknown";
        QTest::newRow("refused") << unknownModel << "48000" << false << -1.0f;
    }
    void desiredSampleRate()
    {
        QFETCH(QVariantMap, properties);
        QFETCH(QString, prmValue);
        db.answers["Ferrule"]["dev-1"]["prmValue"] = prmValue;
        float hertz = -1.0f;
        QTEST(queryDesiredSampleRate(properties, hertz), "ok");
        QTEST(hertz, "hertz");
        if (!db.queries.isEmpty()) {
            QCOMPARE(db.queries.at(0).request,
                     props({ { "cptName", "Setup:1:1x1" }, { "prmAddr", "Setup/0/Config/DesiredFs:0:0" } }));
            QCOMPARE(db.queries.at(0).model, properties.value("dev_model").toString());
        }
    }

    void delayAddress_data()
    {
        QTest::addColumn<QVariantMap>("properties");
        QTest::addColumn<QString>("address");
        const QVariantMap orv = props({ { "orv_address", "Orv/Delay" } });
        auto with = [&](const QString &scale) { QVariantMap m = orv; m["DelayScale"] = scale; return m; };
        QTest::newRow("ms") << with("ms") << "Ch/Delay/Time";
        QTest::newRow("meter") << with("meter") << "Ch/Delay/Time_m";
        QTest::newRow("feet") << with("feet") << "Ch/Delay/Time_ft";
        QTest::newRow("sample") << with("sample") << "Orv/Delay";
        QTest::newRow("frame") << with("frame") << "Orv/Delay";
        QTest::newRow("case matters") << with("MS") << "Orv/Delay";
        QTest::newRow("no scale") << orv << "Orv/Delay";
        QTest::newRow("nothing") << QVariantMap() << "";
        QTest::newRow("scale without orv_address") << props({ { "DelayScale", "sample" } }) << "";
    }
    void delayAddress()
    {
        QFETCH(QVariantMap, properties);
        QTEST(delayTimeAddress(properties), "address");
    }
};

QTEST_GUILESS_MAIN(TestParameterRecords)
#include "tst_parameterrecords.moc"
