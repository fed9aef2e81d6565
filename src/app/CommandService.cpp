#include "app/CommandService.h"

#include "base/ProgramNames.h"

#include <QDBusMessage>
#include <QHash>

#include <utility>

namespace Orbita {

namespace {

using Signal = void (CommandService::*)();

const QHash<QString, Signal> &commands()
{
    static const QHash<QString, Signal> commands{
        {QStringLiteral("show"), &CommandService::showRequested},
        {QStringLiteral("hide"), &CommandService::hideRequested},
        {QStringLiteral("toggle"), &CommandService::toggleRequested},
        {QStringLiteral("settings"), &CommandService::settingsRequested},
        {QStringLiteral("stop-scripts"), &CommandService::stopScriptsRequested},
        {QStringLiteral("quit"), &CommandService::quitRequested},
    };
    return commands;
}

} // namespace

CommandService::CommandService(StartReason reason, QObject *parent)
    : QObject(parent),
      m_application(orbitaNames.bus, commands().keys()),
      m_awaitsActivation(reason == StartReason::BusActivation)
{
    new OrbitaAdaptor(*this, m_application);
    connect(&m_application, &DesktopApplication::activated, this, &CommandService::activate);
    connect(&m_application, &DesktopApplication::opened, this, &CommandService::urlsOpened);
    connect(&m_application, &DesktopApplication::actionRequested, this, [this](const QString &name) {
        Q_EMIT(this->*commands().value(name))();
    });
    connect(this, &CommandService::stopScriptsRequested, this, &CommandService::stopScripts);
    // What the program was started for is the first call to come, whichever it is.
    const auto hasCome = [this] { m_awaitsActivation = false; };
    for (const Signal command : commands())
        connect(this, command, this, hasCome);
    connect(this, &CommandService::urlsOpened, this, hasCome);
}

CommandService::Registration CommandService::registerOn(QDBusConnection bus)
{
    return m_application.registerOn(std::move(bus));
}

bool CommandService::callInstance(const QDBusConnection &bus, const QString &method)
{
    const QString &interface = orbitaNames.bus; // OrbitaAdaptor's
    const auto call = QDBusMessage::createMethodCall(orbitaNames.bus, DesktopApplication::objectPath(orbitaNames.bus),
                                                     interface, method);
    return bus.call(call).type() == QDBusMessage::ReplyMessage;
}

void CommandService::stopScripts()
{
    const QString &companion = toolkitNames.bus;
    auto call = QDBusMessage::createMethodCall(companion, DesktopApplication::objectPath(companion),
                                               QStringLiteral("org.freedesktop.Application"),
                                               QStringLiteral("ActivateAction"));
    call.setArguments({QStringLiteral("stop-scripts"), QVariantList(), QVariantMap()});
    call.setAutoStartService(false);
    QDBusConnection::sessionBus().send(call);
}

void CommandService::activate()
{
    if (!std::exchange(m_awaitsActivation, false))
        Q_EMIT settingsRequested();
}

} // namespace Orbita
