#include "WheelPolicy.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWidget>

WheelPolicy::WheelPolicy(QWidget *control)
    : QObject(control)
    , m_control(control)
{
    control->installEventFilter(this);
}

bool WheelPolicy::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_control) {
        if (event->type() == QEvent::Enter)
            m_hover.start();
        else if (event->type() == QEvent::Leave)
            m_hover.invalidate();
    }
    return false;
}

bool WheelPolicy::accepts(const QWheelEvent *event, bool operable) const
{
    if (!operable)
        return false;
    if (m_control->hasFocus())
        return true;
    const QPoint delta = event->angleDelta();
    const bool vertical = qAbs(delta.y()) >= qAbs(delta.x());
    if (!insideScrollingArea(vertical))
        return true;
    return m_hover.isValid() && m_hover.elapsed() >= restMs;
}

bool WheelPolicy::insideScrollingArea(bool vertical) const
{
    for (QWidget *w = m_control->parentWidget(); w; w = w->parentWidget()) {
        if (auto *area = qobject_cast<QAbstractScrollArea *>(w)) {
            const QScrollBar *bar = vertical ? area->verticalScrollBar() : area->horizontalScrollBar();
            if (bar && bar->maximum() > bar->minimum())
                return true;
        }
        if (w->isWindow())
            break;
    }
    return false;
}
