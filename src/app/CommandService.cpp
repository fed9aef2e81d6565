#include "app/CommandService.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QHash>

namespace Orbita {

namespace {

const QString serviceName = QStringLiteral("org.orbita.Orbita");
const QString objectPath = QStringLiteral("/org/orbita/Orbita");

} // namespace

CommandService::CommandService(QObject *parent) : QObject(parent)
{
    new OrbitaAdaptor(*this);
    new ApplicationAdaptor(*this);
}

CommandService::Registration CommandService::registerOn(QDBusConnection bus)
{
    if (!bus.isConnected())
        return Registration::NoBus;
    // The object first: whoever sees the name may call it at once.
    if (!bus.registerObject(objectPath, this, QDBusConnection::ExportAdaptors))
        return Registration::NoBus;
    return bus.registerService(serviceName) ? Registration::Registered : Registration::AlreadyRunning;
}

bool CommandService::callInstance(const QDBusConnection &bus, const QString &method)
{
    const auto call = QDBusMessage::createMethodCall(serviceName, objectPath, serviceName, method);
    return bus.call(call).type() == QDBusMessage::ReplyMessage;
}

void CommandService::perform(const QString &name)
{
    using Signal = void (CommandService::*)();
    static const QHash<QString, Signal> actions{
        {QStringLiteral("show"), &CommandService::showRequested},
        {QStringLiteral("hide"), &CommandService::hideRequested},
        {QStringLiteral("toggle"), &CommandService::toggleRequested},
        {QStringLiteral("settings"), &CommandService::settingsRequested},
        {QStringLiteral("quit"), &CommandService::quitRequested},
    };
    if (const Signal action = actions.value(name, nullptr))
        Q_EMIT(this->*action)();
    else
        refuse(QStringLiteral("There is no action \"%1\".").arg(name));
}

void CommandService::refuse(const QString &why)
{
    if (calledFromDBus())
        sendErrorReply(QDBusError::NotSupported, why);
}

void ApplicationAdaptor::Open(const QStringList &, const QVariantMap &)
{
    m_service.refuse(QStringLiteral("Orbita opens no files or addresses."));
}

} // namespace Orbita
