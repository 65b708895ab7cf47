#ifndef CORVANE_READOUT_H
#define CORVANE_READOUT_H

#include <QLabel>
#include <QPointer>
#include <QTimer>

#include "BaseWidget.h"

/*!
    \class ReadOut
    \brief The value shown next to a dial, fader, number box, graph handle
    or pad while it is being changed, and on hover.

    One read-out serves the application: an event filter sees presses,
    moves, releases, the wheel, Up and Down and the pointer entering and
    leaving the controls of those families, and after each such event shows
    what the control's parameter reads now (its "readOutText" property when
    it has one; for a graph handle its band's frequency and gain; else its
    display text as the database formats it). It never sends anything: the input code of the
    controls stays as it is.

    A panel switches read-outs off with the property "readOuts" set to false
    on the panel widget (or on any widget between it and the controls).
*/
class ReadOut : public QLabel
{
    Q_OBJECT

public:
    //! The application's read-out, created on first use.
    static ReadOut *instance();
    //! The read-out if a control has asked for one yet, else null.
    static ReadOut *existing();
    //! Starts watching the controls; safe to call more than once.
    static void install();

    //! Whether \a control gets a read-out: a family that has one, with read-outs not switched off above it.
    static bool wanted(const QWidget *control);
    //! The text the read-out shows for \a control.
    static QString textFor(const BaseWidget *control);
    //! A graph handle's band frequency and gain, as the database formats them; empty when it has none.
    static QString bandText(const BaseWidget *handle);

    //! The control the read-out is showing, or null when hidden.
    QWidget *subject() const { return isVisible() ? m_subject.data() : nullptr; }
    //! Pointer rest before a hover read-out, in milliseconds.
    static constexpr int hoverDelay = 700;
    //! How long a read-out from the wheel or a key stays after the last change, in milliseconds.
    static constexpr int lingerTime = 1200;

    //! Shows the read-out of \a control now, placed next to it.
    void showFor(BaseWidget *control);
    void hideFor(const QWidget *control);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    friend class ReadOutWatcher;

    ReadOut();
    void refreshLater(BaseWidget *control, bool linger);
    void place();

    QPointer<BaseWidget> m_subject;
    QPointer<BaseWidget> m_hovered;
    QPointer<BaseWidget> m_held;
    QTimer m_hoverTimer;
    QTimer m_lingerTimer;
};

#endif
