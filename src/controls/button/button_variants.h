#ifndef CORVANE_CONTROLS_BUTTON_BUTTON_VARIANTS_H
#define CORVANE_CONTROLS_BUTTON_BUTTON_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/button/Button.h"
#include "controls/button/WindowButton.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QSet>
#include <QTimer>

/*!
    Sets its parameter to one value of a stepped scale: "Value" gives the
    value and the number of steps, the click sends value / steps. With
    "CanOff" a click on the selected button sends 0 instead, so the button
    toggles between its value and 0. Lit while the parameter's step is the
    value.
*/
class SelectButton : public Button
{
    Q_OBJECT
    Q_PROPERTY(int selectValue READ selectValue WRITE setSelectValue)
    Q_PROPERTY(int stepCount READ stepCount WRITE setStepCount)
    Q_PROPERTY(bool canOff READ canOff WRITE setCanOff)
    CORVANE_TAG_TABLE

public:
    using Button::Button;

    int selectValue() const { return m_selectValue; }
    void setSelectValue(int value);
    int stepCount() const { return m_stepCount; }
    void setStepCount(int steps);
    bool canOff() const { return m_canOff; }
    void setCanOff(bool canOff) { m_canOff = canOff; }

    bool isOn() const override;
    void clickAction() override;

    /*!
        The text is the value, a whole number, or "editor_info" for the
        number the host's editor information carries under that key;
        attribute "offset" is added to it and "steps" gives the step count.
        An element with attribute "hint" counts only when it equals the
        host's "editor_hint", and then wins over elements without one.
    */

protected:
    virtual bool readValue(const QDomElement &e);

    QString fallbackText() const override { return QString::number(m_selectValue); }

private:
    qint16 m_selectValue = 0;
    qint16 m_stepCount = 1;
    bool m_canOff = false;
    bool m_valueFromHint = false;
};

//! Behaves as SelectButton: nothing of its own.
class SelectButtonWithMessage : public SelectButton
{
    Q_OBJECT
public:
    using SelectButton::SelectButton;
};

//! Behaves as SelectButton, on a device-state parameter: nothing of its own.
class DeviceStatusSelectButton : public SelectButton
{
    Q_OBJECT
public:
    using SelectButton::SelectButton;
};

//! A button without a face while off: only its text, icon or image.
class FlatButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;

protected:
    bool isFlat() const override { return true; }
};

//! Behaves as its family, on a feedback-suppressor switch: nothing of its own.
class FbsButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! Behaves as FlatButton, on a feedback-suppressor switch: nothing of its own.
class FbsFlatButton : public FlatButton
{
    Q_OBJECT
public:
    using FlatButton::FlatButton;
};

//! The button on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectButton : public ChannelSelect<Button>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

/*!
    Closes the editor window it sits in (one a window button opened), going
    back to the panel behind it; lit never. Elsewhere a click does nothing.
*/
class ParentPanelButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
    bool isOn() const override { return false; }
    void clickAction() override;
};

/*!
    The on/off switch of one matrix cell: "AddressForm" names the cell's
    parameter with {x} and {y}, "XIndex" and "YIndex" give them, and the
    button toggles that crosspoint as Button toggles its parameter.
*/
class MatrixButton : public MatrixCell<Button>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

//! Opens the editor "EditorID" in a window of its own; WindowButton's behaviour unchanged.
class CreateEditorButton : public WindowButton
{
    Q_OBJECT
public:
    using WindowButton::WindowButton;
};

//! The Brio panels' name for the same editor button.
class BrioCreateEditorButton : public CreateEditorButton
{
    Q_OBJECT
public:
    using CreateEditorButton::CreateEditorButton;
};

//! Hides (closes) the editor "EditorID" while it is open; lit while it is, never opens it.
class BrioCreateEditorHideButton : public BrioCreateEditorButton
{
    Q_OBJECT
public:
    using BrioCreateEditorButton::BrioCreateEditorButton;
    void clickAction() override { closeWindow(); }
};

//! The flat button on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectFlatButton : public ChannelSelect<FlatButton>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

/*!
    Store or recall of a library file: the dialog filters on the extension
    the device model's descriptor gives, and the chosen path is sent as text.
*/
namespace Library {
enum class Action { Recall, Store };
//! The library-file extension of the control's device model, from its descriptor.
QString extension(const BaseWidget &control);
//! "Library Files (*.ext);;All Files (*)" (FIR library files for \a fir), or all files without an extension.
QString filter(const QString &extension, bool fir);
QString caption(Action action);
} // namespace Library

