#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QList>
#include <QObject>
#include <QVariantMap>

#include <functional>
#include <memory>

class QDBusPendingCall;

namespace Orbita {

/// The session of this program as logind has it, or elogind, which looks the same.
///
/// That is the session that this process was started in. Where a service of the user's has started it, which belongs to
/// no session, it is the one that XDG_SESSION_ID names, or else the one that logind takes for the user's display.
class LogindSession final : public QObject {
    Q_OBJECT
public:
    explicit LogindSession(QObject *parent = nullptr);
    ~LogindSession() override;

    /// Finds the session by way of \a systemBus and follows it, also through later starts of logind. Waits for nothing
    /// that logind has to do, and starts none.
    void follow(const QDBusConnection &systemBus);

    /// Whether a locker has said that it stands before the session. False as long as nothing is known.
    [[nodiscard]] bool isLocked() const { return m_isLocked; }
    /// Whether the session is on its seat's screen, or has no seat. True as long as nothing is known.
    [[nodiscard]] bool isActive() const { return m_isActive; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void propertiesChanged(const QString &interface, const QVariantMap &properties, const QStringList &invalidated);
    void sessionAppeared();

private:
    using Answered = std::function<void(const QDBusPendingCall &)>;

    void ask(const QDBusMessage &question, const Answered &then);
    void lookUp();
    /// Takes the first session that answers one of \a questions and is a user's, or else the display.
    void consider(QList<QDBusMessage> questions);
    void takeDisplay();
    void take(const QString &path);
    void forget();
    void readProperties();
    void apply(const QVariantMap &properties);

    QDBusConnection m_bus{QString()};
    QDBusServiceWatcher m_watcher;
    std::unique_ptr<QObject> m_asker; ///< What was asked for an earlier start of logind ends with it.
    QString m_path;                   ///< The path of the session that is followed; empty while there is none.
    bool m_isLocked = false;
    bool m_isActive = true;
};

} // namespace Orbita
