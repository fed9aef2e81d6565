#pragma once

#include "platform/desktop/DesktopApplication.h"

#include <QDBusAbstractAdaptor>

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
    /// Calls \a method of the instance that has the name. False when it did not answer.
    [[nodiscard]] static bool callInstance(const QDBusConnection &bus, const QString &method);

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
    void activate();
    /// Passes on to the companion, where it runs, that the scripts are to end.
    void stopScripts();

    DesktopApplication m_application;
    bool m_awaitsActivation; ///< the call that the program was started for is yet to come
};

/// The interface "org.orbita.Orbita".
class OrbitaAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.orbita.Orbita")
public:
    /// Is exported along with \a object.
    OrbitaAdaptor(CommandService &service, QObject &object) : QDBusAbstractAdaptor(&object), m_service(service) {}

public Q_SLOTS:
    void Show() { Q_EMIT m_service.showRequested(); }
    void Hide() { Q_EMIT m_service.hideRequested(); }
    void Toggle() { Q_EMIT m_service.toggleRequested(); }
    void ShowSettings() { Q_EMIT m_service.settingsRequested(); }
    void StopScripts() { Q_EMIT m_service.stopScriptsRequested(); }
    void Quit() { Q_EMIT m_service.quitRequested(); }

private:
    CommandService &m_service;
};

} // namespace Orbita
