#ifndef CORVANE_CONTROLS_COMBOBOX_COMBOBOX_VARIANTS_H
#define CORVANE_CONTROLS_COMBOBOX_COMBOBOX_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/combobox/ComboBox.h"

//! Shows the parameter's option read only: no arrow, no list, no focus.
class PrmViewComboBox : public ComboBox
{
    Q_OBJECT
public:
    PrmViewComboBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
};

//! Behaves as its family: nothing of its own.
class KeyInMultiComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

//! Behaves as its family, choosing a probe's monitor point: nothing of its own.
class ProbeMonitorComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

//! The combo box on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectComboBox : public ChannelSelect<ComboBox>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! The combo box for one tuning zone (Zone): the base and its addressing do it all.
class TuningZoneComboBox : public TuningZone<ComboBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The combo box for one tuning zone (Zone), choosing the zone's device: the base and its addressing do it all.
class TuningZoneDeviceComboBox : public TuningZone<ComboBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The combo box on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerComboBox : public Speaker<ComboBox>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! Behaves as its family, choosing an expansion card: nothing of its own.
class CardSelector : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

//! Behaves as its family, choosing a device address: nothing of its own.
class BrioAddressComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

//! Behaves as its family, choosing a device address: nothing of its own.
class VelaAddressComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

/*!
    Offers the texts of "ValueTextList" (child elements, or one text split at
    ",") for the positions 0 to 1 in even steps: the box shows the text of
    the parameter's step, and choosing text i sends the position i / (n - 1).
    Without a list it behaves as a plain combo box.
*/
class ValueTextComboBox : public ComboBox
{
    Q_OBJECT
    Q_PROPERTY(QStringList valueTextList READ valueTextList)
    CORVANE_TAG_TABLE

public:
    using ComboBox::ComboBox;

    QStringList valueTextList() const { return m_valueTexts; }

protected:
    virtual bool readValueTextList(const QDomElement &e);

    QVector<Option> parameterOptions() const override;
    int indexOfCurrent(const QVector<Option> &options) const override;
    bool sendOption(int index, const Option &option) override;

private:
    QStringList m_valueTexts;
};

//! Behaves as its family, choosing a card player's file: nothing of its own.
class SDPlayComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

//! Behaves as its family, choosing an alert: nothing of its own.
class AlertComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

//! The combo box that takes no focus and is disabled on listed values (RejectValue): the base and its addressing do it all.
class RejectFocusComboBox : public RejectFocus<ComboBox>
{
    Q_OBJECT
public:
    using RejectFocus::RejectFocus;
};

//! Behaves as its family, choosing a category: nothing of its own.
class CategoryComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

//! Behaves as its family, choosing the headphone source: nothing of its own.
class PhonesComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

//! Behaves as its family, choosing the active microphone: nothing of its own.
class EffectiveMicComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

#endif
