#include "desktop/harness/Bus.h"
#include "desktop/harness/Wait.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QEventLoop>
#include <QUuid>

namespace Orbita {

static const auto propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

Bus::Bus(const QString &address) : m_connection(QDBusConnection::connectToBus(address, QUuid::createUuid().toString()))
{
    if (!m_connection.isConnected())
        throw DesktopFailure(QStringLiteral("no bus at %1: %2").arg(address, m_connection.lastError().message()));
}

Bus::~Bus()
{
    QDBusConnection::disconnectFromBus(m_connection.name());
}

QVariantList Bus::call(const QString &service, const QString &path, const QString &interface, const QString &method,
                       const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    // Well below the bound of a wait, which asks again: an accessible object that ends while it is asked never answers.
    constexpr int bound = 10'000; // milliseconds
    // The event loop goes on: the program called may ask something of the test before it answers. QDBus::BlockWithGui
    // would do the same, but it misses a reply that comes before its loop has begun, and then waits for ever.
    const QDBusPendingCallWatcher pending(m_connection.asyncCall(message, bound));
    QEventLoop loop;
    QObject::connect(&pending, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    if (!pending.isFinished())
        loop.exec();
    const QDBusMessage reply = pending.reply();
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw DesktopFailure(QStringLiteral("%1.%2 failed: %3").arg(interface, method, reply.errorMessage()));
    return reply.arguments();
}

QVariant Bus::property(const QString &service, const QString &path, const QString &interface, const QString &name) const
{
    const QVariantList answer = call(service, path, propertiesInterface, QStringLiteral("Get"), {interface, name});
    return answer.value(0).value<QDBusVariant>().variant();
}

void Bus::setProperty(const QString &service, const QString &path, const QString &interface, const QString &name,
                      const QVariant &value) const
{
    call(service, path, propertiesInterface, QStringLiteral("Set"),
         {interface, name, QVariant::fromValue(QDBusVariant(value))});
}

bool Bus::hasOwner(const QString &name) const
{
    return m_connection.interface()->isServiceRegistered(name).value();
}

void Bus::waitForName(const QString &name) const
{
    waitUntil([&] { return hasOwner(name); }, name + QStringLiteral(" was owned on the bus"));
}

qint64 Bus::pidOf(const QString &name) const
{
    return m_connection.interface()->servicePid(name).value();
}

std::unique_ptr<Program> startBusDaemon(const QString &address, const QProcessEnvironment &environment)
{
    const QStringList arguments{QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                                QStringLiteral("--print-address"), QStringLiteral("--address=") + address};
    auto daemon = std::make_unique<Program>(QStringLiteral("dbus-daemon"), arguments, environment);
    daemon->waitForOutput(QStringLiteral("^unix:"));
    return daemon;
}

} // namespace Orbita
