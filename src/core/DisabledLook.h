#ifndef CORVANE_CORE_DISABLEDLOOK_H
#define CORVANE_CORE_DISABLEDLOOK_H

#include "Colors.h"

#include <QColor>
#include <QPalette>
#include <QWidget>

/*
    How a disabled control looks, in one place. A control drawn in its own
    colours fades them to half their alpha; a control drawn from pictures
    paints the whole picture at half opacity; graphs and their scales grey
    their ink in the graphs' fixed disabled grey; lists and check boxes, whose
    text must stay readable, take the disabled text colour of the palette,
    so that they follow the host's theme.
*/
namespace DisabledLook {

//! Opacity of a picture-drawn control while disabled.
constexpr qreal opacity = 0.5;

//! \a color at half its alpha: a control's own colour while disabled.
inline QColor faded(QColor color)
{
    color.setAlpha(color.alpha() / 2);
    return color;
}

//! \a color as painted: itself while \a enabled, faded otherwise.
inline QColor faded(const QColor &color, bool enabled)
{
    return enabled ? color : faded(color);
}

//! \a color while \a enabled, otherwise the graphs' disabled grey.
inline QColor greyed(const QColor &color, bool enabled)
{
    return enabled ? color : Colors::color(Colors::disabledInk);
}

//! \a color while \a widget is enabled, otherwise the palette's disabled text colour.
inline QColor ink(const QWidget *widget, const QColor &color)
{
    return widget->isEnabled() ? color : widget->palette().color(QPalette::Disabled, QPalette::WindowText);
}

} // namespace DisabledLook

#endif
