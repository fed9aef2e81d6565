#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>

namespace Orbita {

/// A program as the desktop reaches it: by a name on the session bus and an object that has the interface
/// "org.freedesktop.Application", which the Desktop Entry Specification describes.
///
/// Adaptors made with this object as their parent before registerOn() are exported along with it.
class DesktopApplication final : public QObject, protected QDBusContext {
    Q_OBJECT
public:
    enum class Registration {
        Registered,
        AlreadyRunning, ///< another program has the name
        NoBus,
    };

    /// \a name is the bus name: the id of the desktop entry without ".desktop". \a actions are those of the entry; any
    /// other is answered with an error.
    explicit DesktopApplication(QString name, QStringList actions = {}, QObject *parent = nullptr);

    /// Takes the name on \a bus. Calls arrive with the next turns of the event loop, so connect before those.
    [[nodiscard]] Registration registerOn(QDBusConnection bus);

    /// The object that belongs to the bus name \a name: "/org/example/My_App" for "org.example.My-App".
    [[nodiscard]] static QString objectPath(const QString &name);

    /// Answers the call that is being delivered with refusalError() and \a sentence. Does nothing outside of a call.
    void refuse(const QString &sentence);
    /// The name of the error with which the program that has the bus name \a name refuses a call.
    [[nodiscard]] static QString refusalError(const QString &name) { return name + QStringLiteral(".Refused"); }

Q_SIGNALS:
    /// The program is to come to the front, or was only started.
    void activated();
    /// \a urls are to be opened, in this order. They are as the caller wrote them, valid or not. \a sender is the
    /// unique name of the caller's connection, which the bus vouches for.
    void opened(const QStringList &urls, const QString &sender);
    /// One of the actions is to be carried out.
    void actionRequested(const QString &name);

private:
    friend class DesktopApplicationAdaptor;
    void open(const QStringList &urls);
    void activateAction(const QString &name);

    QString m_name;
    QStringList m_actions;
};

} // namespace Orbita
