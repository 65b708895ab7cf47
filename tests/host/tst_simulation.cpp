#include "ParameterDatabase.h"

#include <QtTest>

#include <cmath>

namespace {

const QString model = QStringLiteral(R"(<DeviceModel name="M">
  <Parameter address="Setup/0/Config/DesiredFs:0:0" type="linear" min="44100" max="96000" default="48000" readonly="true"/>
  <Equalizer path="EQ" bands="3" frequencies="100 1000 8000"/>
  <Parameter address="Gain" type="linear" min="-6" max="66" default="20" unit="dB"/>
  <Parameter address="Fader" type="level" min="-138" max="10" default="0" inf="true"/>
  <Parameter address="Mute" type="onoff"/>
  <Parameter address="Comp/On" type="onoff"/>
  <Parameter address="Comp/Threshold" type="linear" min="-60" max="0" default="-20" unit="dB"/>
  <Parameter address="Comp/Ratio" type="options" options="1:1|2:1|4:1|inf:1" default="4:1"/>
  <Parameter address="Meter:Level" type="meter" min="-60" max="0" inf="true"/>
  <Parameter address="Meter:GR" type="meter" min="0" max="30"/>
  <Input name="In" gain="Gain" fader="Fader" mute="Mute" compressorOn="Comp/On" threshold="Comp/Threshold"
         ratio="Comp/Ratio" level="Meter:Level" gr="Meter:GR" attack="10" release="300" hold="1000"/>
</DeviceModel>)");

class Recorder : public IParameterObserver
{
public:
    void parameterChanged(const QVariantMap &address) override { changes.append(address.value("prmAddr").toString()); }
    QStringList changes;
};

QVariantMap at(const QString &prmAddr)
{
    return {{QStringLiteral("dev_uniq_id"), QStringLiteral("d")}, {QStringLiteral("prmAddr"), prmAddr}};
}

QString read(const ParameterDatabase &db, const QString &prmAddr, const char *key = "ui_prm_str")
{
    QVariantMap answer;
    db.readParameter(at(prmAddr), answer);
    return answer.value(QLatin1String(key)).toString();
}

double number(const ParameterDatabase &db, const QString &prmAddr, const char *key = "prmValue")
{
    return read(db, prmAddr, key).toDouble();
}

bool text(ParameterDatabase &db, const QString &prmAddr, const QString &typed)
{
    return db.request(at(prmAddr), 1, {{QStringLiteral("ui_prm_str"), typed}});
}

// The graph x of a frequency and y of a level, from the background grid:
// 220.5 pixels a decade with 100 Hz at 155; 4.5 pixels a dB, 0 dB 81 rows
// below the top of a 162-row graph (y counts up from the bottom row).
double gridX(double hertz) { return 155 + 220.5 * std::log10(hertz / 100); }
double gridY(double db) { return 80 + 4.5 * db; }

QVector<QPoint> pointsOf(const QString &curve)
{
    QVector<QPoint> out;
    const QStringList items = curve.split('/');
    for (int i = 2; i < items.size(); ++i)
        out.append(QPoint(items.at(i).section(':', 0, 0).toInt(), items.at(i).section(':', 1, 1).toInt()));
    return out;
}

} // namespace

class tst_Simulation : public QObject
{
    Q_OBJECT

private:
    ParameterDatabase db;
    Recorder recorder;

private slots:
    void init()
    {
        db.clearDevices();
        QStringList errors;
        QVERIFY2(db.loadModel(model.toUtf8(), "M.xml", &errors), qPrintable(errors.join('\n')));
        QVERIFY(db.addDevice("d", "M"));
        recorder.changes.clear();
        db.setObserver(&recorder);
    }

