#ifndef CORVANE_HOST_FILTERRESPONSE_H
#define CORVANE_HOST_FILTERRESPONSE_H

#include <QVector>

/*!
    \namespace FilterResponse
    \brief Second-order filter sections and their magnitude response.

    Coefficients follow the audio-EQ cookbook (bilinear transform with the
    corner frequency prewarped), normalised so that a0 is 1. High- and
    low-pass filters of a given slope are Butterworth cascades: a 6 dB per
    octave step is one order.

    Every input is clamped to what a section can hold (corner frequencies
    between 1 Hz and just below half the sampling rate, Q between 0.05 and
    100, gains of at most 48 dB either way), so no device value can make a
    section unstable or produce a number that is not finite.
*/
namespace FilterResponse {

enum class Shape { Peaking, LowShelf, HighShelf, Notch, HighPass, LowPass };

struct Section
{
    double b0 = 1, b1 = 0, b2 = 0, a1 = 0, a2 = 0;
};

//! One band of an equaliser: peaking, shelving or notch.
Section band(Shape shape, double sampleRate, double frequency, double gainDb, double q);
//! Second-order high- or low-pass with quality \a q.
Section pass(Shape shape, double sampleRate, double frequency, double q);
//! First-order high- or low-pass.
Section firstOrderPass(Shape shape, double sampleRate, double frequency);
//! A Butterworth high- or low-pass of \a order (1 to 8) as a cascade of sections.
QVector<Section> butterworth(Shape shape, double sampleRate, double frequency, int order);

//! |H|² of \a section at \a frequency.
double powerGain(const Section &section, double sampleRate, double frequency);
//! The cascade's gain in dB at \a frequency; never below -120 dB.
double gainDb(const QVector<Section> &cascade, double sampleRate, double frequency);

} // namespace FilterResponse

#endif
