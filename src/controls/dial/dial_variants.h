#ifndef CORVANE_CONTROLS_DIAL_DIAL_VARIANTS_H
#define CORVANE_CONTROLS_DIAL_DIAL_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/dial/Dial.h"

class ChannelSelectDial : public ChannelSelect<Dial>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class TuningZoneDial : public TuningZone<Dial>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class SpeakerDial : public Speaker<Dial>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class HideDial : public Hide<Dial>
{
    Q_OBJECT
public:
    using Hide::Hide;
};

class DelayMatrixDial : public MatrixCell<Dial>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

class BeamDial : public Dial
{
    Q_OBJECT
public:
    using Dial::Dial;
};

class BeamConvertDial : public BeamDial
{
    Q_OBJECT
public:
    using BeamDial::BeamDial;
};

/*!
    A direction: the dial turns endlessly. The pointer goes once round the
    whole circle over the positions 0 to 1 (0 straight up, clockwise), a
    drag past either end goes on from the other, and a step past either end
    sets the position on the other side of it.
*/
class DirectionDial : public Dial
{
    Q_OBJECT
public:
    using Dial::Dial;

    double angle() const override;

protected:
    int boundDragPosition(int position) const override;
    void stepValue(int step) override;
};

class ControlFaderDial : public Dial
{
    Q_OBJECT
public:
    using Dial::Dial;
};

class RejectFocusDial : public RejectFocus<Dial>
{
    Q_OBJECT
public:
    using RejectFocus::RejectFocus;
};

#endif
