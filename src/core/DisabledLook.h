#ifndef CORVANE_CORE_DISABLEDLOOK_H
#define CORVANE_CORE_DISABLEDLOOK_H

#include "Colors.h"

#include <QColor>

/*
    How a disabled control looks, in one place. A control drawn in its own
    colours fades them to half their alpha; a control drawn from pictures
    paints the whole picture at half opacity; graphs, scales and lists whose
    ink must stay readable over other content grey it instead.
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

//! \a color while \a enabled, otherwise the disabled grey ink.
inline QColor greyed(const QColor &color, bool enabled)
{
    return enabled ? color : Colors::color(Colors::disabledInk);
}

} // namespace DisabledLook

#endif
