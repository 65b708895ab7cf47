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

    virtual bool readPointerColor(const QDomElement &e);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_pointerColor = defaultPointerColor;
};

class ChannelSelectFader : public ChannelSelect<Fader>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

#endif
