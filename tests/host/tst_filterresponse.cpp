#include "FilterResponse.h"

#include <QtTest>

#include <cmath>
#include <complex>

using FilterResponse::Shape;

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double rate = 48000;

// The analog prototype of each shape, evaluated at the frequency the
// bilinear transform maps f to: the digital response must equal it exactly.
double prototypeDb(Shape shape, double f, double f0, double gain, double q)
{
    const double w = std::tan(pi * f / rate) / std::tan(pi * f0 / rate);
    const std::complex<double> s(0, w);
    const double a = std::pow(10.0, gain / 40);
    const double r = std::sqrt(a) / q;
    std::complex<double> h;
    switch (shape) {
    case Shape::Peaking:
        h = (s * s + s * (a / q) + 1.0) / (s * s + s / (a * q) + 1.0);
        break;
    case Shape::LowShelf:
        h = a * (s * s + r * s + a) / (a * s * s + r * s + 1.0);
        break;
    case Shape::HighShelf:
        h = a * (a * s * s + r * s + 1.0) / (s * s + r * s + a);
        break;
    case Shape::Notch:
        h = (s * s + 1.0) / (s * s + s / q + 1.0);
        break;
    case Shape::HighPass:
        h = (s * s) / (s * s + s / q + 1.0);
        break;
    case Shape::LowPass:
        h = 1.0 / (s * s + s / q + 1.0);
        break;
    }
    return 20 * std::log10(std::abs(h));
}

// A Butterworth filter of order n: |H|² = 1 / (1 + W^2n), or W^2n / (1 + W^2n) for a high-pass.
double butterworthDb(Shape shape, double f, double f0, int n)
{
    const double w = std::tan(pi * f / rate) / std::tan(pi * f0 / rate);
    const double p = std::pow(w, 2 * n);
    return 10 * std::log10((shape == Shape::HighPass ? p : 1.0) / (1 + p));
}

double dbOf(const FilterResponse::Section &s, double f)
{
    return FilterResponse::gainDb({s}, rate, f);
}

} // namespace

class tst_FilterResponse : public QObject
{
    Q_OBJECT

private slots:
    void bandsMatchTheirPrototype_data()
    {
        QTest::addColumn<int>("shape");
        QTest::addColumn<double>("f0");
        QTest::addColumn<double>("gain");
        QTest::addColumn<double>("q");
        QTest::newRow("peaking +6 dB 1 kHz Q 1") << int(Shape::Peaking) << 1000.0 << 6.0 << 1.0;
        QTest::newRow("peaking -12 dB 8 kHz Q 4") << int(Shape::Peaking) << 8000.0 << -12.0 << 4.0;
        QTest::newRow("low shelf +6 dB 100 Hz") << int(Shape::LowShelf) << 100.0 << 6.0 << 0.7071;
        QTest::newRow("high shelf -9 dB 5 kHz") << int(Shape::HighShelf) << 5000.0 << -9.0 << 0.9;
        QTest::newRow("notch 1 kHz Q 10") << int(Shape::Notch) << 1000.0 << 0.0 << 10.0;
        QTest::newRow("high-pass 100 Hz Q 0.707") << int(Shape::HighPass) << 100.0 << 0.0 << 0.7071;
        QTest::newRow("low-pass 12 kHz Q 2") << int(Shape::LowPass) << 12000.0 << 0.0 << 2.0;
    }

    void bandsMatchTheirPrototype()
    {
        QFETCH(int, shape);
        QFETCH(double, f0);
        QFETCH(double, gain);
        QFETCH(double, q);
        const FilterResponse::Section s = FilterResponse::band(Shape(shape), rate, f0, gain, q);
        for (double f = 20; f < 20000; f *= 1.09) {
            const double expected = qMax(-120.0, prototypeDb(Shape(shape), f, f0, gain, q));
            QVERIFY2(std::abs(dbOf(s, f) - expected) < 1e-6,
                     qPrintable(QStringLiteral("%1 Hz: %2 dB, expected %3").arg(f).arg(dbOf(s, f)).arg(expected)));
        }
    }

    void peakingFilterLandmarks()
    {
        // +6 dB at 1 kHz with Q 1: the full gain at the centre, half of it
        // at the band edges the cookbook's bandwidth relation gives.
        const auto s = FilterResponse::band(Shape::Peaking, rate, 1000, 6, 1);
        const double w0 = 2 * pi * 1000 / rate;
        const double octaves = 2 * std::asinh(0.5) / std::log(2.0) * std::sin(w0) / w0;
        QVERIFY(std::abs(dbOf(s, 1000) - 6.0) < 1e-6);
        QVERIFY(std::abs(dbOf(s, 1000 * std::pow(2, -octaves / 2)) - 3.0) < 0.01);
        QVERIFY(std::abs(dbOf(s, 1000 * std::pow(2, octaves / 2)) - 3.0) < 0.01);
        QVERIFY(std::abs(dbOf(s, 20)) < 0.05);
        QVERIFY(std::abs(dbOf(s, 20000)) < 0.1);
    }

