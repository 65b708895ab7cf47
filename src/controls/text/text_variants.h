#ifndef CORVANE_CONTROLS_TEXT_TEXT_VARIANTS_H
#define CORVANE_CONTROLS_TEXT_TEXT_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/text/HexTextBox.h"
#include "controls/text/ValueTexts.h"

//! Behaves as ParameterText, on an online state: nothing of its own.
class OnlineText : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

//! Behaves as ParameterText, on a measured impedance: nothing of its own.
class ImpedanceText : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

//! The on/off text on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectOnOffText : public ChannelSelect<ParameterText>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! The parameter text on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectParameterText : public ChannelSelect<ParameterText>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

/*!
    A panel title. With "WithButton" "true" a small button at its right end
    is drawn, and a click on it reports buttonClicked() (the host opens or
    folds the section the title heads).
*/
class TitleText : public Text
{
    Q_OBJECT
    Q_PROPERTY(bool withButton READ withButton WRITE setWithButton)
    CORVANE_TAG_TABLE

public:
    using Text::Text;
    bool withButton() const { return m_withButton; }
    void setWithButton(bool on) { updateMember(m_withButton, on); }
    //! Where the button is drawn; empty without one.
    QRect buttonRect() const;

signals:
    void buttonClicked();

protected:
    QRect textRect() const override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_withButton = false;
};

//! The threshold voltage text on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectThresholdVText : public ChannelSelect<ParameterText>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! Behaves as Text: nothing of its own.
class InformationText : public Text
{
    Q_OBJECT
public:
    using Text::Text;
};

//! The parameter text for one shared band (BandNum): the base and its addressing do it all.
class BandSharingTextArea : public BandSharing<ParameterText>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

//! The parameter text on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerParameterText : public Speaker<ParameterText>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The on/off text on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerOnOffText : public Speaker<ParameterText>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The threshold voltage text on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerThresholdVText : public Speaker<ParameterText>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! Behaves as ParameterText, on an expansion card's name: nothing of its own.
class CardName : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

//! Behaves as ParameterText, on a slot's port number: nothing of its own.
class SlotPortNumber : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

//! Behaves as ParameterText, on the clock source: nothing of its own.
class ClockSource : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

//! Behaves as ParameterText, on the current pattern: nothing of its own.
class CurrentPattern : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

//! Behaves as ValueText, on a feedback-suppressor value: nothing of its own.
class FbsValueText : public ValueText
{
    Q_OBJECT
public:
    using ValueText::ValueText;
};

//! Behaves as ParameterText, on a channel count: nothing of its own.
class MaxChText : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

//! Behaves as ParameterText, on a room's name: nothing of its own.
class RoomLabel : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

//! An editable IPv4 address: four fields 0 to 255 without leading zeros.
class IPAddressTextBox : public ParameterText
{
    Q_OBJECT
public:
    IPAddressTextBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    static const char *const pattern;

protected:
    void prepareEditor(LineEdit *editor) override;
    bool numericInput() const override { return true; }
};

//! An editable name in printable ASCII.
class AsciiTextBox : public ParameterText
{
    Q_OBJECT
public:
    AsciiTextBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

protected:
    void prepareEditor(LineEdit *editor) override;
    bool numericInput() const override { return true; }
};

//! The parameter text on one matrix cell (AddressForm, XIndex, YIndex): the base and its addressing do it all.
class MatrixMixerParameterText : public MatrixCell<ParameterText>
{
    Q_OBJECT
public:
    using MatrixCell::MatrixCell;
};

//! Behaves as MatrixMixerParameterText: nothing of its own.
class BrioMatrixMixerParameterText : public MatrixMixerParameterText
{
    Q_OBJECT
public:
    using MatrixMixerParameterText::MatrixMixerParameterText;
};

/*!
    An editable text checked as it is typed. "InputType" chooses the check:
    "Number:4" (type 1, one to four digits), "Number:32" (type 2, one to 32
    digits), "Alphabet+Number" (type 3), "IP+Alphabet+Number" (type 4,
    letters, digits and points); anything else (type 0) takes any text.
    The input method is closed for the number types.
*/
class ValidateTextBox : public ParameterText
{
    Q_OBJECT
    Q_PROPERTY(int inputType READ inputType)
    Q_PROPERTY(QString validatorPattern READ validatorPattern)
    CORVANE_TAG_TABLE

public:
    ValidateTextBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    int inputType() const { return m_type; }
    //! The pattern of the current type; empty for type 0.
    QString validatorPattern() const;
    static int typeOf(const QString &inputType);

protected:
    bool readInputType(const QDomElement &e);

    void prepareEditor(LineEdit *editor) override;
    bool numericInput() const override { return m_type == 1 || m_type == 2; }

private:
    void applyValidator();
    int m_type = 0;
};

//! The parameter text that takes no focus and is disabled on listed values (RejectValue): the base and its addressing do it all.
class RejectFocusParameterText : public RejectFocus<ParameterText>
{
    Q_OBJECT
public:
    using RejectFocus::RejectFocus;
};

#endif
