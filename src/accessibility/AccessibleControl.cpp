#include "AccessibleControl.h"

#include "AccessibleFamilies.h"

#include "core/BaseWidget.h"

#include <QApplication>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QVariant>

#include <cmath>

AccessibleControl::AccessibleControl(BaseWidget *control, QAccessible::Role role)
    : QAccessibleWidget(control, role)
{
}

BaseWidget *AccessibleControl::control() const
{
    return static_cast<BaseWidget *>(widget());
}

void *AccessibleControl::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface && hasValue())
        return static_cast<QAccessibleValueInterface *>(this);
    if (type == QAccessible::TextInterface && !valueText().isEmpty())
        return static_cast<QAccessibleTextInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

namespace {

QString stringProperty(const QObject *object, const char *name)
{
    if (object->metaObject()->indexOfProperty(name) < 0)
        return QString();
    return object->property(name).toString();
}

} // namespace

QString AccessibleControl::labelText() const
{
    QString label = stringProperty(control(), "text");
    if (label.isEmpty())
        label = stringProperty(control(), "Text");
    return label.simplified();
}

QString AccessibleControl::valueText() const
{
    if (control()->metaObject()->indexOfProperty("shownText") >= 0)
        return stringProperty(control(), "shownText");
    return control()->displayText(0);
}

bool AccessibleControl::isReadOnly() const
{
    const QVariant readOnly = control()->property("readOnly");
    return readOnly.isValid() && readOnly.toBool();
}

QString AccessibleControl::nameFromAddress(const QString &prmAddr)
{
    QString path = prmAddr;
    // "Meter:Ch1/Level": the category says nothing to a listener.
    const int colon = path.indexOf(QLatin1Char(':'));
    if (colon >= 0 && !path.left(colon).contains(QLatin1Char('/')))
        path = path.mid(colon + 1);
    static const QRegularExpression letterDigit(QStringLiteral("(?<=[A-Za-z])(?=[0-9])"));
    static const QRegularExpression separators(QStringLiteral("[/_]+"));
    path.replace(separators, QStringLiteral(" "));
    path.replace(letterDigit, QStringLiteral(" "));
    // Placeholders of unbound templates carry no meaning.
    path.remove(QRegularExpression(QStringLiteral("\\{[^}]*\\}")));
    return path.simplified();
}

QString AccessibleControl::text(QAccessible::Text t) const
{
    BaseWidget *w = control();
    switch (t) {
    case QAccessible::Name: {
        if (!w->accessibleName().isEmpty())
            return w->accessibleName();
        const QString label = labelText();
        if (!label.isEmpty())
            return label;
        if (!w->replaceParameterName().isEmpty())
            return w->replaceParameterName();
        for (int i = 0; i < w->addressCount(); ++i) {
            const QString name = nameFromAddress(w->addressAt(i).prmAddr());
            if (!name.isEmpty())
                return name;
        }
        return w->objectName();
    }
    case QAccessible::Description: {
        if (!w->accessibleDescription().isEmpty())
            return w->accessibleDescription();
        QStringList parts;
        for (int i = 0; i < w->addressCount(); ++i) {
            const QString address = w->addressAt(i).prmAddr();
            if (!address.isEmpty())
                parts.append(address);
        }
        return parts.join(QLatin1String(", "));
    }
    case QAccessible::Value:
        return valueText();
    default:
        return QAccessibleWidget::text(t);
    }
}

QAccessible::State AccessibleControl::state() const
{
    QAccessible::State s = QAccessibleWidget::state();
    if (isReadOnly())
        s.readOnly = true;
    return s;
}

QStringList AccessibleControl::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (presses() && control()->isEnabled() && !isReadOnly())
        names.prepend(pressAction());
    if (steps() && control()->isEnabled()) {
        names.append(increaseAction());
        names.append(decreaseAction());
    }
    return names;
}

void AccessibleControl::sendKey(int key) const
{
    BaseWidget *w = control();
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(w, &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(w, &release);
}

void AccessibleControl::doAction(const QString &actionName)
{
    if (!control()->isEnabled()) {
        QAccessibleWidget::doAction(actionName);
        return;
    }
    if (actionName == pressAction() && presses() && !isReadOnly())
        sendKey(Qt::Key_Space);
    else if (actionName == increaseAction() && steps())
        sendKey(Qt::Key_Up);
    else if (actionName == decreaseAction() && steps())
        sendKey(Qt::Key_Down);
    else
        QAccessibleWidget::doAction(actionName);
}

QStringList AccessibleControl::keyBindingsForAction(const QString &actionName) const
{
    if (actionName == pressAction())
        return {QStringLiteral("Space")};
    if (actionName == increaseAction())
        return {QStringLiteral("Up")};
    if (actionName == decreaseAction())
        return {QStringLiteral("Down")};
    return QAccessibleWidget::keyBindingsForAction(actionName);
}

QVariant AccessibleControl::currentValue() const
{
    return control()->position(0);
}

void AccessibleControl::setCurrentValue(const QVariant &value)
{
    bool ok = false;
    const double v = value.toDouble(&ok);
    if (!ok || !std::isfinite(v) || !valueSettable() || !control()->isEnabled())
        return;
    // A completed move, as at the release of a drag.
    control()->requestPosition(qBound(0.0, v, 1.0), 1.0, 0, 0);
}

void AccessibleControl::selection(int, int *startOffset, int *endOffset) const
{
    *startOffset = 0;
    *endOffset = 0;
}

QString AccessibleControl::text(int startOffset, int endOffset) const
{
    const QString all = valueText();
    const int start = qBound(0, startOffset, all.size());
    const int end = endOffset < 0 ? all.size() : qBound(start, endOffset, all.size());
    return all.mid(start, end - start);
}

QRect AccessibleControl::characterRect(int offset) const
{
    const QString all = valueText();
    if (offset < 0 || offset >= all.size())
        return QRect();
    const QFontMetrics metrics(control()->font());
    const QRect box = control()->rect();
    const int width = metrics.horizontalAdvance(all);
    const int left = box.center().x() - width / 2 + metrics.horizontalAdvance(all.left(offset));
    const QRect local(left, box.center().y() - metrics.height() / 2, metrics.horizontalAdvance(all.at(offset)),
                      metrics.height());
    return QRect(control()->mapToGlobal(local.topLeft()), local.size());
}

int AccessibleControl::offsetAtPoint(const QPoint &point) const
{
    const QString all = valueText();
    for (int i = 0; i < all.size(); ++i) {
        if (characterRect(i).contains(point))
            return i;
    }
    return -1;
}

QString AccessibleControl::attributes(int offset, int *startOffset, int *endOffset) const
{
    *startOffset = offset;
    *endOffset = offset;
    return QString();
}

namespace Accessibility {


void valueChanged(BaseWidget *control)
{
    // Interfaces are made only when assistive technology listens.
    if (!control || !QAccessible::isActive())
        return;
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(control);
    if (!iface)
        return;
    if (iface->role() == QAccessible::CheckBox || iface->role() == QAccessible::RadioButton
        || iface->role() == QAccessible::Indicator) {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(control, changed);
        QAccessible::updateAccessibility(&event);
    }
    if (QAccessibleValueInterface *value = iface->valueInterface()) {
        QAccessibleValueChangeEvent event(control, value->currentValue());
        QAccessible::updateAccessibility(&event);
    } else if (iface->textInterface()) {
        // Texts and combo boxes: readers announce the shown text as the value.
        QAccessibleEvent event(control, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace Accessibility
