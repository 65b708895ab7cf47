#ifndef CORVANE_CONTROLS_TEXT_TEXT_VARIANTS_H
#define CORVANE_CONTROLS_TEXT_TEXT_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/text/ValueTexts.h"

class OnlineText : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class ImpedanceText : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class ChannelSelectOnOffText : public ChannelSelect<ParameterText>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class ChannelSelectParameterText : public ChannelSelect<ParameterText>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class TitleText : public Text
{
    Q_OBJECT
public:
    using Text::Text;
};

class ChannelSelectThresholdVText : public ChannelSelect<ParameterText>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class InformationText : public Text
{
    Q_OBJECT
public:
    using Text::Text;
};

class BandSharingTextArea : public BandSharing<ParameterText>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

class SpeakerParameterText : public Speaker<ParameterText>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerOnOffText : public Speaker<ParameterText>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerThresholdVText : public Speaker<ParameterText>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class CardName : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class SlotPortNumber : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class ClockSource : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class CurrentPattern : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class FbsValueText : public ValueText
{
    Q_OBJECT
public:
    using ValueText::ValueText;
};

class MaxChText : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class RoomLabel : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class IPAddressTextBox : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class HexTextBox : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class AsciiTextBox : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class MatrixMixerParameterText : public MatrixCell<ParameterText>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

class BrioMatrixMixerParameterText : public MatrixMixerParameterText
{
    Q_OBJECT
public:
    using MatrixMixerParameterText::MatrixMixerParameterText;
};

class ValidateTextBox : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class RejectFocusParameterText : public RejectFocus<ParameterText>
{
    Q_OBJECT
public:
    using RejectFocus::RejectFocus;
};

#endif
