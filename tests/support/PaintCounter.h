#ifndef CORVANE_TESTS_PAINTCOUNTER_H
#define CORVANE_TESTS_PAINTCOUNTER_H

#include <QEvent>
#include <QObject>
#include <QWidget>

// Counts the paint events a widget receives, to check that a change repaints
// and that a non-change does not.
class PaintCounter : public QObject
{
public:
    PaintCounter() = default;
    explicit PaintCounter(QWidget *w) { w->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *e) override
    {
        if (e->type() == QEvent::Paint)
            ++paints;
        return false;
    }
    int paints = 0;
};

#endif
