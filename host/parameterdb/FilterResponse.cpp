#include "FilterResponse.h"

#include <QtGlobal>

#include <cmath>

namespace FilterResponse {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double floorDb = -120;

double finiteOr(double value, double fallback)
{
    return std::isfinite(value) ? value : fallback;
}

double safeRate(double sampleRate)
{
    return qBound(1000.0, finiteOr(sampleRate, 48000), 1e6);
}

// The corner as an angle in radians per sample, kept off 0 and Nyquist.
double omega(double sampleRate, double frequency)
{
    const double fs = safeRate(sampleRate);
    const double f = qBound(1.0, finiteOr(frequency, 1000), 0.49 * fs);
    return 2 * pi * f / fs;
}

double safeQ(double q)
{
    return qBound(0.05, finiteOr(q, 0.7071), 100.0);
}

Section normalised(double b0, double b1, double b2, double a0, double a1, double a2)
{
    Section s;
    s.b0 = b0 / a0;
    s.b1 = b1 / a0;
    s.b2 = b2 / a0;
    s.a1 = a1 / a0;
    s.a2 = a2 / a0;
    return s;
}

} // namespace

Section band(Shape shape, double sampleRate, double frequency, double gainDb, double q)
{
    const double w0 = omega(sampleRate, frequency);
    const double cw = std::cos(w0);
    const double alpha = std::sin(w0) / (2 * safeQ(q));
    const double a = std::pow(10.0, qBound(-48.0, finiteOr(gainDb, 0), 48.0) / 40);
    const double beta = 2 * std::sqrt(a) * alpha;
    switch (shape) {
    case Shape::Peaking:
        return normalised(1 + alpha * a, -2 * cw, 1 - alpha * a, 1 + alpha / a, -2 * cw, 1 - alpha / a);
    case Shape::LowShelf:
        return normalised(a * ((a + 1) - (a - 1) * cw + beta), 2 * a * ((a - 1) - (a + 1) * cw),
                          a * ((a + 1) - (a - 1) * cw - beta), (a + 1) + (a - 1) * cw + beta,
                          -2 * ((a - 1) + (a + 1) * cw), (a + 1) + (a - 1) * cw - beta);
    case Shape::HighShelf:
        return normalised(a * ((a + 1) + (a - 1) * cw + beta), -2 * a * ((a - 1) + (a + 1) * cw),
                          a * ((a + 1) + (a - 1) * cw - beta), (a + 1) - (a - 1) * cw + beta,
                          2 * ((a - 1) - (a + 1) * cw), (a + 1) - (a - 1) * cw - beta);
    case Shape::Notch:
        return normalised(1, -2 * cw, 1, 1 + alpha, -2 * cw, 1 - alpha);
    case Shape::HighPass:
    case Shape::LowPass:
        return pass(shape, sampleRate, frequency, q);
    }
    return Section();
}

Section pass(Shape shape, double sampleRate, double frequency, double q)
{
    const double w0 = omega(sampleRate, frequency);
    const double cw = std::cos(w0);
    const double alpha = std::sin(w0) / (2 * safeQ(q));
    if (shape == Shape::HighPass)
        return normalised((1 + cw) / 2, -(1 + cw), (1 + cw) / 2, 1 + alpha, -2 * cw, 1 - alpha);
    return normalised((1 - cw) / 2, 1 - cw, (1 - cw) / 2, 1 + alpha, -2 * cw, 1 - alpha);
}

Section firstOrderPass(Shape shape, double sampleRate, double frequency)
{
    const double k = std::tan(omega(sampleRate, frequency) / 2);
    Section s;
    s.a1 = (k - 1) / (k + 1);
    if (shape == Shape::HighPass) {
        s.b0 = 1 / (1 + k);
        s.b1 = -s.b0;
    } else {
        s.b0 = k / (1 + k);
        s.b1 = s.b0;
    }
    return s;
}

QVector<Section> butterworth(Shape shape, double sampleRate, double frequency, int order)
{
    QVector<Section> out;
    const int n = qBound(1, order, 8);
    // Pole pairs at angles theta from the negative real axis; Q = 1 / (2 cos theta).
    for (int k = 1; k <= n / 2; ++k) {
        const double theta = n % 2 == 0 ? (2 * k - 1) * pi / (2 * n) : k * pi / n;
        out.append(pass(shape, sampleRate, frequency, 1 / (2 * std::cos(theta))));
    }
    if (n % 2 == 1)
        out.append(firstOrderPass(shape, sampleRate, frequency));
    return out;
}

double powerGain(const Section &s, double sampleRate, double frequency)
{
    // The cookbook's form in phi = sin²(w/2): it keeps its precision where
    // the plain form in cos w cancels (a high-pass far below its corner).
    const double w = 2 * pi * finiteOr(frequency, 0) / safeRate(sampleRate);
    const double sw = std::sin(w / 2);
    const double phi = sw * sw;
    const double sb = s.b0 + s.b1 + s.b2;
    const double sa = 1 + s.a1 + s.a2;
    const double num = sb * sb - 4 * (s.b0 * s.b1 + 4 * s.b0 * s.b2 + s.b1 * s.b2) * phi + 16 * s.b0 * s.b2 * phi * phi;
    const double den = sa * sa - 4 * (s.a1 + 4 * s.a2 + s.a1 * s.a2) * phi + 16 * s.a2 * phi * phi;
    if (!(den > 0))
        return 0;
    return qMax(0.0, num / den);
}

double gainDb(const QVector<Section> &cascade, double sampleRate, double frequency)
{
    double power = 1;
    for (const Section &s : cascade)
        power *= powerGain(s, sampleRate, frequency);
    if (!(power > 0))
        return floorDb;
    return qMax(floorDb, finiteOr(10 * std::log10(power), floorDb));
}

} // namespace FilterResponse
