#include "companion/service/OrbitaPresence.h"

#include "base/ProgramNames.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

namespace Orbita {

OrbitaPresence::OrbitaPresence(const QDBusConnection &bus, QObject *parent)
    : QObject(parent), m_watcher(orbitaNames.bus, bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] { set(true); });
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { set(false); });
    if (bus.isConnected())
        m_isRunning = bus.interface()->isServiceRegistered(m_watcher.watchedServices().constFirst());
}

void OrbitaPresence::set(bool isRunning)
{
    m_isRunning = isRunning;
    Q_EMIT changed();
}

} // namespace Orbita
