#ifndef CORVANE_CONTROLS_FADER_FADER_VARIANTS_H
#define CORVANE_CONTROLS_FADER_FADER_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/fader/Fader.h"

class TuningZoneFader : public TuningZone<Fader>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class TuningZoneMatchFader : public TuningZone<Fader>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class GeqFader : public Fader
{
    Q_OBJECT
public:
    using Fader::Fader;
};

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

class HaloFader : public Fader
{
    Q_OBJECT
public:
    using Fader::Fader;
};

class BrioMatrixMixerFader : public MatrixMixerFader
{
    Q_OBJECT
public:
    using MatrixMixerFader::MatrixMixerFader;
};

class BrioAecMicFader : public Fader
{
    Q_OBJECT
public:
    using Fader::Fader;
};

class VelaMatrixMixerFader : public MatrixMixerFader
{
    Q_OBJECT
public:
    using MatrixMixerFader::MatrixMixerFader;
};

class LevelScalePointer : public Fader
{
    Q_OBJECT
public:
    using Fader::Fader;
};

class ChannelSelectFader : public ChannelSelect<Fader>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

#endif
