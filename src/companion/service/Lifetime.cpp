#include "companion/service/Lifetime.h"

#include "platform/Scheduler.h"

namespace Orbita {

Lifetime::Lifetime(Scheduler &scheduler, QObject *parent) : QObject(parent), m_scheduler(scheduler)
{
    judge();
}

void Lifetime::setOrbitaRunning(bool isRunning)
{
    m_isOrbitaRunning = isRunning;
    judge();
}

void Lifetime::setRunningScripts(int count)
{
    m_runningScripts = count;
    judge();
}

void Lifetime::endSoon()
{
    m_endsSoon = true;
    judge();
}

void Lifetime::judge()
{
    ++m_changes;
    if (m_endsSoon ? m_runningScripts > 0 : m_isOrbitaRunning)
        return;
    m_scheduler.after(m_endsSoon ? std::chrono::seconds::zero() : patience, *this, [this, change = m_changes] {
        if (change == m_changes)
            Q_EMIT over();
    });
}

} // namespace Orbita
