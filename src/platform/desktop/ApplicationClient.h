#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QQueue>
#include <QString>

#include <chrono>
#include <functional>

class QDBusError;
class QDBusMessage;
class QDBusPendingCall;

namespace Orbita {

class Scheduler;

/// Hands addresses to one program over the session bus (interface org.freedesktop.Application), one call after the
/// other, so that they arrive in the order in which they were opened. Never waits for it.
class ApplicationClient final : public QObject {
    Q_OBJECT
public:
    /// Starts the program without an address. Says why when it cannot, and answers false then.
    using Starter = std::function<bool()>;

    /// Whether a program that does not run is started: by the bus, or, where that does not know how, by a Starter.
    enum class Starts { No, Yes };

    /// How long a program that was started may take until it has its name.
    static constexpr std::chrono::seconds patience{30};
    /// How long flush() may wait.
    static constexpr std::chrono::seconds farewell{5};
    /// Bytes of addresses that may wait for a program; more are dropped, and that is logged once.
    static constexpr qsizetype maximumWaiting = 64 * 1024 * 1024;

    /// \a name is the program's bus name; \a scheduler outlives the client.
    ApplicationClient(QDBusConnection bus, QString name, Scheduler &scheduler, Starts starts);

    /// Has the program open \a url, behind those that still wait. Where the bus does not know how to start the program,
    /// \a start does, and the addresses follow when it has come. \a token lets its window come to the front.
    void open(const QString &url, const QByteArray &token = {}, Starter start = {});
    /// Sends what waits for the answer to an earlier call, and waits until the program has been handed all of it: what
    /// is meant for a program that the bus is still starting would be lost if this one ended before.
    void flush();

private:
    enum class State { Idle, Calling, Starting };

    void call();
    [[nodiscard]] QDBusMessage callOf(const QString &path, const QString &interface, const QString &method) const;
    QDBusPendingCall send(const QStringList &urls);
    void take(const QDBusPendingCall &answer);
    void remove(qsizetype first, qsizetype count);
    void startProgram();
    void giveUp(const QString &why);

    QDBusConnection m_bus;
    QString m_name;
    Scheduler &m_scheduler;
    Starts m_starts;
    State m_state = State::Idle;
    int m_startCount = 0;      ///< tells the wait for one start from those before
    bool m_wasStarted = false; ///< and has not taken a call since
    QQueue<QString> m_waiting;
    qsizetype m_waitingBytes = 0;
    qsizetype m_calledWith = 0; ///< how many of the waiting addresses the call carries that is not answered yet
    bool m_isFull = false;      ///< an address was dropped, and none has been taken since
    QByteArray m_token;         ///< of the latest address
    Starter m_start;            ///< of the latest address
};

} // namespace Orbita
