#include "timer.h"

void Timer::setInterval(int milliseconds)
{
    m_interval = milliseconds;
    if (isActive())
        QTimer::setInterval(qMax(0, m_interval));
}

void Timer::start(bool singleShot)
{
    setSingleShot(singleShot);
    QTimer::start(qMax(0, m_interval));
}

void Timer::stop()
{
    QTimer::stop();
}
