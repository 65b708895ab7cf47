#ifndef CORVANE_FOCUSRING_H
#define CORVANE_FOCUSRING_H

class QPainter;
class QWidget;

/*!
    The focus ring of every control, drawn by BaseWidget::paintBase.

    The ring shows while a control holds the focus it got from the keyboard
    (Tab, Backtab, a shortcut); a click shows where the focus is anyway. It
    is a dotted frame inset by 2 design pixels times the zoom, in the
    control's text colour at partial opacity (light grey for controls
    without one), so it shows on the dark panels and scales with them.
*/
namespace FocusRing {

//! Starts watching focus changes; safe to call more than once.
void install();
//! Whether \a widget holds the focus and got it from the keyboard.
bool shown(const QWidget *widget);
//! Draws the ring of \a widget when shown(); leaves the painter as it was.
void paint(QPainter &painter, const QWidget *widget);

} // namespace FocusRing

#endif
