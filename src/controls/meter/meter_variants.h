#ifndef CORVANE_CONTROLS_METER_METER_VARIANTS_H
#define CORVANE_CONTROLS_METER_METER_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/meter/Meter.h"

class ChannelSelectMeter : public ChannelSelect<Meter>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class GRMeter : public Meter
{
    Q_OBJECT
public:
    using Meter::Meter;
};

class ChannelSelectMeterGR : public ChannelSelect<GRMeter>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class SpeakerMeter : public Speaker<Meter>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerMeterGR : public Speaker<GRMeter>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class PallasGRMeter : public GRMeter
{
    Q_OBJECT
public:
    using GRMeter::GRMeter;
};

class PeakMeter : public Meter
{
    Q_OBJECT
public:
    using Meter::Meter;
};

class IndicatorStyleMeter : public Meter
{
    Q_OBJECT
public:
    using Meter::Meter;
};

class BorderMeter : public Meter
{
    Q_OBJECT
public:
    using Meter::Meter;
};

#endif