    void handleRequestsSetFrequencyAndGain_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("applied");
        QTest::addColumn<QString>("frequency");
        QTest::addColumn<QString>("gain");
        auto fractions = [](double hertz, double db) {
            return QStringLiteral("%1:%2").arg(gridX(hertz) / 609, 0, 'g', 17).arg(gridY(db) / 161, 0, 'g', 17);
        };
        QTest::newRow("2 kHz, +6 dB") << fractions(2000, 6) << true << "2000 Hz" << "6.0 dB";
        QTest::newRow("100 Hz, -12 dB") << fractions(100, -12) << true << "100 Hz" << "-12.0 dB";
        QTest::newRow("outside the graph: clamped to its corner") << "-3:7" << true << "20.0 Hz" << "18.0 dB";
        QTest::newRow("one number") << "0.5" << false << "1000 Hz" << "0.0 dB";
        QTest::newRow("three numbers") << "0.5:0.5:0.5" << false << "1000 Hz" << "0.0 dB";
        QTest::newRow("not numbers") << "x:y" << false << "1000 Hz" << "0.0 dB";
        QTest::newRow("not finite") << "nan:inf" << false << "1000 Hz" << "0.0 dB";
    }

    void handleRequestsSetFrequencyAndGain()
    {
        QFETCH(QString, typed);
        QFETCH(bool, applied);
        QFETCH(QString, frequency);
        QFETCH(QString, gain);
        QCOMPARE(text(db, "EQ/Band2/Point", typed), applied);
        QCOMPARE(read(db, "EQ/Band2/Freq"), frequency);
        QCOMPARE(read(db, "EQ/Band2/Gain"), gain);
    }

    void handleFollowsItsBand()
    {
        QVERIFY(text(db, "EQ/Band2/Freq", "2000"));
        QVERIFY(text(db, "EQ/Band2/Gain", "-4.5"));
        const QStringList items = read(db, "EQ/Band2/Point").split('/');
        QCOMPARE(items.size(), 3);
        QCOMPARE(items.at(0), QStringLiteral("0:609"));
        QCOMPARE(items.at(1), QStringLiteral("0:161"));
        // The 2000 Hz step is 10^(504/80) mHz.
        QVERIFY(std::abs(items.at(2).section(':', 0, 0).toDouble() - gridX(std::pow(10, 504.0 / 80) / 1000)) < 0.01);
        QVERIFY(std::abs(items.at(2).section(':', 1, 1).toDouble() - gridY(-4.5)) < 0.01);
        // A high-pass handle rides on the 0 dB line.
        QVERIFY(text(db, "EQ/HPF/Point", "0.5:0.9"));
        QCOMPARE(read(db, "EQ/HPF/Point").section('/', 2).section(':', 1), QStringLiteral("80.00"));
        QVERIFY(!db.request(at("EQ/Band2/Point"), 0, {{"ui_prm_val", "0.5"}}));
        QVERIFY(db.request(at("EQ/Band2/Point"), 3, {}));
        QCOMPARE(read(db, "EQ/Band2/Freq"), QStringLiteral("1000 Hz"));
        QCOMPARE(read(db, "EQ/Band2/Gain"), QStringLiteral("0.0 dB"));
    }

    void changesReachWhatDependsOnThem_data()
    {
        QTest::addColumn<QString>("prmAddr");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("changed");
        QTest::newRow("band gain") << "EQ/Band1/Gain" << "3"
                                   << QStringList{"EQ/Band1/Gain", "EQ/Band1/Point", "Graph:EQ/Curve", "Graph:EQ/Total"};
        QTest::newRow("band Q") << "EQ/Band1/Q" << "2" << QStringList{"EQ/Band1/Q", "Graph:EQ/Curve", "Graph:EQ/Total"};
        QTest::newRow("handle") << "EQ/Band3/Point" << "0.5:0.5"
                                << QStringList{"EQ/Band3/Freq", "EQ/Band3/Point", "Graph:EQ/Curve", "Graph:EQ/Total",
                                               "EQ/Band3/Gain"};
        QTest::newRow("high-pass slope") << "EQ/HPF/Slope" << "24 dB/oct"
                                         << QStringList{"EQ/HPF/Slope", "Graph:EQ/HpfCurve", "Graph:EQ/Total"};
        QTest::newRow("low-pass frequency") << "EQ/LPF/Freq" << "5000"
                                            << QStringList{"EQ/LPF/Freq", "EQ/LPF/Point", "Graph:EQ/HpfCurve",
                                                           "Graph:EQ/Total"};
        QTest::newRow("sum switch") << "EQ/Sum" << "Off" << QStringList{"EQ/Sum"};
    }

    void changesReachWhatDependsOnThem()
    {
        QFETCH(QString, prmAddr);
        QFETCH(QString, typed);
        QFETCH(QStringList, changed);
        QVERIFY(text(db, prmAddr, typed));
        QCOMPARE(recorder.changes, changed);
    }

    void curvesShowTheResponse()
    {
        // Flat at first: every point on the 0 dB row, one point per frequency step on the graph.
        QVector<QPoint> own = pointsOf(read(db, "Graph:EQ/Curve"));
        int onGraph = 0;
        for (int row = 0; row < 241; ++row)
            onGraph += std::lround(gridX(std::pow(10, (344 + row) / 80.0) / 1000)) <= 609;
        QCOMPARE(own.size(), onGraph);
        for (const QPoint &p : own)
            QCOMPARE(p.y(), 80);

        QVERIFY(text(db, "EQ/Band2/Point", QStringLiteral("%1:%2").arg(gridX(2000) / 609).arg(gridY(6) / 161)));
        own = pointsOf(read(db, "Graph:EQ/Curve"));
        // The highest row is the +6 dB row; the points on it centre on 2 kHz.
        int highest = 0;
        for (const QPoint &p : own)
            highest = qMax(highest, p.y());
        QCOMPARE(highest, std::lround(gridY(6)));
        QVector<int> onTop;
        for (const QPoint &p : own) {
            if (p.y() == highest)
                onTop.append(p.x());
        }
        QVERIFY(std::abs((onTop.first() + onTop.last()) / 2.0 - gridX(2000)) <= 1.5);

        // The filters live in their own curve; the total holds both.
        QVERIFY(text(db, "EQ/HPF/On", "On"));
        QVERIFY(text(db, "EQ/HPF/Freq", "100"));
        const QVector<QPoint> filters = pointsOf(read(db, "Graph:EQ/HpfCurve"));
        const QVector<QPoint> total = pointsOf(read(db, "Graph:EQ/Total"));
        own = pointsOf(read(db, "Graph:EQ/Curve"));
        QCOMPARE(total.size(), own.size());
        for (int i = 0; i < total.size(); ++i) {
            if (filters.at(i).y() > 0 && total.at(i).y() > 0)
                QVERIFY(std::abs(total.at(i).y() - (own.at(i).y() + filters.at(i).y() - 80)) <= 1);
        }
        // -3 dB at the corner of the 12 dB/oct high-pass: 13.5 rows below the mid line.
        const int corner = std::lround(gridX(100));
        for (const QPoint &p : filters) {
            if (p.x() == corner)
                QVERIFY(std::abs(p.y() - gridY(-3.01)) <= 1);
        }

        // The section switch flattens the bands, not the filters.
        QVERIFY(text(db, "EQ/On", "Off"));
        for (const QPoint &p : pointsOf(read(db, "Graph:EQ/Curve")))
            QCOMPARE(p.y(), 80);
        QCOMPARE(pointsOf(read(db, "Graph:EQ/Total")), filters);
    }

    void notchReachesTheBottomRow()
    {
        QVERIFY(text(db, "EQ/Band2/Type", "Notch"));
        QVERIFY(text(db, "EQ/Band2/Q", "16"));
        const QVector<QPoint> own = pointsOf(read(db, "Graph:EQ/Curve"));
        const auto low = std::min_element(own.cbegin(), own.cend(), [](QPoint a, QPoint b) { return a.y() < b.y(); });
        QCOMPARE(low->y(), 0);
        QVERIFY(std::abs(low->x() - gridX(1000)) <= 3);
    }

    void meterBallistics()
    {
        SignalSource tone;
        QVERIFY(SignalSource::fromWords({"tone", "-30"}, QString(), &tone, nullptr));
        QVERIFY(db.setSignal("d", "In", tone));
        // -30 dB in, +20 dB gain: -10 dB, reached from just below the floor with a 10 ms time constant.
        const double target = -10, start = -61;
        for (int t : {10, 20, 50}) {
            db.advance(t == 10 ? 10 : t - (t == 20 ? 10 : 20));
            const double expected = target + (start - target) * std::exp(-t / 10.0);
            const double shown = qMax(-60.0, expected);
            QVERIFY2(std::abs(number(db, "Meter:Level") - std::round(shown * 10) / 10) < 0.051,
                     qPrintable(QStringLiteral("%1 ms: %2").arg(t).arg(number(db, "Meter:Level"))));
        }
        db.advance(1000);
        QCOMPARE(read(db, "Meter:Level"), QStringLiteral("-10.0 dB"));
        const QString peakAtTop = read(db, "Meter:Level", "ui_prm_prak");
        QCOMPARE(peakAtTop, read(db, "Meter:Level", "ui_prm_val"));

        QVERIFY(db.setSignal("d", "In", SignalSource()));
        db.advance(300);
        // One release time constant: 1/e of the way down to the floor.
        QVERIFY(std::abs(number(db, "Meter:Level") - (-61 + 51 * std::exp(-1.0))) < 0.06);
        db.advance(690);
        QCOMPARE(read(db, "Meter:Level", "ui_prm_prak"), peakAtTop);
        db.advance(20);
        QVERIFY(read(db, "Meter:Level", "ui_prm_prak").toDouble() < peakAtTop.toDouble());
        db.advance(5000);
        QCOMPARE(read(db, "Meter:Level"), QStringLiteral("-inf dB"));
        QCOMPARE(read(db, "Meter:Level", "ui_prm_prak"), QStringLiteral("0"));
    }

    void signalPath_data()
    {
        QTest::addColumn<QStringList>("source");
        QTest::addColumn<QStringList>("requests");
        QTest::addColumn<QString>("level");
        QTest::addColumn<QString>("reduction");
        QTest::newRow("gain") << QStringList{"tone", "-50"} << QStringList{"Gain=30"} << "-20.0 dB" << "0.0 dB";
        QTest::newRow("fader") << QStringList{"tone", "-30"} << QStringList{"Fader=-6"} << "-16.0 dB" << "0.0 dB";
        QTest::newRow("fader at -inf") << QStringList{"tone", "-30"} << QStringList{"Fader=-inf"} << "-inf dB" << "0.0 dB";
        QTest::newRow("mute") << QStringList{"tone", "0"} << QStringList{"Mute=On"} << "-inf dB" << "0.0 dB";
        QTest::newRow("compressor 4:1") << QStringList{"tone", "-20"} << QStringList{"Comp/On=On"} << "-15.0 dB"
                                        << "15.0 dB";
        QTest::newRow("limiter") << QStringList{"tone", "-20"} << QStringList{"Comp/On=On", "Comp/Ratio=inf:1"}
                                 << "-20.0 dB" << "20.0 dB";
        QTest::newRow("compressor below threshold") << QStringList{"tone", "-50"} << QStringList{"Comp/On=On"}
                                                    << "-30.0 dB" << "0.0 dB";
        QTest::newRow("off") << QStringList{"off"} << QStringList{} << "-inf dB" << "0.0 dB";
    }

    void signalPath()
    {
        QFETCH(QStringList, source);
        QFETCH(QStringList, requests);
        QFETCH(QString, level);
        QFETCH(QString, reduction);
        SignalSource s;
        QVERIFY(SignalSource::fromWords(source, QString(), &s, nullptr));
        QVERIFY(db.setSignal("d", "In", s));
        for (const QString &r : requests)
            QVERIFY(text(db, r.section('=', 0, 0), r.section('=', 1)));
        db.advance(3000);
        QCOMPARE(read(db, "Meter:Level"), level);
        QCOMPARE(read(db, "Meter:GR"), reduction);
    }

    void noiseIsRepeatable()
    {
        SignalSource noise;
        QVERIFY(SignalSource::fromWords({"noise", "-40"}, QString(), &noise, nullptr));
        QStringList first, second;
        for (QStringList *run : {&first, &second}) {
            init();
            QVERIFY(db.setSignal("d", "In", noise));
            for (int i = 0; i < 20; ++i) {
                db.advance(50);
                *run << read(db, "Meter:Level", "prmValue");
            }
        }
        QCOMPARE(first, second);
        QVERIFY(QSet<QString>(first.cbegin(), first.cend()).size() > 10);
        double sum = 0;
        for (const QString &v : first)
            sum += v.toDouble();
        QVERIFY(std::abs(sum / first.size() - (-20)) < 6);
    }

    void meterChangesAreReportedOnlyWhenShown()
    {
        db.advance(1000);
        QVERIFY(recorder.changes.isEmpty());
        SignalSource tone;
        QVERIFY(SignalSource::fromWords({"tone", "-30"}, QString(), &tone, nullptr));
        QVERIFY(db.setSignal("d", "In", tone));
        db.advance(20);
        QCOMPARE(recorder.changes, QStringList{"Meter:Level"});
        db.advance(5000);
        recorder.changes.clear();
        db.advance(100);
        QVERIFY(recorder.changes.isEmpty());
    }

    void redeclaredInputReplacesTheFirst()
    {
        ParameterDatabase other;
        QVERIFY(other.loadModel(R"(<DeviceModel name="R">
            <Parameter address="L" type="meter" min="-60" max="0"/>
            <Parameter address="G" type="linear" min="0" max="20" default="20"/>
            <Input name="In" level="L" attack="0" release="0"/>
            <Input name="In" level="L" gain="G" attack="1000" release="0"/>
        </DeviceModel>)", "R.xml"));
        QVERIFY(other.addDevice("r", "R"));
        SignalSource tone;
        QVERIFY(SignalSource::fromWords({"tone", "-30"}, QString(), &tone, nullptr));
        QVERIFY(other.setSignal("r", "In", tone));
        other.advance(1000);
        // Only the second path: the gain counts and the reading is one time constant on its way up.
        QVariantMap answer;
        QVERIFY(other.readParameter({{"dev_uniq_id", "r"}, {"prmAddr", "L"}}, answer));
        QVERIFY(std::abs(answer.value("prmValue").toDouble() - (-10 + (-61 + 10) * std::exp(-1.0))) < 0.06);
    }

    void hostileTimes()
    {
        SignalSource tone;
        QVERIFY(SignalSource::fromWords({"tone", "-30"}, QString(), &tone, nullptr));
        QVERIFY(db.setSignal("d", "In", tone));
        const double before = db.simulatedTime();
        db.advance(-5);
        db.advance(0);
        QCOMPARE(db.simulatedTime(), before);
        db.advance(std::numeric_limits<qint64>::max());
        QCOMPARE(db.simulatedTime(), before + 24 * 3600 * 1000.0);
        QCOMPARE(read(db, "Meter:Level"), QStringLiteral("-10.0 dB"));
        QVERIFY(!db.setSignal("d", "Other", tone));
        QVERIFY(!db.setSignal("nobody", "In", tone));
    }

    void envelopes_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<double>("at");
        QTest::addColumn<double>("level");
        QTest::newRow("two points, midway") << QByteArray("0 -20\n100 -10\n") << true << 50.0 << -15.0;
        QTest::newRow("repeats after the last point") << QByteArray("# level\n0 -20\n100 -10 # loud\n") << true
                                                      << 150.0 << -15.0;
        QTest::newRow("silence") << QByteArray("0 -inf\n10 -inf\n") << true << 5.0 << -200.0;
        QTest::newRow("one point") << QByteArray("0 -6") << true << 1e9 << -6.0;
        QTest::newRow("empty") << QByteArray("\n# nothing\n") << false << 0.0 << 0.0;
        QTest::newRow("times not ascending") << QByteArray("0 -20\n0 -10\n") << false << 0.0 << 0.0;
        QTest::newRow("negative time") << QByteArray("-5 -20\n") << false << 0.0 << 0.0;
        QTest::newRow("three fields") << QByteArray("0 -20 3\n") << false << 0.0 << 0.0;
        QTest::newRow("not numbers") << QByteArray("zero minus twenty\n") << false << 0.0 << 0.0;
        QTest::newRow("overflowing number") << QByteArray("0 1e400\n") << false << 0.0 << 0.0;
        QTest::newRow("binary garbage") << QByteArray("\x00\xff\xfe\x01 \x80", 6) << false << 0.0 << 0.0;
    }

    void envelopes()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, ok);
        QFETCH(double, at);
        QFETCH(double, level);
        QVector<QPointF> points;
        QString error;
        QCOMPARE(SignalSource::readEnvelope(file, &points, &error), ok);
        QCOMPARE(error.isEmpty(), ok);
        if (ok)
            QCOMPARE(SignalSource::envelopeAt(points, at), level);
    }

    void malformedModels_data()
    {
        QTest::addColumn<QString>("element");
        QTest::newRow("equaliser without a path") << "<Equalizer bands=\"4\"/>";
        QTest::newRow("no bands") << "<Equalizer path=\"EQ\" bands=\"0\"/>";
        QTest::newRow("too many bands") << "<Equalizer path=\"EQ\" bands=\"100000\"/>";
        QTest::newRow("graph size not a number") << "<Equalizer path=\"EQ\" width=\"wide\"/>";
        QTest::newRow("input without a meter") << "<Input name=\"In\"/>";
        QTest::newRow("negative attack") << "<Input name=\"In\" level=\"L\" attack=\"-1\"/>";
    }

    void malformedModels()
    {
        QFETCH(QString, element);
        ParameterDatabase fresh;
        QStringList errors;
        QVERIFY(!fresh.loadModel(QStringLiteral("<DeviceModel name=\"X\">%1</DeviceModel>").arg(element).toUtf8(),
                                 "X.xml", &errors));
        QCOMPARE(errors.size(), 1);
        QVERIFY(errors.first().startsWith("X.xml:1: "));
    }
};

QTEST_GUILESS_MAIN(tst_Simulation)
#include "tst_simulation.moc"
