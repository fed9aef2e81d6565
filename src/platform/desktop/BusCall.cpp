#include "platform/desktop/BusCall.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

namespace Orbita {

void askOnBus(const QDBusConnection &bus, const QDBusMessage &request, QObject *asker,
              const std::function<void(const QDBusPendingCall &)> &then)
{
    const auto call = bus.isConnected()
        ? bus.asyncCall(request)
        : QDBusPendingCall::fromError({QDBusError::NoServer, QStringLiteral("There is no bus")});
    auto *watcher = new QDBusPendingCallWatcher(call, asker);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, asker, [watcher, then] {
        watcher->deleteLater();
        then(*watcher);
    });
}

} // namespace Orbita