template <class Base, Library::Action action>
class LibraryFile : public Base
{
public:
    using Base::Base;

    QString libraryExtension() const { return Library::extension(*this); }
    QString fileFilter() const { return Library::filter(libraryExtension(), isFir()); }
    bool isOn() const override { return false; }
    void clickAction() override
    {
        this->sendChosenFile(action == Library::Action::Store ? Button::FileDialog::Save : Button::FileDialog::Open,
                             Library::caption(action), fileFilter(), libraryExtension());
    }

protected:
    virtual bool isFir() const { return false; }
};

//! Recalls a library file chosen in an open dialog into the channel.
class ChannelSelectLibraryRecallButton : public LibraryFile<ChannelSelect<Button>, Library::Action::Recall>
{
    Q_OBJECT
    Q_PROPERTY(QString libraryExtension READ libraryExtension)
    Q_PROPERTY(QString fileFilter READ fileFilter)

public:
    using LibraryFile::LibraryFile;
};

class ChannelSelectLibraryRecallButtonFIR : public ChannelSelectLibraryRecallButton
{
    Q_OBJECT
public:
    using ChannelSelectLibraryRecallButton::ChannelSelectLibraryRecallButton;

protected:
    bool isFir() const override { return true; }
};

//! Stores the channel's settings in a library file chosen in a save dialog.
class ChannelSelectLibraryStoreButton : public LibraryFile<ChannelSelect<Button>, Library::Action::Store>
{
    Q_OBJECT
    Q_PROPERTY(QString libraryExtension READ libraryExtension)
    Q_PROPERTY(QString fileFilter READ fileFilter)

public:
    using LibraryFile::LibraryFile;
};

class ChannelSelectLibraryStoreButtonFIR : public ChannelSelectLibraryStoreButton
{
    Q_OBJECT
public:
    using ChannelSelectLibraryStoreButton::ChannelSelectLibraryStoreButton;

protected:
    bool isFir() const override { return true; }
};

//! The select button on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectSelectButton : public ChannelSelect<SelectButton>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

/*!
    One switch for several on/off parameters (its addresses): lit when all
    of them are on, marked when only some are. A click switches them all
    off when all are on, otherwise all on.
*/
class EquivalentButton : public Button
{
    Q_OBJECT
    Q_PROPERTY(bool mixed READ isMixed)

public:
    using Button::Button;

    bool isOn() const override;
    //! Some, not all, of the parameters are on.
    bool isMixed() const;
    void clickAction() override;

protected:
    void paintDecoration(QPainter &painter, int state) override;

private:
    int onCount(int *bound) const;
};

//! Behaves as its family, on a trigger parameter: nothing of its own.
class FixedTriggerButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! Behaves as its family, on a protection switch: nothing of its own.
class ProtectButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! The channel-select button on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerChannelSelectButton : public Speaker<ChannelSelectButton>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The button on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerButton : public Speaker<Button>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The solo switch of a zone: the button for one tuning zone (Zone): the base and its addressing do it all.
class TuningZoneSoloButton : public TuningZone<Button>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The button for one shared band (BandNum): the base and its addressing do it all.
class BandSharingButton : public BandSharing<Button>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

//! The flat button for one shared band (BandNum): the base and its addressing do it all.
class BandSharingFlatButton : public BandSharing<FlatButton>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

/*!
    Sets its parameter to a text ("MatchValue", sent as typed) and is lit
    while the parameter's display text is exactly that text. Without a
    "MatchValue" it toggles like Button.
*/
class MatchValueButton : public Button
{
    Q_OBJECT
    Q_PROPERTY(QString matchValue READ matchValue WRITE setMatchValue)
    CORVANE_TAG_TABLE

public:
    using Button::Button;

    QString matchValue() const { return m_matchValue; }
    void setMatchValue(const QString &value);
    bool isOn() const override;
    void clickAction() override;

private:
    QString m_matchValue;
};

//! The match-value button for one shared band (BandNum): the base and its addressing do it all.
class BandSharingMatchValueButton : public BandSharing<MatchValueButton>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

//! The select button for one shared band (BandNum): the base and its addressing do it all.
class BandSharingSelectButton : public BandSharing<SelectButton>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

//! The button for one tuning zone (Zone): the base and its addressing do it all.
class TuningZoneButton : public TuningZone<Button>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! Sets the zone's parameters back to their defaults.
class TuningZoneMasterResetButton : public TuningZone<Button>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;

    bool isOn() const override { return false; }
    void clickAction() override;
};

