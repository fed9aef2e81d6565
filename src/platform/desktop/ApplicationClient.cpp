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

/// How many of the first addresses of \a waiting go into one call.
qsizetype firstBatch(const QQueue<QString> &waiting)
{
    qsizetype length = 0;
    const auto exceeds = [&length](const QString &url) { return (length += url.size()) > maximumCall; };
    const qsizetype fitting = std::ranges::find_if(waiting, exceeds) - waiting.begin();
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

ApplicationClient::ApplicationClient(QDBusConnection bus, QString name, Scheduler &scheduler)
    : m_bus(std::move(bus)), m_name(std::move(name)), m_scheduler(scheduler)
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
    m_waiting.enqueue(url);
    m_token = token;
    m_start = std::move(start);
    if (m_state == State::Idle)
        call();
}

void ApplicationClient::call()
{
    m_state = State::Calling;
    const qsizetype count = firstBatch(m_waiting);
    QVariantMap platformData;
    if (!m_token.isEmpty()) {
        platformData.insert(QStringLiteral("desktop-startup-id"), QString::fromUtf8(m_token));
        platformData.insert(QStringLiteral("activation-token"), QString::fromUtf8(m_token));
    }
    auto request
        = QDBusMessage::createMethodCall(m_name, DesktopApplication::objectPath(m_name),
                                         QStringLiteral("org.freedesktop.Application"), QStringLiteral("Open"));
    request << QStringList(m_waiting.first(count)) << platformData;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(request, noTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, count] {
        watcher->deleteLater();
        take(*watcher, count);
    });
}

void ApplicationClient::take(const QDBusPendingCall &answer, qsizetype count)
{
    if (answer.isError() && isNobodyThere(answer.error()))
        return startProgram();
    if (answer.isError()) {
        qCWarning(lcPlatform).noquote() << m_name << "did not open" << count
                                        << "addresses:" << answer.error().message().simplified();
    }
    // Not again in either case: the program may have carried them out before it went away.
    m_waiting.remove(0, count);
    m_wasStarted = false;
    m_state = State::Idle;
    if (!m_waiting.isEmpty())
        call();
}

void ApplicationClient::startProgram()
{
    if (std::exchange(m_wasStarted, true))
        return giveUp(QStringLiteral("it ended at once"));
    m_state = State::Starting;
    if (!m_start())
        return giveUp(QStringLiteral("it cannot be started"));
    m_scheduler.after(patience, *this, [this, start = ++m_starts] {
        if (m_state == State::Starting && start == m_starts)
            giveUp(QStringLiteral("it did not come"));
    });
}

void ApplicationClient::giveUp(const QString &why)
{
    qCWarning(lcPlatform).noquote() << m_waiting.size() << "addresses for" << m_name << "are lost:" << why;
    m_waiting.clear();
    m_wasStarted = false;
    m_state = State::Idle;
}

} // namespace Orbita
