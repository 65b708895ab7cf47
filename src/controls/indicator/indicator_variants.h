#ifndef CORVANE_CONTROLS_INDICATOR_INDICATOR_VARIANTS_H
#define CORVANE_CONTROLS_INDICATOR_INDICATOR_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/indicator/Indicator.h"

//! Lit while any of its addresses is on: one lamp for a pair of redundant links or supplies.
class RedundantIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;

protected:
    bool computeOn() const override;
};

//! The lamp on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectIndicator : public ChannelSelect<Indicator>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! The lamp for one tuning zone (Zone): the base and its addressing do it all.
class TuningZoneIndicator : public TuningZone<Indicator>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The lamp for one shared band (BandNum): the base and its addressing do it all.
class BandSharingIndicator : public BandSharing<Indicator>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

//! Lit while any of its addresses in the zone is on.
class TuningZoneOrIndicator : public TuningZoneIndicator
{
    Q_OBJECT
public:
    using TuningZoneIndicator::TuningZoneIndicator;

protected:
    bool computeOn() const override;
};

//! Lit while exactly one of its addresses in the zone is on.
class TuningZoneXorIndicator : public TuningZoneIndicator
{
    Q_OBJECT
public:
    using TuningZoneIndicator::TuningZoneIndicator;

protected:
    bool computeOn() const override;
};

//! The lamp on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerIndicator : public Speaker<Indicator>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

/*!
    Shows the parameter's display text, the channel number, on the lamp;
    "Text" with "%1" frames it ("Ch %1"). Lit while the parameter is on.
*/
class ChannelNumberIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;

    QString shownText() const override;

protected:
    void ownValueChanged(int index) override;

private:
    QString m_shownText;
};

// Device state lamps: the plain lamp on their state parameter.
class LockIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;
};

//! Behaves as its family, on a sample-rate converter state: nothing of its own.
class SrcIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;
};

//! Behaves as its family, on a word-clock state: nothing of its own.
class WordClockIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;
};

//! Behaves as its family, on a feedback-suppressor state: nothing of its own.
class FbsIndicator : public Indicator
{
    Q_OBJECT
public:
    using Indicator::Indicator;
};

#endif
