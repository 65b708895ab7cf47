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

class KeyInMultiComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

class ProbeMonitorComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

class ChannelSelectComboBox : public ChannelSelect<ComboBox>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class TuningZoneComboBox : public TuningZone<ComboBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class TuningZoneDeviceComboBox : public TuningZone<ComboBox>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class SpeakerComboBox : public Speaker<ComboBox>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class CardSelector : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

class BrioAddressComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

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
    virtual bool readValueTextList(const QDomElement &e);

protected:
    QVector<Option> parameterOptions() const override;
    int indexOfCurrent(const QVector<Option> &options) const override;
    bool sendOption(int index, const Option &option) override;

private:
    QStringList m_valueTexts;
};

class SDPlayComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

class AlertComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

class RejectFocusComboBox : public RejectFocus<ComboBox>
{
    Q_OBJECT
public:
    using RejectFocus::RejectFocus;
};

class CategoryComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

class PhonesComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

class EffectiveMicComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
};

#endif
