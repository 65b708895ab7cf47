#ifndef CORVANE_CONTROLS_COMBOBOX_COMBOBOX_VARIANTS_H
#define CORVANE_CONTROLS_COMBOBOX_COMBOBOX_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/combobox/ComboBox.h"

class PrmViewComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
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

class ValueTextComboBox : public ComboBox
{
    Q_OBJECT
public:
    using ComboBox::ComboBox;
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