    void shelvesAndNotchLandmarks()
    {
        const auto low = FilterResponse::band(Shape::LowShelf, rate, 100, 6, 0.7071);
        QVERIFY(std::abs(dbOf(low, 100) - 3.0) < 1e-6);
        QVERIFY(std::abs(dbOf(low, 1) - 6.0) < 0.01);
        QVERIFY(std::abs(dbOf(low, 20000)) < 0.01);
        const auto notch = FilterResponse::band(Shape::Notch, rate, 1000, 0, 10);
        QVERIFY(dbOf(notch, 1000) < -100);
        QVERIFY(dbOf(notch, 1000) >= -120);
    }

    void butterworthSlopes_data()
    {
        QTest::addColumn<int>("shape");
        QTest::addColumn<double>("f0");
        QTest::addColumn<int>("order");
        for (int n = 1; n <= 8; ++n) {
            QTest::addRow("high-pass 100 Hz, %d dB/oct", 6 * n) << int(Shape::HighPass) << 100.0 << n;
            QTest::addRow("low-pass 5 kHz, %d dB/oct", 6 * n) << int(Shape::LowPass) << 5000.0 << n;
        }
    }

    void butterworthSlopes()
    {
        QFETCH(int, shape);
        QFETCH(double, f0);
        QFETCH(int, order);
        const auto cascade = FilterResponse::butterworth(Shape(shape), rate, f0, order);
        QCOMPARE(cascade.size(), (order + 1) / 2);
        QVERIFY(std::abs(FilterResponse::gainDb(cascade, rate, f0) + 3.0103) < 1e-3);
        for (double f = 20; f < 20000; f *= 1.13) {
            const double expected = qMax(-120.0, butterworthDb(Shape(shape), f, f0, order));
            QVERIFY2(std::abs(FilterResponse::gainDb(cascade, rate, f) - expected) < 1e-6, qPrintable(QString::number(f)));
        }
    }

    void secondOrderHighPassOctaveBelow()
    {
        const auto cascade = FilterResponse::butterworth(Shape::HighPass, rate, 100, 2);
        QVERIFY(std::abs(FilterResponse::gainDb(cascade, rate, 100) + 3.01) < 0.005);
        QVERIFY(std::abs(FilterResponse::gainDb(cascade, rate, 50) + 12.30) < 0.01);
    }

    void hostileSettingsStayFinite_data()
    {
        QTest::addColumn<double>("frequency");
        QTest::addColumn<double>("gain");
        QTest::addColumn<double>("q");
        QTest::addColumn<double>("sampleRate");
        QTest::newRow("corner above Nyquist") << 1e9 << 6.0 << 1.0 << rate;
        QTest::newRow("zero corner and Q") << 0.0 << 6.0 << 0.0 << rate;
        QTest::newRow("negative everything") << -100.0 << -1e300 << -5.0 << -48000.0;
        QTest::newRow("not a number") << qQNaN() << qQNaN() << qQNaN() << qQNaN();
        QTest::newRow("infinite") << qInf() << qInf() << qInf() << qInf();
    }

    void hostileSettingsStayFinite()
    {
        QFETCH(double, frequency);
        QFETCH(double, gain);
        QFETCH(double, q);
        QFETCH(double, sampleRate);
        for (Shape shape : {Shape::Peaking, Shape::LowShelf, Shape::HighShelf, Shape::Notch, Shape::HighPass}) {
            const auto s = FilterResponse::band(shape, sampleRate, frequency, gain, q);
            for (double f : {0.0, 20.0, 1000.0, 20000.0, 1e12}) {
                const double db = FilterResponse::gainDb({s}, sampleRate, f);
                QVERIFY(std::isfinite(db));
                QVERIFY(db >= -120 && db <= 49);
            }
        }
        QVERIFY(std::isfinite(FilterResponse::gainDb(
            FilterResponse::butterworth(Shape::LowPass, sampleRate, frequency, 1000), sampleRate, 1000)));
    }
};

QTEST_APPLESS_MAIN(tst_FilterResponse)
#include "tst_filterresponse.moc"