//! Steps its parameter: "Step" gives the step ("1", "+1", "-1", ...; default 1).
class StepButton : public Button
{
    Q_OBJECT
    Q_PROPERTY(int step READ step WRITE setStep)
    CORVANE_TAG_TABLE

public:
    using Button::Button;

    int step() const { return m_step; }
    void setStep(int step);
    bool isOn() const override { return false; }
    void clickAction() override;

protected:
    virtual bool readStep(const QDomElement &e);

    QString fallbackText() const override;

private:
    int m_step = 1;
};

//! The step button for one tuning zone (Zone): the base and its addressing do it all.
class TuningZoneStepButton : public TuningZone<StepButton>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The select button on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerSelectButton : public Speaker<SelectButton>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The equivalent button on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerEquivalentButton : public Speaker<EquivalentButton>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The flat button on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerFlatButton : public Speaker<FlatButton>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The select button on the connected loudspeaker's identity parameter: the base and its addressing do it all.
class SpeakerGuidSelectButton : public Speaker<SelectButton>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! Recalls a library file chosen in an open dialog into the channel.
class SpeakerLibraryRecallButton : public LibraryFile<Speaker<Button>, Library::Action::Recall>
{
    Q_OBJECT
    Q_PROPERTY(QString libraryExtension READ libraryExtension)
    Q_PROPERTY(QString fileFilter READ fileFilter)

public:
    using LibraryFile::LibraryFile;
};

//! Stores the channel's settings in a library file chosen in a save dialog.
class SpeakerLibraryStoreButton : public LibraryFile<Speaker<Button>, Library::Action::Store>
{
    Q_OBJECT
    Q_PROPERTY(QString libraryExtension READ libraryExtension)
    Q_PROPERTY(QString fileFilter READ fileFilter)

public:
    using LibraryFile::LibraryFile;
};

//! The button on the name of the loudspeaker port: the base and its addressing do it all.
class SpeakerPortNameButton : public Speaker<Button>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! Behaves as its family: nothing of its own.
class GroupEditorConfirmButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! Behaves as its family, on a matrix mixer's tool switch: nothing of its own.
class MatrixMixerToolButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! Opens a child window: a tool window kept above the panel's window, closed with it.
class ChildWindowButton : public WindowButton
{
    Q_OBJECT
public:
    using WindowButton::WindowButton;

protected:
    Qt::WindowFlags editorWindowFlags() const override { return Qt::Tool; }
};

//! Behaves as its family: nothing of its own.
class QuayPatchPasteButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! Behaves as its family, on the feedback detection switch: nothing of its own.
class FbsDetectControlButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

class BlinkButton;

/*!
    The one blink clock of all blink buttons, so that they blink together.
    Runs only while some button blinks.
*/
class BlinkController : public QObject
{
    Q_OBJECT
public:
    static BlinkController &instance();
    static constexpr int interval = 500;

    //! Whether blinking buttons show their on state now.
    bool litPhase() const { return m_lit; }
    QTimer *timer() { return &m_timer; }
    int blinkingCount() const { return m_buttons.size(); }

    void add(BlinkButton *button);
    void remove(BlinkButton *button);

public slots:
    void toggle();

private:
    explicit BlinkController(QObject *parent);

    QTimer m_timer;
    QSet<BlinkButton *> m_buttons;
    bool m_lit = true;
};

//! A button that blinks while on, with every other blink button.
class BlinkButton : public Button
{
    Q_OBJECT
    Q_PROPERTY(bool blinking READ isBlinking)

public:
    BlinkButton(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~BlinkButton() override;

    bool isBlinking() const { return m_blinking; }

protected:
    int paintedState() const override;
    void ownValueChanged(int index) override;
    void addressRebound(int index) override;

private:
    void updateBlinking();

    bool m_blinking = false;
};

//! Sets its parameters back to their defaults (request 3 on every address).
class ResetButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;

    bool isOn() const override { return false; }
    void clickAction() override;
};

//! Behaves as its family, on a probe switch: nothing of its own.
class ProbeOnButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! Behaves as its family, on a test-signal trigger: nothing of its own.
class SendTestButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! A matrix mixer's crosspoint switch: MatrixButton's cell addressing unchanged.
class MatrixMixerButton : public MatrixButton
{
    Q_OBJECT
public:
    using MatrixButton::MatrixButton;
};

//! The Brio panels' name for the same cell switch.
class BrioMatrixButton : public MatrixButton
{
    Q_OBJECT
public:
    using MatrixButton::MatrixButton;
};

