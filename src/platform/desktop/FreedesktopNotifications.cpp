#include "platform/desktop/FreedesktopNotifications.h"

#include "base/ProgramNames.h"
#include "platform/Log.h"
#include "platform/desktop/BusCall.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <functional>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

const QString serviceName = QStringLiteral("org.freedesktop.Notifications");

QDBusMessage callOf(const QString &method)
{
    return QDBusMessage::createMethodCall(serviceName, u"/org/freedesktop/Notifications"_s, serviceName, method);
}

/// \a body is what the server takes for one: markup, or plain.
QDBusMessage notification(const QString &title, const QString &body)
{
    constexpr quint32 replacesNone = 0;
    constexpr qint32 serversTimeout = -1;
    const QVariantMap hints{{u"desktop-entry"_s, orbitaNames.bus}};
    QDBusMessage request = callOf(u"Notify"_s);
    request << u"Orbita"_s << replacesNone << orbitaNames.bus << title << body << QStringList() << hints
            << serversTimeout;
    return request;
}

void ask(QObject *asker, const QDBusMessage &request, const std::function<void(const QDBusPendingCall &)> &then)
{
    askOnBus(QDBusConnection::sessionBus(), request, asker, then);
}

} // namespace

void FreedesktopNotifications::notify(const QString &title, const QString &text)
{
    // A server that knows markup would take "<" in a text for it, and one that does not would show "&lt;" as it stands.
    // So it is asked each time: messages are rare, and another server may have taken over since the last.
    ask(this, callOf(u"GetCapabilities"_s), [this, title, text](const QDBusPendingCall &answer) {
        const QDBusPendingReply<QStringList> capabilities(answer);
        const bool takesMarkup = !capabilities.isError() && capabilities.value().contains("body-markup"_L1);
        const QString body = takesMarkup ? text.toHtmlEscaped() : text;
        ask(this, notification(title, body), [this, title, text](const QDBusPendingCall &shown) {
            if (!shown.isError())
                return;
            qCWarning(lcPlatform).noquote() << text;
            if (shown.error().type() == QDBusError::ServiceUnknown)
                notifyLater(title, text);
        });
    });
}

void FreedesktopNotifications::notifyLater(const QString &title, const QString &text)
{
    // Who is started with the session may be quicker than its notification server.
    auto *watcher = new QDBusServiceWatcher(serviceName, QDBusConnection::sessionBus(),
                                            QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this, watcher, title, text] {
        watcher->deleteLater();
        notify(title, text);
    });
}

} // namespace Orbita
