#ifndef CORVANE_CONTROLS_NUMBERBOX_NUMBERBOX_VARIANTS_H
#define CORVANE_CONTROLS_NUMBERBOX_NUMBERBOX_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/numberbox/DelaySubTimeNumberBox.h"
#include "controls/numberbox/NumberBox.h"

namespace NumberText {
//! \a text with its leading number written with \a format ("%.1f"); unchanged when it starts with none.
QString formatLeadingNumber(const QString &text, const char *format);
//! The leading number of \a text as written; empty when it starts with none.
QString leadingNumberText(const QString &text);
//! The leading number of \a text; \a ok tells whether there was one.
double leadingNumber(const QString &text, bool *ok);
}

/*!
    A filter band width. The second address is the unit ("B/W[Oct]" for
    octaves, anything else for Q): in octaves the editor opens with the bare
    figure. "range" and "HideValue" hide the box while the unit address
    holds one of the values.
*/
class BandWidthNumberBox : public Hide<NumberBox>
{
    Q_OBJECT
    Q_PROPERTY(QString unitText READ unitText)
    Q_PROPERTY(bool octaves READ isOctaves)
    Q_PROPERTY(QStringList hideValues READ gateValues)

public:
    using Hide::Hide;

    QString unitText() const;
    bool isOctaves() const { return unitText() == QLatin1String("B/W[Oct]"); }

protected:
    QString editorStartText() const override;
    int gateIndex() const override { return unitIndex(); }
    int unitIndex() const;
};

//! The band-width box on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectBandWidthNumberBox : public ChannelSelect<BandWidthNumberBox>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! The delay box on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectDelaySubTimeNumberBox : public ChannelSelect<DelaySubTimeNumberBox>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! The number box on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectNumberBox : public ChannelSelect<NumberBox>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! Shows the zone's band width with one decimal.
class TuningZoneBandWidthNumberBox : public TuningZone<BandWidthNumberBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
    QString shownText() const override;
};

//! The delay of a tuning zone's master, shown with two decimals and the unit word.
class TuningZoneMasterDelaySubTimeNumberBox : public TuningZone<DelaySubTimeNumberBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
    QString shownText() const override;
};

/*!
    The master of a tuning zone. Where the database gives no display text
    (a zone-level value), the box writes the value itself from "MinValue",
    "MaxValue", "Scale" ("log" or linear), "Step" (its decimals) and "Unit".
*/
class TuningZoneMasterNumberBox : public TuningZone<NumberBox>
{
    Q_OBJECT
    Q_PROPERTY(QString masterType READ masterType WRITE setMasterType)
    Q_PROPERTY(double minValue READ minValue WRITE setMinValue)
    Q_PROPERTY(double maxValue READ maxValue WRITE setMaxValue)
    Q_PROPERTY(QString scale READ scale WRITE setScale)
    Q_PROPERTY(double step READ step WRITE setStep)
    Q_PROPERTY(QString unit READ unit WRITE setUnit)
    CORVANE_TAG_TABLE

public:
    using TuningZone::TuningZone;

    QString masterType() const { return m_masterType; }
    double minValue() const { return m_min; }
    double maxValue() const { return m_max; }
    QString scale() const { return m_scale; }
    double step() const { return m_step; }
    QString unit() const { return m_unit; }
    void setMasterType(const QString &type) { updateMember(m_masterType, type); }
    void setMinValue(double value) { updateMember(m_min, value); }
    void setMaxValue(double value) { updateMember(m_max, value); }
    void setScale(const QString &scale) { updateMember(m_scale, scale); }
    void setStep(double step) { updateMember(m_step, step); }
    void setUnit(const QString &unit) { updateMember(m_unit, unit); }
    QString shownText() const override;

private:
    QString m_masterType;
    double m_min = 0;
    double m_max = 0;
    QString m_scale;
    double m_step = 0;
    QString m_unit;
};

//! The number box for one tuning zone (Zone): the base and its addressing do it all.
class TuningZoneNumberBox : public TuningZone<NumberBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The number box on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerNumberBox : public Speaker<NumberBox>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The delay box on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerDelaySubTimeNumberBox : public Speaker<DelaySubTimeNumberBox>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The band-width box on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerBandWidthNumberBox : public Speaker<BandWidthNumberBox>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! "ReadOnly" "true" makes the box a display only.
class GcNumberBox : public NumberBox
{
    Q_OBJECT
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)
    CORVANE_TAG_TABLE

public:
    using NumberBox::NumberBox;
    bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool on);
    bool isEditable() const override { return !m_readOnly; }

private:
    bool m_readOnly = false;
};

//! The number box on one matrix cell (AddressForm, XIndex, YIndex): the base and its addressing do it all.
class MatrixMixerNumberBox : public MatrixCell<NumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

//! The delay box on one matrix cell (AddressForm, XIndex, YIndex): the base and its addressing do it all.
class DelayMatrixSubTimeNumberBox : public MatrixCell<DelaySubTimeNumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

//! Behaves as its family: nothing of its own.
class HaloNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;
};

//! Behaves as its family, on a reverberation time: nothing of its own.
class RevTimeNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;
};

//! The number box hidden while its parameter holds a listed value (HideValue): the base and its addressing do it all.
class HideNumberBox : public Hide<NumberBox>
{
    Q_OBJECT
public:
    using Hide::Hide;
};

