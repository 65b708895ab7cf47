#ifndef CORVANE_CONTROLS_FADER_FADER_VARIANTS_H
#define CORVANE_CONTROLS_FADER_FADER_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/fader/Fader.h"

//! The fader for one tuning zone (Zone): the base and its addressing do it all.
class TuningZoneFader : public TuningZone<Fader>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The fader for one tuning zone (Zone), matching the zone's members: the base and its addressing do it all.
class TuningZoneMatchFader : public TuningZone<Fader>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! Behaves as its family, on one graphic equaliser band: nothing of its own.
class GeqFader : public Fader
{
    Q_OBJECT
public:
    using Fader::Fader;
};

//! The fader on one matrix cell (AddressForm, XIndex, YIndex): the base and its addressing do it all.
class MatrixMixerFader : public MatrixCell<Fader>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

//! The rail lies horizontally; the knob's travel runs from the left (0) to the right.
class HorizontalFader : public Fader
{
    Q_OBJECT
public:
    HorizontalFader(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : Fader(hostCore, registry, parent)
    {
        setOrientation(Qt::Horizontal);
    }
};

//! Behaves as its family: nothing of its own.
class HaloFader : public Fader
{
    Q_OBJECT
public:
    using Fader::Fader;
};

//! Behaves as MatrixMixerFader: nothing of its own.
class BrioMatrixMixerFader : public MatrixMixerFader
{
    Q_OBJECT
public:
    using MatrixMixerFader::MatrixMixerFader;
};

//! Behaves as its family, on an echo canceller's microphone level: nothing of its own.
class BrioAecMicFader : public Fader
{
    Q_OBJECT
public:
    using Fader::Fader;
};

//! Behaves as MatrixMixerFader: nothing of its own.
class VelaMatrixMixerFader : public MatrixMixerFader
{
    Q_OBJECT
public:
    using MatrixMixerFader::MatrixMixerFader;
};

/*!
    A pointer on a level scale: the fader's law, drag, keys and wheel, drawn
    as the scale's level marks and a triangular pointer at the level, with a
    line across the scale, instead of a rail and a knob. "PointerColor"
    colours it (default 255,170,0).
*/
class LevelScalePointer : public Fader
{
    Q_OBJECT
    Q_PROPERTY(QColor pointerColor READ pointerColor WRITE setPointerColor)
    CORVANE_TAG_TABLE
public:
    using Fader::Fader;

    static const QColor defaultPointerColor;
    QColor pointerColor() const { return m_pointerColor; }
    void setPointerColor(const QColor &color);
    //! The pointer's tip, on the level, in widget pixels.
    QPoint tip() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_pointerColor = defaultPointerColor;
};

//! The fader on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectFader : public ChannelSelect<Fader>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

#endif
