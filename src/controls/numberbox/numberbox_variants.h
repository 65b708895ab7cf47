#ifndef CORVANE_CONTROLS_NUMBERBOX_NUMBERBOX_VARIANTS_H
#define CORVANE_CONTROLS_NUMBERBOX_NUMBERBOX_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/numberbox/NumberBox.h"

class BandWidthNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;
};

class DelaySubTimeNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;
};

class ChannelSelectBandWidthNumberBox : public ChannelSelect<BandWidthNumberBox>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class ChannelSelectDelaySubTimeNumberBox : public ChannelSelect<DelaySubTimeNumberBox>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class ChannelSelectNumberBox : public ChannelSelect<NumberBox>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class TuningZoneBandWidthNumberBox : public TuningZone<BandWidthNumberBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class TuningZoneMasterDelaySubTimeNumberBox : public TuningZone<DelaySubTimeNumberBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class TuningZoneMasterNumberBox : public TuningZone<NumberBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class TuningZoneNumberBox : public TuningZone<NumberBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class SpeakerNumberBox : public Speaker<NumberBox>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerDelaySubTimeNumberBox : public Speaker<DelaySubTimeNumberBox>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerBandWidthNumberBox : public Speaker<BandWidthNumberBox>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class GcNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;
};

class MatrixMixerNumberBox : public MatrixCell<NumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

class DelayMatrixSubTimeNumberBox : public MatrixCell<DelaySubTimeNumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

class HaloNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;
};

class RevTimeNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;
};

class HideNumberBox : public Hide<NumberBox>
{
    Q_OBJECT
public:
    using Hide::Hide;
};

class BrioMatrixPan : public MatrixCell<NumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

class BrioMatrixPanNumberBox : public MatrixCell<NumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

class BrioBandWidthNumberBox : public BandWidthNumberBox
{
    Q_OBJECT
public:
    using BandWidthNumberBox::BandWidthNumberBox;
};

class BrioMatrixMixerNumberBox : public MatrixMixerNumberBox
{
    Q_OBJECT
public:
    using MatrixMixerNumberBox::MatrixMixerNumberBox;
};

class VelaMatrixMixerNumberBox : public MatrixMixerNumberBox
{
    Q_OBJECT
public:
    using MatrixMixerNumberBox::MatrixMixerNumberBox;
};

class BeamNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;
};

class BeamConvertNumberBox : public BeamNumberBox
{
    Q_OBJECT
public:
    using BeamNumberBox::BeamNumberBox;
};

class DirectionNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;
};

class VelaMatrixPan : public MatrixCell<NumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

class VelaMatrixPanNumberBox : public MatrixCell<NumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

class MeterValueNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;
};

class RejectFocusNumberBox : public RejectFocus<NumberBox>
{
    Q_OBJECT
public:
    using RejectFocus::RejectFocus;
};

class FixedScaleDelaySubTimeNumberBox : public DelaySubTimeNumberBox
{
    Q_OBJECT
public:
    using DelaySubTimeNumberBox::DelaySubTimeNumberBox;
};

#endif
