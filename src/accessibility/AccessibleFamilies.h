#ifndef CORVANE_ACCESSIBLEFAMILIES_H
#define CORVANE_ACCESSIBLEFAMILIES_H

#include "AccessibleControl.h"

// One interface per family base; variants share their base's.

class AccessibleNumberBox : public AccessibleControl
{
public:
    explicit AccessibleNumberBox(BaseWidget *control) : AccessibleControl(control, QAccessible::SpinBox) { }
    bool hasValue() const override { return true; }
    bool isReadOnly() const override;
};

class AccessibleDial : public AccessibleControl
{
public:
    explicit AccessibleDial(BaseWidget *control) : AccessibleControl(control, QAccessible::Dial) { }
    bool hasValue() const override { return true; }
    QString valueText() const override;
};

class AccessibleFader : public AccessibleControl
{
public:
    explicit AccessibleFader(BaseWidget *control) : AccessibleControl(control, QAccessible::Slider) { }
    bool hasValue() const override { return true; }
    QString valueText() const override;
};

//! Toggles are check boxes, select buttons radio buttons, the rest push buttons.
class AccessibleButton : public AccessibleControl
{
public:
    explicit AccessibleButton(BaseWidget *control);
    QString labelText() const override;
    QString valueText() const override;
    QAccessible::State state() const override;
    bool presses() const override { return true; }
    static QAccessible::Role roleOf(const BaseWidget *control);
};

class AccessibleComboBox : public AccessibleControl
{
public:
    explicit AccessibleComboBox(BaseWidget *control) : AccessibleControl(control, QAccessible::ComboBox) { }
    QString valueText() const override;
    bool steps() const override { return !isReadOnly(); }
};

class AccessibleMeter : public AccessibleControl
{
public:
    explicit AccessibleMeter(BaseWidget *control) : AccessibleControl(control, QAccessible::ProgressBar) { }
    bool hasValue() const override { return true; }
    bool isReadOnly() const override { return true; }
    QString valueText() const override;
};

//! Read-only texts are static text; parameter texts that open an editor are editable text.
class AccessibleText : public AccessibleControl
{
public:
    explicit AccessibleText(BaseWidget *control) : AccessibleControl(control, QAccessible::StaticText) { }
    QAccessible::Role role() const override;
    bool isReadOnly() const override;
};

class AccessibleSwitcher : public AccessibleControl
{
public:
    explicit AccessibleSwitcher(BaseWidget *control) : AccessibleControl(control, QAccessible::PageTabList) { }
    QString valueText() const override;
    bool steps() const override { return true; }
};

class AccessibleIndicator : public AccessibleControl
{
public:
    explicit AccessibleIndicator(BaseWidget *control) : AccessibleControl(control, QAccessible::Indicator) { }
    QAccessible::State state() const override;
    bool isReadOnly() const override { return true; }
    QString valueText() const override;
};

class AccessibleGrid : public AccessibleControl
{
public:
    explicit AccessibleGrid(BaseWidget *control) : AccessibleControl(control, QAccessible::Table) { }
    QString valueText() const override { return QString(); }
};

//! Graphs, their handles, pads, scales and images.
class AccessibleGraph : public AccessibleControl
{
public:
    explicit AccessibleGraph(BaseWidget *control) : AccessibleControl(control, QAccessible::Graphic) { }
    QString valueText() const override;
};

class AccessiblePanel : public AccessibleControl
{
public:
    explicit AccessiblePanel(BaseWidget *control) : AccessibleControl(control, QAccessible::Grouping) { }
    QString valueText() const override { return QString(); }
};

#endif
