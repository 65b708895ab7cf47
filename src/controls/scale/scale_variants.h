#ifndef CORVANE_CONTROLS_SCALE_SCALE_VARIANTS_H
#define CORVANE_CONTROLS_SCALE_SCALE_VARIANTS_H

#include "controls/scale/Scales.h"

class GraphSppHScale : public GraphScale
{
    Q_OBJECT
public:
    using GraphScale::GraphScale;
};

class GraphSppVScalePhase : public GraphScale
{
    Q_OBJECT
public:
    using GraphScale::GraphScale;
};

class GraphSppVScaleSP : public GraphScale
{
    Q_OBJECT
public:
    using GraphScale::GraphScale;
};

class GraphSppVScalePEQ : public GraphScale
{
    Q_OBJECT
public:
    using GraphScale::GraphScale;
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
