#pragma once

#include <functional>

class QDBusConnection;
class QDBusMessage;
class QDBusPendingCall;
class QObject;

namespace Orbita {

/// Sends \a request on \a bus and calls \a then with the answer later, unless \a asker is gone by then. Without a bus
/// the answer is an error like any other.
void askOnBus(const QDBusConnection &bus, const QDBusMessage &request, QObject *asker,
              const std::function<void(const QDBusPendingCall &)> &then);

} // namespace Orbita
