#ifndef CORVANE_CONTROLS_INDICATOR_INDICATOR_VARIANTS_H
#define CORVANE_CONTROLS_INDICATOR_INDICATOR_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/indicator/Indicator.h"

class RedundantIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;
};

class ChannelSelectIndicator : public ChannelSelect<Indicator>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class TuningZoneIndicator : public TuningZone<Indicator>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class BandSharingIndicator : public BandSharing<Indicator>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

class TuningZoneOrIndicator : public TuningZoneIndicator
{
    Q_OBJECT
public:
    using TuningZoneIndicator::TuningZoneIndicator;
};

class TuningZoneXorIndicator : public TuningZoneIndicator
{
    Q_OBJECT
public:
    using TuningZoneIndicator::TuningZoneIndicator;
};

class SpeakerIndicator : public Speaker<Indicator>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class ChannelNumberIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;
};

class LockIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;
};

class SrcIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;
};

class WordClockIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;
};

class FbsIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;
};

#endif
