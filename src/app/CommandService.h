#pragma once

#include "platform/desktop/DesktopApplication.h"

#include <QDBusAbstractAdaptor>

#include <functional>
#include <optional>

namespace Orbita {

/// What the program was started for.
enum class StartReason {
    Command,
    BusActivation, ///< the bus started it to hand it a call
};

/// What the running instance lets itself be told on the session bus, at /org/orbita/Orbita: the commands of the program
/// `orbita` as "org.orbita.Orbita", and "org.freedesktop.Application" for the desktop.
class CommandService final : public QObject {
    Q_OBJECT
public:
    using Registration = DesktopApplication::Registration;

    /// Being started by the bus in order to be activated is no wish for the settings: it only starts the program.
    explicit CommandService(StartReason reason = StartReason::Command, QObject *parent = nullptr);

    /// Takes the name on \a bus. Commands arrive with the next turns of the event loop.
    [[nodiscard]] Registration registerOn(QDBusConnection bus);
    /// \a refusal is asked before each command that shows something; where it has a sentence to say why not, that is
    /// the answer to the call instead.
    void setRefusalToShow(std::function<QString()> refusal) { m_refusalToShow = std::move(refusal); }
    /// Calls \a method of the instance that has the name. A sentence for the user where it was not carried out.
    [[nodiscard]] static std::optional<QString> callInstance(const QDBusConnection &bus, const QString &method);

Q_SIGNALS:
    void showRequested();
    void hideRequested();
    void toggleRequested();
    void settingsRequested();
    void stopScriptsRequested();
    void quitRequested();
    /// Addresses that this program was asked to open, as they were written.
    void urlsOpened(const QStringList &urls);

private:
    friend class OrbitaAdaptor;
    using Command = void (CommandService::*)();

    /// Emits \a command unless it is refused.
    void request(Command command);
    void activate();
    /// Passes on to the companion, where it runs, that the scripts are to end.
    void stopScripts();

    DesktopApplication m_application;
    std::function<QString()> m_refusalToShow; ///< may be empty
    bool m_awaitsActivation;                  ///< the call that the program was started for is yet to come
};

/// The interface "org.orbita.Orbita".
class OrbitaAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.orbita.Orbita")
public:
    /// Is exported along with \a object.
    OrbitaAdaptor(CommandService &service, QObject &object) : QDBusAbstractAdaptor(&object), m_service(service) {}

public Q_SLOTS:
    void Show() { m_service.request(&CommandService::showRequested); }
    void Hide() { m_service.request(&CommandService::hideRequested); }
    void Toggle() { m_service.request(&CommandService::toggleRequested); }
    void ShowSettings() { m_service.request(&CommandService::settingsRequested); }
    void StopScripts() { m_service.request(&CommandService::stopScriptsRequested); }
    void Quit() { m_service.request(&CommandService::quitRequested); }

private:
    CommandService &m_service;
};

} // namespace Orbita
