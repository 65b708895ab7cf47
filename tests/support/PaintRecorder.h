#ifndef CORVANE_TESTS_PAINTRECORDER_H
#define CORVANE_TESTS_PAINTRECORDER_H

#include <QEvent>
#include <QList>
#include <QObject>
#include <QPaintEvent>
#include <QRegion>
#include <QWidget>
#include <QtTest>

/*
    Records the paint events a widget receives and the region of each, to
    check that a change repaints (and what) and that a non-change does not.
*/
class PaintRecorder : public QObject
{
public:
    PaintRecorder() = default;
    explicit PaintRecorder(QWidget *w) { w->installEventFilter(this); }

    //! Waits until \a w is exposed and its first paints are done, then records from zero.
    bool watchSettled(QWidget *w)
    {
        const bool exposed = QTest::qWaitForWindowExposed(w);
        QTest::qWait(20);
        w->installEventFilter(this);
        clear();
        return exposed;
    }

    //! Lets pending updates be painted; the paints since the last clear().
    int paintsNow()
    {
        QTest::qWait(30);
        return paints;
    }

    bool eventFilter(QObject *, QEvent *e) override
    {
        if (e->type() == QEvent::Paint) {
            ++paints;
            regions.append(static_cast<QPaintEvent *>(e)->region());
        }
        return false;
    }

    //! All regions painted since the last clear().
    QRegion painted() const
    {
        QRegion all;
        for (const QRegion &r : regions)
            all += r;
        return all;
    }

    void clear()
    {
        paints = 0;
        regions.clear();
    }

    int paints = 0;
    QList<QRegion> regions;
};

#endif
