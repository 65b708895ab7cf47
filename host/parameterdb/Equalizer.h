#ifndef CORVANE_HOST_EQUALIZER_H
#define CORVANE_HOST_EQUALIZER_H

#include "FilterResponse.h"
#include "ParameterDefinition.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVector>

class QDomElement;

/*!
    \class Equalizer
    \brief One equaliser section of a device model and the texts it computes.

    A section has parametric bands (type, frequency, gain, Q, on), a
    high-pass and a low-pass filter (frequency, slope, on), a section switch
    and the graph's sum switch. Its parameters are generated from one
    "Equalizer" element of the model; parameters declared after it replace
    the generated ones.

    Computed texts: the curve of the bands, the curve of the two filters and
    the combined curve, in the curve-text form the graphs read, and per band
    and filter a handle position. The horizontal axis is that of the graph
    background (220.5 pixels a decade, 100 Hz at x = 155), the vertical one
    4.5 pixels a decibel with 0 dB on row 81 counted from the top, both in
    the design pixels of a graph of the section's size (610 x 162 unless the
    element says otherwise).
*/
class Equalizer
{
public:
    enum Role {
        NoRole,
        BandType, BandFreq, BandGain, BandQ, BandOn, BandPoint,
        HighPassFreq, HighPassSlope, HighPassOn, HighPassPoint,
        LowPassFreq, LowPassSlope, LowPassOn, LowPassPoint,
        SectionOn, Sum,
        OwnCurve, FilterCurve, TotalCurve
    };

    //! The settings the response is computed from, in hertz, dB and orders.
    struct Settings
    {
        struct Band
        {
            FilterResponse::Shape shape = FilterResponse::Shape::Peaking;
            double frequency = 1000;
            double gain = 0;
            double q = 1;
            bool on = true;
        };
        struct Pass
        {
            double frequency = 1000;
            int order = 2;
            bool on = false;
        };
        QVector<Band> bands;
        Pass highPass;
        Pass lowPass;
        bool on = true;
        double sampleRate = 48000;
    };

    //! Reads an "Equalizer" element; its parameters are appended to \a generated.
    static bool fromElement(const QDomElement &element, Equalizer *equalizer,
                            QList<ParameterDefinition> *generated, QString *error);

    int bandCount() const { return m_bands; }
    QString address(Role role, int band = 0) const;
    //! The role (and band, from 0) of \a prmAddr; NoRole when it is not one of the section's.
    Role roleOf(const QString &prmAddr, int *band) const;
    static bool isComputed(Role role);
    static bool isPoint(Role role) { return role == BandPoint || role == HighPassPoint || role == LowPassPoint; }
    //! Every computed address whose text depends on a parameter of \a role and \a band.
    QStringList dependents(Role role, int band) const;

    int rangeX() const { return m_width - 1; }
    int rangeY() const { return m_height - 1; }
    //! Graph x of \a hertz and its inverse.
    static double xOf(double hertz);
    static double hertzOf(double x);
    double yOf(double db) const;
    double dbOf(double y) const;

    QVector<FilterResponse::Section> bandCascade(const Settings &settings) const;
    QVector<FilterResponse::Section> filterCascade(const Settings &settings) const;
    //! The curve text of \a cascade over the frequency steps that fall on the graph.
    QString curveText(const QVector<FilterResponse::Section> &cascade, double sampleRate) const;
    //! "0:Rx/0:Ry/x:y" for a handle at \a hertz and \a db.
    QString pointText(double hertz, double db) const;
    //! Reads a handle's "fx:fy" into hertz and dB; false when it is not two numbers.
    bool readFractions(const QString &text, double *hertz, double *db) const;

    static int orderOfSlope(int slopeIndex) { return slopeIndex + 1; }

private:
    QHash<QString, QPair<Role, int>> m_roles;
    QString m_path;
    QString m_highPass;
    QString m_lowPass;
    int m_bands = 0;
    int m_width = 610;
    int m_height = 162;
};

#endif
