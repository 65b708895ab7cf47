#include "ParameterDatabase.h"

#include <QtTest>

/*
    What the simulated equaliser costs: a band changes and the combined
    curve is computed again, 241 frequency steps through six bands and the
    two filters. Run with scripts/bench bench_equalizer.
*/
class bench_Equalizer : public QObject
{
    Q_OBJECT

private slots:
    void recomputeCurveAfterBandChange()
    {
        // A graph wide enough for every step from 20 Hz to 20 kHz.
        const QByteArray model = R"(<DeviceModel name="M">
            <Equalizer path="EQ" bands="6" width="664"/>
        </DeviceModel>)";
        ParameterDatabase db;
        QVERIFY(db.loadModel(model, "M.xml"));
        QVERIFY(db.addDevice("d", "M"));
        const QVariantMap gain{{"dev_uniq_id", "d"}, {"prmAddr", "EQ/Band3/Gain"}};
        const QVariantMap curve{{"dev_uniq_id", "d"}, {"prmAddr", "Graph:EQ/Total"}};
        for (const char *on : {"EQ/HPF/On", "EQ/LPF/On"})
            QVERIFY(db.request({{"dev_uniq_id", "d"}, {"prmAddr", on}}, 1, {{"ui_prm_str", "On"}}));
        QVariantMap answer;
        QVERIFY(db.readParameter(curve, answer));
        QCOMPARE(answer.value("ui_prm_str").toString().count('/'), 242);
        int step = 0;
        QBENCHMARK {
            db.request(gain, 1, {{"ui_prm_str", QString::number(++step % 24 - 12)}});
            db.readParameter(curve, answer);
        }
    }
};

QTEST_GUILESS_MAIN(bench_Equalizer)
#include "bench_equalizer.moc"
