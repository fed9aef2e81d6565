#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace Orbita {

/// What the running instance lets itself be told on the session bus, at /org/orbita/Orbita: the commands of the program
/// `orbita` as "org.orbita.Orbita", and "org.freedesktop.Application" for the desktop.
class CommandService final : public QObject, protected QDBusContext {
    Q_OBJECT
public:
    enum class Registration {
        Registered,
        AlreadyRunning, ///< another instance has the name
        NoBus,
    };

    explicit CommandService(QObject *parent = nullptr);

    /// Takes the name on \a bus. Commands arrive with the next turns of the event loop.
    [[nodiscard]] Registration registerOn(QDBusConnection bus);
    /// Calls \a method of the instance that has the name. False when it did not answer.
    [[nodiscard]] static bool callInstance(const QDBusConnection &bus, const QString &method);

    /// Runs the command \a name; an unknown one is answered with an error.
    void perform(const QString &name);
    /// Answers the call that is being handled with the error "not supported".
    void refuse(const QString &why);

Q_SIGNALS:
    void showRequested();
    void hideRequested();
    void toggleRequested();
    void settingsRequested();
    void quitRequested();
};

/// The interface "org.orbita.Orbita".
class OrbitaAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.orbita.Orbita")
public:
    explicit OrbitaAdaptor(CommandService &service) : QDBusAbstractAdaptor(&service), m_service(service) {}

public Q_SLOTS:
    void Show() { Q_EMIT m_service.showRequested(); }
    void Hide() { Q_EMIT m_service.hideRequested(); }
    void Toggle() { Q_EMIT m_service.toggleRequested(); }
    void ShowSettings() { Q_EMIT m_service.settingsRequested(); }
    void Quit() { Q_EMIT m_service.quitRequested(); }

private:
    CommandService &m_service;
};

/// The interface "org.freedesktop.Application", as the Desktop Entry Specification describes it.
class ApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    explicit ApplicationAdaptor(CommandService &service) : QDBusAbstractAdaptor(&service), m_service(service) {}

public Q_SLOTS:
    void Activate(const QVariantMap &) { Q_EMIT m_service.settingsRequested(); }
    void Open(const QStringList &, const QVariantMap &);
    void ActivateAction(const QString &name, const QVariantList &, const QVariantMap &) { m_service.perform(name); }

private:
    CommandService &m_service;
};

} // namespace Orbita
