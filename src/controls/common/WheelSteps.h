#ifndef CORVANE_CONTROLS_COMMON_WHEELSTEPS_H
#define CORVANE_CONTROLS_COMMON_WHEELSTEPS_H

#include <QWheelEvent>

/*!
    \class WheelSteps
    \brief Turns wheel rotation into whole notches.

    High-resolution wheels and touchpads deliver a notch in parts; the parts
    are summed and one step is reported per full notch, up positive. One
    event reports at most maxStepsPerEvent notches either way.
*/
class WheelSteps
{
public:
    static constexpr int maxStepsPerEvent = 64;

    //! Adds \a event's vertical rotation and returns the whole notches it completes (negative downward).
    int take(const QWheelEvent *event) { return take(event->angleDelta().y()); }
    int take(int angleDelta)
    {
        // Summed in 64 bits; the remainder always stays below one notch.
        const qint64 sum = qint64(m_remainder) + angleDelta;
        const qint64 steps = sum / QWheelEvent::DefaultDeltasPerStep;
        m_remainder = int(sum - steps * QWheelEvent::DefaultDeltasPerStep);
        // No hand turns a wheel further than this between two events; more
        // is a forged event, and each notch is a request.
        return int(qBound<qint64>(-maxStepsPerEvent, steps, maxStepsPerEvent));
    }
    void reset() { m_remainder = 0; }

    //! Calls \a step(1) or \a step(-1) once per notch \a event completes.
    template <class F>
    void deliver(const QWheelEvent *event, F step)
    {
        const int steps = take(event);
        for (int i = 0; i < steps; ++i)
            step(1);
        for (int i = 0; i > steps; --i)
            step(-1);
    }

private:
    int m_remainder = 0;
};

#endif
