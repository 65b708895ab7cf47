#ifndef CORVANE_PANELS_DISABLEPANELCONTAINER_H
#define CORVANE_PANELS_DISABLEPANELCONTAINER_H

#include "controls/text/ValueTexts.h"
#include "core/AddressingMixins.h"

#include <QPointer>

/*!
    \class DisablePanelContainer
    \brief A transparent overlay that covers and blocks a region of the
    panel while its parameter holds one of the "DisableValue" values.

    "DisableValue" lists the values, separated by ","; its "range" attribute
    gives the steps the position is read on. With "StrValFlg" "true" the
    display text is compared instead. "Text" is drawn in the middle of the
    veil; "BackgroundColor" and "TextColor" change the veil and the text.

    While on, the container is shown above its siblings and disabled: mouse
    input goes no further than the panel behind it, and the controls whose
    centre lies under it can neither keep nor take the keyboard focus, so
    keys cannot reach them either. Otherwise it is hidden.
*/
class DisablePanelContainer : public ParameterText
{
    Q_OBJECT
    Q_PROPERTY(bool disabling READ isDisabling NOTIFY disablingChanged)
    Q_PROPERTY(QString disableValues READ disableValuesText)
    Q_PROPERTY(int stepCount READ stepCount)
    Q_PROPERTY(bool stringFlag READ stringFlag)
    Q_PROPERTY(QString text READ text WRITE setText)
    CORVANE_TAG_TABLE

public:
    DisablePanelContainer(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~DisablePanelContainer() override;

    bool configure(const QDomNode &element) override;

    bool isDisabling() const { return m_disabling; }
    QStringList disableValues() const { return m_gate.values(); }
    QString disableValuesText() const { return m_gate.values().join(QLatin1Char(',')); }
    int stepCount() const { return m_gate.steps(); }
    bool stringFlag() const { return m_gate.byString(); }
    QString text() const { return m_text; }
    void setText(const QString &text);
    //! The veil drawn when no "BackgroundColor" is given.
    static const QColor defaultVeil;

    //! Whether \a w (or the sibling it lies in) sits under the container.
    bool covers(const QWidget *w) const;

    //! A given colour is used as it is, alpha 0 (a transparent blocker) included.

signals:
    void disablingChanged(bool on);

protected:
    virtual bool readDisableValue(const QDomElement &e);
    virtual bool readStrValFlg(const QDomElement &e);
    bool readBackgroundColor(const QDomElement &e) override;

    //! Whether the tested parameters hold a disabling value now.
    virtual bool matches() const { return hasValue(0) && m_gate.matches(*this, 0); }
    //! Whether the address at \a index has received a value; nothing is blocked on a value not known yet.
    bool hasValue(int index) const { return !positionText(index).isEmpty() || !displayText(index).isEmpty(); }
    //! Whether a change of the address at \a index can change the state.
    virtual bool isTested(int index) const { return index == 0; }
    void updateState();

    void ownValueChanged(int index) override;
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    Addressing::ValueGate m_gate;

private:
    void setDisabling(bool on);
    void moveFocusOut(QWidget *from, bool forward);

    QString m_text;
    bool m_disabling = false;
    bool m_configuring = false;
    bool m_backgroundGiven = false;
};

/*!
    \class DisablePanelMulti
    \brief A disable container tested against every address it is bound to.

    Each "DisableValue" element belongs to the address of the same index;
    the last list serves the addresses beyond it. The region is blocked
    while any address holds a value of its list.
*/
class DisablePanelMulti : public DisablePanelContainer
{
    Q_OBJECT
    Q_PROPERTY(QString disableValueLists READ disableValueLists)

public:
    DisablePanelMulti(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    bool configure(const QDomNode &element) override;
    //! The lists, one per address, joined by ";".
    QString disableValueLists() const;

protected:
    bool readDisableValue(const QDomElement &e) override;

    bool matches() const override;
    bool isTested(int index) const override;

private:
    QVector<Addressing::ValueGate> m_gates;
};

#endif
