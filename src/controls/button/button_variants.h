#ifndef CORVANE_CONTROLS_BUTTON_BUTTON_VARIANTS_H
#define CORVANE_CONTROLS_BUTTON_BUTTON_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/button/Button.h"

class SelectButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class SelectButtonWithMessage : public SelectButton
{
    Q_OBJECT
public:
    using SelectButton::SelectButton;
};

class DeviceStatusSelectButton : public SelectButton
{
    Q_OBJECT
public:
    using SelectButton::SelectButton;
};

class FlatButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class FbsButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class FbsFlatButton : public FlatButton
{
    Q_OBJECT
public:
    using FlatButton::FlatButton;
};

class ChannelSelectButton : public ChannelSelect<Button>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class ParentPanelButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class MatrixButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class CreateEditorButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class BrioCreateEditorButton : public CreateEditorButton
{
    Q_OBJECT
public:
    using CreateEditorButton::CreateEditorButton;
};

class BrioCreateEditorHideButton : public BrioCreateEditorButton
{
    Q_OBJECT
public:
    using BrioCreateEditorButton::BrioCreateEditorButton;
};

class ChannelSelectFlatButton : public ChannelSelect<FlatButton>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class ChannelSelectLibraryRecallButton : public ChannelSelect<Button>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class ChannelSelectLibraryRecallButtonFIR : public ChannelSelectLibraryRecallButton
{
    Q_OBJECT
public:
    using ChannelSelectLibraryRecallButton::ChannelSelectLibraryRecallButton;
};

class ChannelSelectLibraryStoreButton : public ChannelSelect<Button>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class ChannelSelectLibraryStoreButtonFIR : public ChannelSelectLibraryStoreButton
{
    Q_OBJECT
public:
    using ChannelSelectLibraryStoreButton::ChannelSelectLibraryStoreButton;
};

class ChannelSelectSelectButton : public ChannelSelect<SelectButton>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class EquivalentButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class FixedTriggerButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class ProtectButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class SpeakerChannelSelectButton : public Speaker<ChannelSelectButton>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerButton : public Speaker<Button>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class TuningZoneSoloButton : public TuningZone<Button>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class BandSharingButton : public BandSharing<Button>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

class BandSharingFlatButton : public BandSharing<FlatButton>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

class MatchValueButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class BandSharingMatchValueButton : public BandSharing<MatchValueButton>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

class BandSharingSelectButton : public BandSharing<SelectButton>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

class TuningZoneButton : public TuningZone<Button>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class TuningZoneMasterResetButton : public TuningZone<Button>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class StepButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class TuningZoneStepButton : public TuningZone<StepButton>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class SpeakerSelectButton : public Speaker<SelectButton>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerEquivalentButton : public Speaker<EquivalentButton>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerFlatButton : public Speaker<FlatButton>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerGuidSelectButton : public Speaker<SelectButton>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerLibraryRecallButton : public Speaker<Button>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerLibraryStoreButton : public Speaker<Button>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerPortNameButton : public Speaker<Button>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class GroupEditorConfirmButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class MatrixMixerToolButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class ChildWindowButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class QuayPatchPasteButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class FbsDetectControlButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class BlinkButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class ResetButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class ProbeOnButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class SendTestButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class MatrixMixerButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class BrioMatrixButton : public MatrixButton
{
    Q_OBJECT
public:
    using MatrixButton::MatrixButton;
};

class AecInputPortSelButton : public SelectButton
{
    Q_OBJECT
public:
    using SelectButton::SelectButton;
};

class AecOutputPortSelButton : public SelectButton
{
    Q_OBJECT
public:
    using SelectButton::SelectButton;
};

class FbsDetectButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class BrioMatrixMixerButton : public MatrixMixerButton
{
    Q_OBJECT
public:
    using MatrixMixerButton::MatrixMixerButton;
};

class AudioCodecButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class PairButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class SDPlayButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class SDListButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class VelaMatrixMixerButton : public MatrixMixerButton
{
    Q_OBJECT
public:
    using MatrixMixerButton::MatrixMixerButton;
};

class ChangeEnableButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class RejectFocusButton : public RejectFocus<Button>
{
    Q_OBJECT
public:
    using RejectFocus::RejectFocus;
};

class TapTempoButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class ReturnButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class TmpLinkRegisterButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

#endif
