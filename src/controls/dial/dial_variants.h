#ifndef CORVANE_CONTROLS_DIAL_DIAL_VARIANTS_H
#define CORVANE_CONTROLS_DIAL_DIAL_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/dial/Dial.h"

//! The dial on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectDial : public ChannelSelect<Dial>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! The dial for one tuning zone (Zone): the base and its addressing do it all.
class TuningZoneDial : public TuningZone<Dial>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The dial on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerDial : public Speaker<Dial>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The dial hidden while its parameter holds a listed value (HideValue): the base and its addressing do it all.
class HideDial : public Hide<Dial>
{
    Q_OBJECT
public:
    using Hide::Hide;
};

//! The dial on one matrix cell (AddressForm, XIndex, YIndex): the base and its addressing do it all.
class DelayMatrixDial : public MatrixCell<Dial>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

/*!
    Steers a microphone beam: the dial, with the beam drawn over the knob as
    a wedge from its centre toward the pointer, "BeamWidth" degrees wide
    (default 30, 1 to 180) in "BeamColor" (default 255,170,0,140).
*/
class BeamDial : public Dial
{
    Q_OBJECT
    Q_PROPERTY(int beamWidth READ beamWidth WRITE setBeamWidth)
    Q_PROPERTY(QColor beamColor READ beamColor WRITE setBeamColor)
    CORVANE_TAG_TABLE
public:
    using Dial::Dial;

    static const QColor defaultBeamColor;
    int beamWidth() const { return m_beamWidth; }
    void setBeamWidth(int degrees);
    QColor beamColor() const { return m_beamColor; }
    void setBeamColor(const QColor &color);

protected:
    void paintKnob(QPainter &painter) override;

private:
    int m_beamWidth = 30;
    QColor m_beamColor = defaultBeamColor;
};

//! The beam dial of the converting panels: the conversion is the number box's (BeamConvertNumberBox); the angle needs none.
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

//! Behaves as its family, on a control fader's level: nothing of its own.
class ControlFaderDial : public Dial
{
    Q_OBJECT
public:
    using Dial::Dial;
};

//! The dial that takes no focus and is disabled on listed values (RejectValue): the base and its addressing do it all.
class RejectFocusDial : public RejectFocus<Dial>
{
    Q_OBJECT
public:
    using RejectFocus::RejectFocus;
};

#endif
