#pragma once

#include "desktop/harness/Processes.h"

#include <QDBusConnection>
#include <QString>
#include <QVariant>

#include <memory>

namespace Orbita {

/// A connection of the harness's own to a message bus.
class Bus {
public:
    /// Throws DesktopFailure when there is no bus at \a address.
    explicit Bus(const QString &address);
    ~Bus();
    Bus(const Bus &) = delete;
    Bus &operator=(const Bus &) = delete;

    [[nodiscard]] const QDBusConnection &connection() const { return m_connection; }

    /// Calls a method and returns the values of the answer, containers as QDBusArgument.
    /// Throws DesktopFailure with the error's text when the call fails.
    QVariantList call(const QString &service, const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments = {}) const;
    [[nodiscard]] QVariant property(const QString &service, const QString &path, const QString &interface,
                                    const QString &name) const;
    void setProperty(const QString &service, const QString &path, const QString &interface, const QString &name,
                     const QVariant &value) const;

    [[nodiscard]] bool hasOwner(const QString &name) const;
    /// Waits until some program owns \a name.
    void waitForName(const QString &name) const;
    /// The process behind \a name.
    [[nodiscard]] qint64 pidOf(const QString &name) const;

private:
    QDBusConnection m_connection;
};

/// Starts a session bus at \a address and returns when it answers.
[[nodiscard]] std::unique_ptr<Program> startBusDaemon(const QString &address, const QProcessEnvironment &environment);

} // namespace Orbita
