#ifndef CORVANE_ACCESSIBLECONTROL_H
#define CORVANE_ACCESSIBLECONTROL_H

#include <QAccessibleWidget>

class BaseWidget;

/*!
    \class AccessibleControl
    \brief What assistive technology sees of a control.

    One subclass per family base gives the role and what the value is; this
    class answers the common part: the name (the control's own text, else a
    name made from its parameter address, "Ch1/Fader" reading "Ch 1 Fader"),
    the description (the parameter address), the states, the value as the
    database formats it ("-6.0 dB") through the text interface and
    text(QAccessible::Value), and the position 0 to 1 through the value
    interface.

    Actions go through the control's own key handling (Up and Down step,
    Space presses), so that a screen reader sends exactly the requests the
    keyboard sends.
*/
class AccessibleControl : public QAccessibleWidget, public QAccessibleValueInterface, public QAccessibleTextInterface
{
public:
    AccessibleControl(BaseWidget *control, QAccessible::Role role);

    void *interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text t) const override;
    QAccessible::State state() const override;

    // Actions
    QStringList actionNames() const override;
    void doAction(const QString &actionName) override;
    QStringList keyBindingsForAction(const QString &actionName) const override;

    // QAccessibleValueInterface: the normalised position.
    QVariant currentValue() const override;
    void setCurrentValue(const QVariant &value) override;
    QVariant maximumValue() const override { return 1.0; }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return 1.0 / 300.0; }

    // QAccessibleTextInterface: the shown text, read only.
    void selection(int selectionIndex, int *startOffset, int *endOffset) const override;
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override { }
    void removeSelection(int) override { }
    void setSelection(int, int, int) override { }
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override { }
    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override { return valueText().size(); }
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint &point) const override;
    void scrollToSubstring(int, int) override { }
    QString attributes(int offset, int *startOffset, int *endOffset) const override;

    BaseWidget *control() const;

    //! The text the control shows for its value, as the database formats it; empty when it shows none.
    virtual QString valueText() const;
    //! Whether the control has a position that the value interface reports.
    virtual bool hasValue() const { return false; }
    //! Whether the value interface may change the position (a position request at release).
    virtual bool valueSettable() const { return hasValue() && !isReadOnly(); }
    //! The control's own label ("Text" and the like); empty when it has none.
    virtual QString labelText() const;
    virtual bool isReadOnly() const;
    //! Whether Up and Down step the value.
    virtual bool steps() const { return hasValue() && !isReadOnly(); }
    //! Whether the control is pressed by Space like a button.
    virtual bool presses() const { return false; }

    //! A readable name made from a parameter address: the category prefix
    //! dropped, path parts joined by blanks, digits set apart from letters.
    static QString nameFromAddress(const QString &prmAddr);

protected:
    void sendKey(int key) const;
};

namespace Accessibility {
//! Installs the factory that gives every control its AccessibleControl; safe to call more than once.
void install();
//! Tells assistive technology that a value \a control shows changed.
void valueChanged(BaseWidget *control);
} // namespace Accessibility

#endif
