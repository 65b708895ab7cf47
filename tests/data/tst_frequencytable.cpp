// The frequency step table.
#include "data/FrequencyTable.h"

#include <QSet>
#include <QtTest>

#include <cmath>

namespace {

// ISO 3, R40.
const char *const r40[40] = {
    "1.00", "1.06", "1.12", "1.18", "1.25", "1.32", "1.40", "1.50", "1.60", "1.70",
    "1.80", "1.90", "2.00", "2.12", "2.24", "2.36", "2.50", "2.65", "2.80", "3.00",
    "3.15", "3.35", "3.55", "3.75", "4.00", "4.25", "4.50", "4.75", "5.00", "5.30",
    "5.60", "6.00", "6.30", "6.70", "7.10", "7.50", "8.00", "8.50", "9.00", "9.50",
};

// Hertz as the table writes them: one decimal below 100, whole numbers above.
QString hertzText(double hz)
{
    return hz < 100.0 ? QString::number(hz, 'f', 1) : QString::number(qRound64(hz));
}

// Even row 2k: R40 step 12 + k (20 Hz is 2.00 x 10^1).
QString preferredLabel(int row)
{
    const int step = 12 + row / 2;
    return hertzText(QByteArray(r40[step % 40]).toDouble() * std::pow(10.0, 1 + step / 40));
}

// Odd rows: the value (thousandths of a hertz) to three significant figures.
QString roundedLabel(qint32 value)
{
    qint64 unit = 1; // of thousandths, for three significant figures
    while (value / unit >= 1000)
        unit *= 10;
    const qint64 rounded = (value + unit / 2) / unit * unit;
    return hertzText(rounded / 1000.0);
}

} // namespace

class TestFrequencyTable : public QObject
{
    Q_OBJECT

private slots:
    void size() { QCOMPARE(FrequencyTable::size(), 241); }