//! The number box on one matrix cell (AddressForm, XIndex, YIndex), for a pan: the base and its addressing do it all.
class BrioMatrixPan : public MatrixCell<NumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

//! The number box on one matrix cell (AddressForm, XIndex, YIndex), for a pan: the base and its addressing do it all.
class BrioMatrixPanNumberBox : public MatrixCell<NumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

//! Behaves as BandWidthNumberBox: nothing of its own.
class BrioBandWidthNumberBox : public BandWidthNumberBox
{
    Q_OBJECT
public:
    using BandWidthNumberBox::BandWidthNumberBox;
};

//! Behaves as MatrixMixerNumberBox: nothing of its own.
class BrioMatrixMixerNumberBox : public MatrixMixerNumberBox
{
    Q_OBJECT
public:
    using MatrixMixerNumberBox::MatrixMixerNumberBox;
};

//! Behaves as MatrixMixerNumberBox: nothing of its own.
class VelaMatrixMixerNumberBox : public MatrixMixerNumberBox
{
    Q_OBJECT
public:
    using MatrixMixerNumberBox::MatrixMixerNumberBox;
};

/*!
    A distance of a microphone beam. The parameter holds the distance in
    "Unit" ("Meter" or "Feet"); the box shows it with one decimal and the
    unit's sign, and Up, Down and typed values go to the database as texts
    with one decimal, kept inside the edges "Left" to "Right" when they are
    given. "Bottom" and "FlrToTalk" (floor to talker) are the remaining
    edges of the beam's area, kept for the host.
*/
class BeamNumberBox : public NumberBox
{
    Q_OBJECT
    Q_PROPERTY(QString unit READ unit)
    Q_PROPERTY(QString mode READ mode WRITE setMode)
    Q_PROPERTY(double left READ leftEdge WRITE setLeftEdge)
    Q_PROPERTY(double right READ rightEdge WRITE setRightEdge)
    Q_PROPERTY(double bottom READ bottomEdge WRITE setBottomEdge)
    Q_PROPERTY(double floorToTalker READ floorToTalker WRITE setFloorToTalker)
    Q_PROPERTY(double value READ value)
    CORVANE_TAG_TABLE

public:
    using NumberBox::NumberBox;

    QString unit() const { return m_unit; }
    QString mode() const { return m_mode; }
    double leftEdge() const { return m_left; }
    double rightEdge() const { return m_right; }
    double bottomEdge() const { return m_bottom; }
    double floorToTalker() const { return m_floorToTalker; }
    void setMode(const QString &mode) { updateMember(m_mode, mode); }
    void setLeftEdge(double v) { updateMember(m_left, v); }
    void setRightEdge(double v) { updateMember(m_right, v); }
    void setBottomEdge(double v) { updateMember(m_bottom, v); }
    void setFloorToTalker(double v) { updateMember(m_floorToTalker, v); }
    //! The distance in the unit shown.
    double value() const;
    QString shownText() const override;


protected:
    bool readUnit(const QDomElement &e);

protected:
    QString editorStartText() const override;
    void commitText(const QString &text) override;
    void stepValue(int step) override;
    //! The parameter's distance turned into the unit shown, and back.
    virtual double toShown(double stored) const { return stored; }
    virtual double toStored(double shown) const { return shown; }
    void sendValue(double shown);
    bool isFeet() const { return m_unit.compare(QLatin1String("Feet"), Qt::CaseInsensitive) == 0; }
    virtual bool showsFeet() const { return isFeet(); }

    QString m_unit = QStringLiteral("Meter");
    QString m_mode;
    double m_left = qQNaN();
    double m_right = qQNaN();
    double m_bottom = qQNaN();
    double m_floorToTalker = qQNaN();
};

/*!
    A beam distance whose parameter is always in metres and whose "Unit"
    chooses what is shown and typed; "Mode" "Meter" or "Feet" overrides
    "Unit" (the host's unit preference).
*/
class BeamConvertNumberBox : public BeamNumberBox
{
    Q_OBJECT
public:
    using BeamNumberBox::BeamNumberBox;
    static constexpr double metresPerFoot = 0.3048;

protected:
    double toShown(double stored) const override;
    double toStored(double shown) const override;
    bool showsFeet() const override;
};

/*!
    A direction: dragging past either end of the scale goes round to the
    other, as an angle does.
*/
class DirectionNumberBox : public NumberBox
{
    Q_OBJECT
public:
    using NumberBox::NumberBox;

protected:
    int boundDragPosition(int position) const override;
};

//! The number box on one matrix cell (AddressForm, XIndex, YIndex), for a pan: the base and its addressing do it all.
class VelaMatrixPan : public MatrixCell<NumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

//! The number box on one matrix cell (AddressForm, XIndex, YIndex), for a pan: the base and its addressing do it all.
class VelaMatrixPanNumberBox : public MatrixCell<NumberBox>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

/*!
    Shows a meter's value, read-only; "offline" while the meter delivers
    nothing.
*/
class MeterValueNumberBox : public NumberBox
{
    Q_OBJECT
    Q_PROPERTY(bool offline READ isOffline)
public:
    using NumberBox::NumberBox;
    bool isOffline() const;
    bool isEditable() const override { return false; }
    QString shownText() const override;
};

//! The number box that takes no focus and is disabled on listed values (RejectValue): the base and its addressing do it all.
class RejectFocusNumberBox : public RejectFocus<NumberBox>
{
    Q_OBJECT
public:
    using RejectFocus::RejectFocus;
};

#endif
