#include "platform/desktop/ApplicationClient.h"

#include "platform/Log.h"
#include "platform/Scheduler.h"
#include "platform/desktop/DesktopApplication.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <algorithm>
#include <limits>
#include <utility>

namespace Orbita {

namespace {

/// One call may carry this many characters of addresses, and always carries one address; a bus allows 64 MiB.
constexpr qsizetype maximumCall = 4 * 1024 * 1024;
/// Milliseconds; stands for no limit. A program may be busy, and a call that was given up could still be carried out.
constexpr int noTimeout = std::numeric_limits<int>::max();

qsizetype bytes(const QString &url)
{
    return url.size() * qsizetype(sizeof(QChar));
}

/// How many of the addresses of \a waiting from \a first on go into one call.
qsizetype batch(const QQueue<QString> &waiting, qsizetype first = 0)
{
    qsizetype length = 0;
    const auto exceeds = [&length](const QString &url) { return (length += url.size()) > maximumCall; };
    const auto begin = waiting.begin() + first;
    const qsizetype fitting = std::find_if(begin, waiting.end(), exceeds) - begin;
    return std::max<qsizetype>(fitting, 1);
}

/// Whether the bus has no program to give a call to, and could not start one.
bool isNobodyThere(const QDBusError &error)
{
    return error.type() == QDBusError::ServiceUnknown
        || error.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner")
        || error.name().startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn."));
}

} // namespace

ApplicationClient::ApplicationClient(QDBusConnection bus, QString name, Scheduler &scheduler, Starts starts)
    : m_bus(std::move(bus)), m_name(std::move(name)), m_scheduler(scheduler), m_starts(starts)
{
    // From the beginning, so that no program that comes can be missed.
    auto *watcher = new QDBusServiceWatcher(m_name, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        if (m_state == State::Starting)
            call();
    });
}

void ApplicationClient::open(const QString &url, const QByteArray &token, Starter start)
{
    if (m_waitingBytes + bytes(url) > maximumWaiting) {
        if (!std::exchange(m_isFull, true))
            qCWarning(lcPlatform).noquote() << "Too much waits for" << m_name << "already; more addresses are lost.";
        return;
    }
    m_isFull = false;
    m_waitingBytes += bytes(url);
    m_waiting.enqueue(url);
    m_token = token;
    m_start = std::move(start);
    if (m_state == State::Idle)
        call();
}

void ApplicationClient::call()
{
    m_state = State::Calling;
    m_calledWith = batch(m_waiting);
    auto *watcher = new QDBusPendingCallWatcher(send(m_waiting.first(m_calledWith)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        take(*watcher);
    });
}

QDBusMessage ApplicationClient::callOf(const QString &path, const QString &interface, const QString &method) const
{
    auto message = QDBusMessage::createMethodCall(m_name, path, interface, method);
    message.setAutoStartService(m_starts == Starts::Yes);
    return message;
}

QDBusPendingCall ApplicationClient::send(const QStringList &urls)
{
    QVariantMap platformData;
    if (!m_token.isEmpty()) {
        platformData.insert(QStringLiteral("desktop-startup-id"), QString::fromUtf8(m_token));
        platformData.insert(QStringLiteral("activation-token"), QString::fromUtf8(m_token));
    }
    auto request = callOf(DesktopApplication::objectPath(m_name), QStringLiteral("org.freedesktop.Application"),
                          QStringLiteral("Open"));
    request << urls << platformData;
    return m_bus.asyncCall(request, noTimeout);
}

void ApplicationClient::flush()
{
    if (m_state == State::Starting)
        return giveUp(QStringLiteral("it has not come in time"));
    if (m_state == State::Idle)
        return;
    while (m_waiting.size() > m_calledWith) {
        const qsizetype count = batch(m_waiting, m_calledWith);
        send(m_waiting.mid(m_calledWith, count));
        remove(m_calledWith, count);
    }
    // The bus keeps the order, also of what waits for a program to start, but drops what its sender does not live to
    // see handed over. An answer to this tells that all before it has been.
    m_bus.call(callOf(QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping")),
               QDBus::Block, int(std::chrono::milliseconds(farewell).count()));
}

void ApplicationClient::remove(qsizetype first, qsizetype count)
{
    for (const QString &url : m_waiting.mid(first, count))
        m_waitingBytes -= bytes(url);
    m_waiting.remove(first, count);
}

void ApplicationClient::take(const QDBusPendingCall &answer)
{
    if (answer.isError() && isNobodyThere(answer.error()))
        return startProgram();
    if (answer.isError()) {
        qCWarning(lcPlatform).noquote() << m_name << "did not open" << m_calledWith
                                        << "addresses:" << answer.error().message().simplified();
    }
    // Not again in either case: the program may have carried them out before it went away.
    remove(0, std::exchange(m_calledWith, 0));
    m_wasStarted = false;
    m_state = State::Idle;
    if (!m_waiting.isEmpty())
        call();
}

void ApplicationClient::startProgram()
{
    if (m_starts == Starts::No)
        return giveUp(QStringLiteral("it does not run"));
    if (std::exchange(m_wasStarted, true))
        return giveUp(QStringLiteral("it ended at once"));
    m_state = State::Starting;
    if (!m_start())
        return giveUp(QStringLiteral("it cannot be started"));
    m_scheduler.after(patience, *this, [this, start = ++m_startCount] {
        if (m_state == State::Starting && start == m_startCount)
            giveUp(QStringLiteral("it did not come"));
    });
}

void ApplicationClient::giveUp(const QString &why)
{
    qCWarning(lcPlatform).noquote() << m_waiting.size() << "addresses for" << m_name << "are lost:" << why;
    remove(0, m_waiting.size());
    m_wasStarted = false;
    m_state = State::Idle;
}

} // namespace Orbita
