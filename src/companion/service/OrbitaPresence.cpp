#include "companion/service/OrbitaPresence.h"

#include "base/ProgramNames.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

namespace Orbita {

OrbitaPresence::OrbitaPresence(const QDBusConnection &bus, QObject *parent)
    : QObject(parent), m_watcher(orbitaNames.bus, bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                m_owner = owner;
                Q_EMIT changed();
            });
    if (bus.isConnected())
        m_owner = bus.interface()->serviceOwner(orbitaNames.bus);
}

} // namespace Orbita
