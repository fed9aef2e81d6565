#include "settings/triggers/TriggerHandlers.h"

#include "platform/EventTap.h"

namespace Orbita {

TriggerHandlers::TriggerHandlers(MouseUpEventTap &mouseUpEventTap, QObject *parent)
    : QObject(parent), m_mouseUpEventTap(mouseUpEventTap)
{
    m_watchdogTimer.setInterval(std::chrono::seconds(8));
    m_watchdogTimer.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_watchdogTimer, &QTimer::timeout, this, &TriggerHandlers::check);
    connect(&m_mouseUpEventTap, &MouseUpEventTap::mouseUp, this, &TriggerHandlers::shouldHide);
}

void TriggerHandlers::start()
{
    stop();
    m_mouseUpEventTap.setEnabled(true);
    m_watchdogTimer.start();
}

void TriggerHandlers::stop()
{
    m_mouseUpEventTap.setEnabled(false);
    m_watchdogTimer.stop();
}

void TriggerHandlers::check()
{
    if (!m_mouseUpEventTap.isEnabled())
        m_mouseUpEventTap.setEnabled(true);
}

} // namespace Orbita