//! Behaves as SelectButton, choosing an echo canceller's input port: nothing of its own.
class AecInputPortSelButton : public SelectButton
{
    Q_OBJECT
public:
    using SelectButton::SelectButton;
};

//! Behaves as SelectButton, choosing an echo canceller's output port: nothing of its own.
class AecOutputPortSelButton : public SelectButton
{
    Q_OBJECT
public:
    using SelectButton::SelectButton;
};

//! Behaves as its family, on a feedback detection state: nothing of its own.
class FbsDetectButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! The Brio panels' name for the same crosspoint switch.
class BrioMatrixMixerButton : public MatrixMixerButton
{
    Q_OBJECT
public:
    using MatrixMixerButton::MatrixMixerButton;
};

//! Behaves as its family, on an audio codec switch: nothing of its own.
class AudioCodecButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! Behaves as its family, on a pairing trigger: nothing of its own.
class PairButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! Behaves as its family, on a card player's play switch: nothing of its own.
class SDPlayButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! Behaves as its family, on a card player's list switch: nothing of its own.
class SDListButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

//! The Vela panels' name for the same crosspoint switch.
class VelaMatrixMixerButton : public MatrixMixerButton
{
    Q_OBJECT
public:
    using MatrixMixerButton::MatrixMixerButton;
};

/*!
    A switch that enables the controls named by its "Target" tags (each the
    name of a control on the same panel) while its parameter is on, and
    disables them while it is off. Targets are left alone while the
    parameter has no value.
*/
class ChangeEnableButton : public Button
{
    Q_OBJECT
    Q_PROPERTY(QString targets READ targetText)
    CORVANE_TAG_TABLE

public:
    using Button::Button;

    QStringList targets() const { return m_targets; }
    QString targetText() const { return m_targets.join(QLatin1Char(',')); }
    //! Applies the parameter's state to the targets now.
    void applyToTargets();

protected:
    virtual bool readTarget(const QDomElement &e);

    void ownValueChanged(int index) override;
    void showEvent(QShowEvent *event) override;

private:
    QStringList m_targets;
};

//! The button that takes no focus and is disabled on listed values (RejectValue): the base and its addressing do it all.
class RejectFocusButton : public RejectFocus<Button>
{
    Q_OBJECT
public:
    using RejectFocus::RejectFocus;
};

/*!
    Measures a tempo from taps (presses, or Return). Every tap after the
    first sends the tempo of the last four intervals as a text ("120.0",
    kind 1). A pause of 3.2 s starts a new measurement.
*/
class TapTempoButton : public Button
{
    Q_OBJECT
    Q_PROPERTY(int tapCount READ tapCount)
    Q_PROPERTY(int bpm READ bpm)
    Q_PROPERTY(QString intervals READ intervalText)

public:
    TapTempoButton(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    static constexpr int resetInterval = 3200;
    static constexpr int keptIntervals = 4;

    int tapCount() const { return m_tapCount; }
    //! The tempo last sent, 0 before the first.
    int bpm() const { return m_bpm; }
    QList<int> intervalList() const { return m_intervals; }
    QString intervalText() const;
    QTimer *resetTimer() { return &m_timer; }

    //! Lit while a measurement runs.
    bool isOn() const override { return m_tapCount > 0; }
    //! Taps act at the press; the release does nothing more.
    void clickAction() override { }

    //! The text sent for \a intervals: whole beats per minute of their mean, "%.1f".
    static QString tempoText(const QList<int> &intervals, int *bpm = nullptr);

public slots:
    void tap();
    //! Forgets the taps; the timer calls it after a pause.
    void resetTaps();

protected:
    //! Milliseconds on a monotonic clock.
    virtual qint64 now() const;

    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    QElapsedTimer m_clock;
    qint64 m_lastTap = 0;
    QTimer m_timer;
    QList<int> m_intervals;
    int m_tapCount = 0;
    int m_bpm = 0;
};

/*!
    Hands "ReturnValue" (default 1) to the host's current target, and
    closes the dialog it sits in with that result.
*/
class ReturnButton : public Button
{
    Q_OBJECT
    Q_PROPERTY(int returnValue READ returnValue WRITE setReturnValue)
    CORVANE_TAG_TABLE

public:
    using Button::Button;

    int returnValue() const { return m_returnValue; }
    void setReturnValue(int value) { m_returnValue = value; }
    bool isOn() const override { return false; }
    void clickAction() override;

private:
    int m_returnValue = 1;
};

//! Behaves as its family, on a temporary link switch: nothing of its own.
class TmpLinkRegisterButton : public Button
{
    Q_OBJECT
public:
    using Button::Button;
};

#endif
