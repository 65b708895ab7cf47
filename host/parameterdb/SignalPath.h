#ifndef CORVANE_HOST_SIGNALPATH_H
#define CORVANE_HOST_SIGNALPATH_H

#include <QPointF>
#include <QString>
#include <QVector>

class QDomElement;

/*!
    \class SignalPath
    \brief One input of a device model: the parameters its signal passes and
    the meters it drives.

    Declared by an "Input" element of the model. The level meter shows the
    source level plus the gain, less the compressor's gain reduction, plus
    the fader; a mute or a fader at its lowest silences it. Meter ballistics
    are time constants in milliseconds, the peak holds for \c holdMs and then
    falls with the release.
*/
struct SignalPath
{
    QString name;
    QString gain;
    QString mute;
    QString fader;
    QString level;
    QString gainReduction;
    QString threshold;
    QString ratio;
    QString compressorOn;
    double attackMs = 10;
    double releaseMs = 300;
    double holdMs = 1500;

    static bool fromElement(const QDomElement &element, SignalPath *path, QString *error);
};

/*!
    \class SignalSource
    \brief What feeds an input: nothing, a steady tone, a randomly moving
    level or a recorded level envelope.

    Levels are in dB at the input. An envelope is a list of (milliseconds,
    dB) points, played with straight lines between them and repeated after
    the last one.
*/
struct SignalSource
{
    enum Kind { Off, Tone, Noise, Envelope };
    Kind kind = Off;
    double level = -20;
    QVector<QPointF> envelope;

    //! Reads "off", "tone DB", "noise DB" or "envelope FILE" (relative to \a folder).
    static bool fromWords(const QStringList &words, const QString &folder, SignalSource *source, QString *error);
    /*!
        Reads an envelope text: one "MS DB" pair a line, times ascending from
        0, "-inf" for silence, "#" comments. At most 100000 points.
    */
    static bool readEnvelope(const QByteArray &text, QVector<QPointF> *points, QString *error);
    //! The envelope's level at \a ms, repeated after its last point.
    static double envelopeAt(const QVector<QPointF> &points, double ms);
};

/*!
    \class Ballistics
    \brief A meter reading that follows its signal with attack and release
    time constants, and a peak that holds.
*/
struct Ballistics
{
    double level;
    double peak;
    double holdLeft = 0;

    explicit Ballistics(double floor = -200) : level(floor), peak(floor) { }
    //! Moves on by \a ms toward \a target; nothing goes below \a floor.
    void advance(double target, double ms, const SignalPath &path, double floor);
};

#endif
