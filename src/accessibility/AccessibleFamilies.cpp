#include "AccessibleFamilies.h"

#include "core/BaseWidget.h"
#include "core/ReadOut.h"

#include <QAccessible>

namespace {

bool boolProperty(const QObject *object, const char *name, bool fallback = false)
{
    const QVariant v = object->property(name);
    return v.isValid() ? v.toBool() : fallback;
}

//! The display text of address 0, or the shown text when the database gives none.
QString parameterText(const BaseWidget *control)
{
    const QString text = control->displayText(0);
    return text.isEmpty() ? control->positionText(0) : text;
}

} // namespace

bool AccessibleNumberBox::isReadOnly() const
{
    return !boolProperty(control(), "editable", true) || AccessibleControl::isReadOnly();
}

QString AccessibleDial::valueText() const
{
    return parameterText(control());
}

QString AccessibleFader::valueText() const
{
    return parameterText(control());
}

// Buttons whose click does something other than toggling or selecting a value.
static const char *const actionButtons[] = {
    "WindowButton", "ParentPanelButton", "ResetButton", "StepButton", "ReturnButton", "TapTempoButton",
    "TuningZoneMasterResetButton", "EquivalentButton", "MatchValueButton", "ChannelSelectLibraryRecallButton",
    "ChannelSelectLibraryStoreButton", "SpeakerLibraryRecallButton", "SpeakerLibraryStoreButton",
    "GroupEditorConfirmButton", "QuayPatchPasteButton", "TmpLinkRegisterButton",
};

AccessibleButton::AccessibleButton(BaseWidget *control) : AccessibleControl(control, roleOf(control)) { }

QAccessible::Role AccessibleButton::roleOf(const BaseWidget *control)
{
    if (control->inherits("SelectButton"))
        return QAccessible::RadioButton;
    for (const char *name : actionButtons) {
        if (control->inherits(name))
            return QAccessible::Button;
    }
    return QAccessible::CheckBox;
}

QString AccessibleButton::labelText() const
{
    QString label = AccessibleControl::labelText();
    if (label.isEmpty())
        label = control()->property("onText").toString().simplified();
    return label;
}

QString AccessibleButton::valueText() const
{
    return role() == QAccessible::Button ? QString() : control()->displayText(0);
}

QAccessible::State AccessibleButton::state() const
{
    QAccessible::State s = AccessibleControl::state();
    if (role() != QAccessible::Button) {
        s.checkable = true;
        s.checked = boolProperty(control(), "on");
    }
    if (boolProperty(control(), "pressed"))
        s.pressed = true;
    return s;
}

QString AccessibleComboBox::valueText() const
{
    return control()->property("currentText").toString();
}

QString AccessibleMeter::valueText() const
{
    if (control()->metaObject()->indexOfProperty("online") >= 0 && !boolProperty(control(), "online", true))
        return QStringLiteral("offline");
    return parameterText(control());
}

QAccessible::Role AccessibleText::role() const
{
    return isReadOnly() ? QAccessible::StaticText : QAccessible::EditableText;
}

bool AccessibleText::isReadOnly() const
{
    return !control()->inherits("ParameterText") || AccessibleControl::isReadOnly();
}

QString AccessibleSwitcher::valueText() const
{
    const QStringList labels = control()->property("items").toStringList();
    const int current = control()->property("currentIndex").toInt();
    return current >= 0 && current < labels.size() ? labels.at(current) : QString();
}

QAccessible::State AccessibleIndicator::state() const
{
    QAccessible::State s = AccessibleControl::state();
    s.checkable = true;
    s.checked = boolProperty(control(), "on");
    return s;
}

QString AccessibleIndicator::valueText() const
{
    return boolProperty(control(), "on") ? QStringLiteral("on") : QStringLiteral("off");
}

QString AccessibleGraph::valueText() const
{
    // A handle reads what its read-out shows (frequency and gain); graphs
    // and pads their first value.
    if (control()->inherits("GraphControlPoint") || control()->inherits("PadArea"))
        return ReadOut::textFor(control());
    if (control()->inherits("Graph") || control()->inherits("GraphScale") || control()->inherits("MeterScale")
        || control()->inherits("Image"))
        return QString();
    return parameterText(control());
}

namespace {

QAccessibleInterface *controlInterface(const QString &, QObject *object)
{
    auto *w = qobject_cast<BaseWidget *>(object);
    if (!w)
        return nullptr;
    if (w->inherits("NumberBox"))
        return new AccessibleNumberBox(w);
    if (w->inherits("Dial"))
        return new AccessibleDial(w);
    if (w->inherits("Fader"))
        return new AccessibleFader(w);
    if (w->inherits("Button"))
        return new AccessibleButton(w);
    if (w->inherits("ComboBox"))
        return new AccessibleComboBox(w);
    if (w->inherits("Meter"))
        return new AccessibleMeter(w);
    if (w->inherits("Switcher"))
        return new AccessibleSwitcher(w);
    if (w->inherits("Indicator"))
        return new AccessibleIndicator(w);
    if (w->inherits("MatrixGrid"))
        return new AccessibleGrid(w);
    // Containers before texts: a disable container is a parameter text underneath.
    if (w->inherits("PanelStacker") || w->inherits("PanelContainer") || w->inherits("DisablePanelContainer"))
        return new AccessiblePanel(w);
    if (w->inherits("AbstractValueText") || w->inherits("Text"))
        return new AccessibleText(w);
    return new AccessibleGraph(w);
}

} // namespace

namespace Accessibility {

void install()
{
    // Removed again when the library is unloaded, so that Qt never calls
    // into unmapped code.
    struct Registration
    {
        Registration() { QAccessible::installFactory(controlInterface); }
        ~Registration() { QAccessible::removeFactory(controlInterface); }
    };
    static Registration registration;
}

} // namespace Accessibility
