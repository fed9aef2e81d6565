#include "platform/desktop/CallableNames.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

namespace Orbita {

CallableNames::CallableNames(QDBusConnection bus, const QStringList &names) : m_bus(std::move(bus))
{
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.setWatchedServices(names);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &CallableNames::forget);
    const auto daemon = QStringLiteral("org.freedesktop.DBus");
    m_bus.connect(daemon, QStringLiteral("/org/freedesktop/DBus"), daemon, QStringLiteral("ActivatableServicesChanged"),
                  this, SLOT(forget()));
}

bool CallableNames::contains(const QString &name) const
{
    if (!m_bus.isConnected())
        return false;
    if (!m_known)
        m_known = ask();
    return m_known && m_known->contains(name);
}

std::optional<QSet<QString>> CallableNames::ask() const
{
    const QDBusReply<QStringList> answer = m_bus.interface()->activatableServiceNames();
    if (!answer.isValid())
        return std::nullopt;
    const QStringList activatable = answer;
    QSet<QString> callable;
    for (const QString &name : m_watcher.watchedServices()) {
        if (activatable.contains(name) || m_bus.interface()->isServiceRegistered(name))
            callable.insert(name);
    }
    return callable;
}

} // namespace Orbita
