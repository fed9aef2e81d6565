#include "platform/desktop/FileManagerClient.h"

#include "platform/Log.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QUrl>

namespace Orbita {

namespace {

QDBusMessage requestFor(const QString &path, const QByteArray &token)
{
    const QString method = QFileInfo(path).isDir() ? QStringLiteral("ShowFolders") : QStringLiteral("ShowItems");
    QDBusMessage request = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                                          QStringLiteral("/org/freedesktop/FileManager1"),
                                                          QStringLiteral("org.freedesktop.FileManager1"), method);
    request << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QString::fromUtf8(token);
    return request;
}

/// An answer that did not come in time is no refusal: the window may well open yet, and one is enough.
bool isRefusal(const QDBusError &error)
{
    return error.isValid() && error.type() != QDBusError::NoReply && error.type() != QDBusError::Timeout
        && error.type() != QDBusError::TimedOut;
}

} // namespace

bool FileManagerClient::show(const QString &path, const QByteArray &token)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return false;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(requestFor(path, token)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, path] {
        const QDBusPendingReply<> reply(*watcher);
        watcher->deleteLater();
        if (!reply.isError())
            return;
        qCInfo(lcPlatform).noquote() << "No file manager answered:" << reply.error().message().simplified();
        if (isRefusal(reply.error()))
            Q_EMIT refused(path);
    });
    return true;
}

} // namespace Orbita
