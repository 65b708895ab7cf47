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

class MeterScaleGR : public MeterScale
{
    Q_OBJECT
public:
    using MeterScale::MeterScale;
};

class MeterScaleVoltage : public MeterScale
{
    Q_OBJECT
public:
    using MeterScale::MeterScale;
};

#endif
