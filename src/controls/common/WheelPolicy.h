#ifndef CORVANE_CONTROLS_COMMON_WHEELPOLICY_H
#define CORVANE_CONTROLS_COMMON_WHEELPOLICY_H

#include <QElapsedTimer>
#include <QObject>

class QWheelEvent;
class QWidget;

/*!
    \class WheelPolicy
    \brief Decides whether a value control takes a wheel event.

    A control that cannot act on the wheel (unbound, disabled, read only)
    never takes it. Inside a scroll area that can scroll, a control takes the
    wheel only when it has the keyboard focus or the pointer has rested on it
    for restMs milliseconds, so that turning the wheel while content scrolls
    under the pointer keeps scrolling. Everywhere else it takes it.

    The policy watches the control's enter and leave events itself.
*/
class WheelPolicy : public QObject
{
public:
    static constexpr int restMs = 300;

    explicit WheelPolicy(QWidget *control);

    //! Whether the control should handle \a event; \a operable says whether it can act at all.
    bool accepts(const QWheelEvent *event, bool operable) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool insideScrollingArea(bool vertical) const;

    QWidget *m_control;
    QElapsedTimer m_hover;
};

#endif
