#ifndef CORVANE_HOST_SIGNALCLOCK_H
#define CORVANE_HOST_SIGNALCLOCK_H

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class ParameterDatabase;
class QScreen;

/*!
    \class SignalClock
    \brief Runs the simulated signals in real time: once a screen refresh it
    moves the database's time on by the time that really passed.
*/
class SignalClock : public QObject
{
public:
    explicit SignalClock(ParameterDatabase *database, QObject *parent = nullptr);

    //! Starts stepping at the refresh rate of \a screen (60 Hz without one).
    void start(const QScreen *screen);
    void stop() { m_timer.stop(); }
    int interval() const { return m_timer.interval(); }

private:
    void step();

    ParameterDatabase *m_database;
    QTimer m_timer;
    QElapsedTimer m_sinceLastStep;
};

#endif
