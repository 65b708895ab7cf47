#include "SignalClock.h"

#include "ParameterDatabase.h"

#include <QScreen>

SignalClock::SignalClock(ParameterDatabase *database, QObject *parent)
    : QObject(parent)
    , m_database(database)
{
    connect(&m_timer, &QTimer::timeout, this, &SignalClock::step);
}

void SignalClock::start(const QScreen *screen)
{
    const qreal refresh = screen && screen->refreshRate() > 1 ? screen->refreshRate() : 60;
    m_timer.setInterval(qBound(5, int(1000 / refresh), 100));
    m_sinceLastStep.start();
    m_timer.start();
}

void SignalClock::step()
{
    m_database->advance(m_sinceLastStep.restart());
}
