#ifndef CORVANE_CONTROLS_SCALE_SCALE_VARIANTS_H
#define CORVANE_CONTROLS_SCALE_SCALE_VARIANTS_H

#include "controls/scale/Scales.h"

/*!
    The frequency scale under a graph: 20 Hz to 20 kHz at
    x = 155 + 220.5 × log10(f / 100) design pixels.
*/
class GraphSppHScale : public GraphScale
{
    Q_OBJECT
public:
    GraphSppHScale(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    Qt::Orientation orientation() const override { return Qt::Horizontal; }
    double rulePosition(double hertz) const override;
    //! "20" ... "500", "1k", "2k", ... "20k".
    QString label(double hertz) const override;
};

/*!
    A vertical scale of level lines:  perLine units a line, 0 on the mid
    line, labelled from + top to - top every  step, signs shown.
*/
template <int perLine, int top, int step>
class LevelLineScale : public GraphScale
{
public:
    LevelLineScale(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : GraphScale(hostCore, registry, parent)
    {
        QList<double> marks;
        for (int v = top; v >= -top; v -= step)
            marks.append(v);
        setMarks(marks);
    }

    Qt::Orientation orientation() const override { return Qt::Vertical; }
    double rulePosition(double value) const override { return levelRow(value, perLine); }
    QString label(double value) const override { return signedLabel(value); }
};

//! Phase in degrees: 30 a level line, -180 to +180 labelled every 90.
class GraphSppVScalePhase : public LevelLineScale<30, 180, 90>
{
    Q_OBJECT
public:
    using LevelLineScale::LevelLineScale;
};

//! Speaker-processor level in dB: 6 a level line, -36 to +36 labelled every 12.
class GraphSppVScaleSP : public LevelLineScale<6, 36, 12>
{
    Q_OBJECT
public:
    using LevelLineScale::LevelLineScale;
};

//! Parametric EQ level in dB: 3 a level line, -18 to +18 labelled every 6.
class GraphSppVScalePEQ : public LevelLineScale<3, 18, 6>
{
    Q_OBJECT
public:
    using LevelLineScale::LevelLineScale;
};

//! The scale of a gain-reduction meter: 0 dB at the top, 30 dB of reduction at the bottom.
class MeterScaleGR : public MeterScale
{
    Q_OBJECT
public:
    MeterScaleGR(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
};

//! The scale of a signal-voltage meter in dBu: +24 at the top, -36 at the bottom.
class MeterScaleVoltage : public MeterScale
{
    Q_OBJECT
public:
    MeterScaleVoltage(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    QString label(double value) const override;
};

#endif
