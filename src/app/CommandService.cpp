#include "app/CommandService.h"

#include "base/ProgramNames.h"

#include <QDBusMessage>
#include <QHash>

#include <utility>

namespace Orbita {

namespace {

using Signal = void (CommandService::*)();

/// A toggle counts as well: while something is refused the ring is hidden already.
bool showsSomething(Signal command)
{
    return command == &CommandService::showRequested || command == &CommandService::toggleRequested
        || command == &CommandService::settingsRequested;
}

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
    connect(&m_application, &DesktopApplication::actionRequested, this,
            [this](const QString &name) { request(commands().value(name)); });
    connect(this, &CommandService::stopScriptsRequested, this, &CommandService::stopScripts);
    connect(this, &CommandService::urlsOpened, this, [this] { m_awaitsActivation = false; });
}

void CommandService::request(Command command)
{
    m_awaitsActivation = false; // what the program was started for is the first call to come, whichever it is
    const QString refusal = m_refusalToShow && showsSomething(command) ? m_refusalToShow() : QString();
    if (refusal.isEmpty())
        Q_EMIT(this->*command)();
    else
        m_application.refuse(refusal);
}

CommandService::Registration CommandService::registerOn(QDBusConnection bus)
{
    return m_application.registerOn(std::move(bus));
}

std::optional<QString> CommandService::callInstance(const QDBusConnection &bus, const QString &method)
{
    const QString &interface = orbitaNames.bus; // OrbitaAdaptor's
    const auto call = QDBusMessage::createMethodCall(orbitaNames.bus, DesktopApplication::objectPath(orbitaNames.bus),
                                                     interface, method);
    const QDBusMessage answer = bus.call(call);
    if (answer.type() == QDBusMessage::ReplyMessage)
        return std::nullopt;
    const bool isRefused = answer.errorName() == DesktopApplication::refusalError(orbitaNames.bus);
    return isRefused ? answer.errorMessage() : QStringLiteral("Orbita runs but did not answer.");
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
        request(&CommandService::settingsRequested);
}

} // namespace Orbita