    void tellingRows_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("label");
        QTest::addColumn<qint32>("value");
        QTest::newRow("0") << 0 << "20.0" << 20000;
        QTest::newRow("1") << 1 << "20.5" << 20535;
        QTest::newRow("2") << 2 << "21.2" << 21135;
        QTest::newRow("3") << 3 << "21.8" << 21752;
        QTest::newRow("4") << 4 << "22.4" << 22387;
        QTest::newRow("56: 100 Hz") << 56 << "100" << 100000;
        QTest::newRow("136: 1 kHz") << 136 << "1000" << 1000000;
        QTest::newRow("240") << 240 << "20000" << 19952624;
        // Stored constants one above a fresh rounding.
        QTest::newRow("89") << 89 << "259" << 258524;
        QTest::newRow("139") << 139 << "1090" << 1090185;
        QTest::newRow("146") << 146 << "1320" << 1333522;
        QTest::newRow("168") << 168 << "2500" << 2511887;
    }
    void tellingRows()
    {
        QFETCH(int, row);
        QTEST(FrequencyTable::label(row), "label");
        QTEST(FrequencyTable::value(row), "value");
    }

    void valuesFollowTheStepRule()
    {
        const QSet<int> storedAboveRounding = { 89, 139, 146, 168, 240 };
        QCOMPARE(FrequencyTable::value(0), 20000); // not the rule's 19953
        for (int n = 1; n < 241; ++n) {
            const qint64 fresh = std::llround(std::pow(10.0, (344 + n) / 80.0));
            const qint64 expected = fresh + (storedAboveRounding.contains(n) ? 1 : 0);
            QVERIFY2(FrequencyTable::value(n) == expected, qPrintable(QString::number(n)));
        }
    }

    void labels()
    {
        QSet<QString> seen;
        double previous = 0;
        for (int row = 0; row < FrequencyTable::size(); ++row) {
            const QString label = FrequencyTable::label(row);
            const qint32 value = FrequencyTable::value(row);
            const QByteArray where = QByteArray::number(row) + ": " + label.toLatin1();
            QVERIFY2(!seen.contains(label), where.constData());
            seen.insert(label);
            bool ok = false;
            const double hz = label.toDouble(&ok);
            QVERIFY2(ok && hz > previous, where.constData()); // unique and in value order
            previous = hz;
            QVERIFY2(label.contains('.') == (value < 100000), where.constData());
            QVERIFY2(std::abs(hz * 1000.0 / value - 1.0) < 0.013, where.constData());
            QCOMPARE(label, row % 2 == 0 ? preferredLabel(row) : roundedLabel(value));
            if (row > 0)
                QVERIFY2(value > FrequencyTable::value(row - 1), where.constData());
        }
    }

    void evenRowsKeepPreferredNumbers_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("rounded");
        QTest::newRow("2") << 2 << "21.2" << "21.1";
        QTest::newRow("14") << 14 << "30.0" << "29.9";
        QTest::newRow("74") << 74 << "170" << "168";
        QTest::newRow("142") << 142 << "1180" << "1190";
        QTest::newRow("238") << 238 << "19000" << "18800";
    }
    void evenRowsKeepPreferredNumbers()
    {
        QFETCH(int, row);
        QTEST(FrequencyTable::label(row), "label");
        QTEST(roundedLabel(FrequencyTable::value(row)), "rounded");
    }

    void labelRuns_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<QStringList>("labels");
        QTest::newRow("from 20 Hz") << 0 << QStringList { "20.0", "20.5", "21.2", "21.8", "22.4", "23.0", "23.6", "24.4", "25.0", "25.9", "26.5", "27.4" };
        QTest::newRow("to 100 Hz") << 54 << QStringList { "95.0", "97.2", "100", "103", "106" };
        QTest::newRow("from 1 kHz") << 136 << QStringList { "1000", "1030", "1060", "1090", "1120" };
        QTest::newRow("odd rows 1300 and 1370") << 145 << QStringList { "1300", "1320", "1370" };
        QTest::newRow("to 20 kHz") << 236 << QStringList { "18000", "18300", "19000", "19400", "20000" };
    }
    void labelRuns()
    {
        QFETCH(int, first);
        QFETCH(QStringList, labels);
        for (int i = 0; i < labels.size(); ++i)
            QCOMPARE(FrequencyTable::label(first + i), labels.at(i));
    }

    void outOfRange()
    {
        QVERIFY(FrequencyTable::label(-1).isNull());
        QVERIFY(FrequencyTable::label(241).isNull());
        QCOMPARE(FrequencyTable::value(-1), 0);
        QCOMPARE(FrequencyTable::value(241), 0);
    }

    void exactSearch()
    {
        for (int row = 0; row < FrequencyTable::size(); ++row) {
            QCOMPARE(FrequencyTable::rowOfValue(FrequencyTable::value(row)), row);
            QCOMPARE(FrequencyTable::rowOfLabel(FrequencyTable::label(row)), row);
        }
        QCOMPARE(FrequencyTable::rowOfValue(19953), -1);
        QCOMPARE(FrequencyTable::rowOfValue(19952623), -1);
        QCOMPARE(FrequencyTable::rowOfValue(0), -1);
        QCOMPARE(FrequencyTable::rowOfLabel("21.1"), -1);
        QCOMPARE(FrequencyTable::rowOfLabel("20"), -1);
    }

    void nearestSearch_data()
    {
        QTest::addColumn<qint32>("value");
        QTest::addColumn<int>("row");
        QTest::newRow("zero") << 0 << 0;
        QTest::newRow("below 20 Hz") << 19953 << 0;
        QTest::newRow("exact row 2") << 21135 << 2;
        QTest::newRow("just above row 2") << 21136 << 2;
        QTest::newRow("just below row 3") << 21751 << 3;
        QTest::newRow("nearer row 0") << 20267 << 0;
        QTest::newRow("nearer row 1") << 20268 << 1;
        QTest::newRow("tie between 4 and 5 goes low") << 22714 << 4; // 22387 + 327 == 23041 - 327
        QTest::newRow("past the tie") << 22715 << 5;
        QTest::newRow("1 kHz") << 1000000 << 136;
        QTest::newRow("above 20 kHz") << 30000000 << 240;
        QTest::newRow("negative") << -5 << 0;
    }
    void nearestSearch()
    {
        QFETCH(qint32, value);
        QTEST(FrequencyTable::nearestRow(value), "row");
    }
};

QTEST_GUILESS_MAIN(TestFrequencyTable)
#include "tst_frequencytable.moc"
