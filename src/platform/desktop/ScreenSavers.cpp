#include "platform/desktop/ScreenSavers.h"

#include "platform/desktop/BusCall.h"

#include <QDBusPendingReply>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

/// Each has an interface of the same name.
QStringList services()
{
    return {u"org.freedesktop.ScreenSaver"_s, u"org.gnome.ScreenSaver"_s, u"org.cinnamon.ScreenSaver"_s,
            u"org.mate.ScreenSaver"_s, u"org.xfce.ScreenSaver"_s};
}

/// Where the object of \a service may be. The shorter path is an older one of KDE's.
QStringList pathsOf(const QString &service)
{
    return {u'/' + QString(service).replace(u'.', u'/'), u"/ScreenSaver"_s};
}

} // namespace

ScreenSavers::ScreenSavers(QObject *parent) : QObject(parent)
{
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &service, const QString &, const QString &owner) {
                setActive(service, false);
                if (!owner.isEmpty())
                    ask(service, pathsOf(service));
            });
}

void ScreenSavers::follow(const QDBusConnection &sessionBus)
{
    m_bus = sessionBus;
    if (!m_bus.isConnected())
        return;
    m_watcher.setConnection(m_bus);
    for (const QString &service : services()) {
        m_watcher.addWatchedService(service);
        m_bus.connect(service, {}, service, u"ActiveChanged"_s, this, SLOT(activeChanged(QDBusMessage)));
        ask(service, pathsOf(service));
    }
}

void ScreenSavers::ask(const QString &service, QStringList paths)
{
    if (paths.isEmpty())
        return;
    auto request = QDBusMessage::createMethodCall(service, paths.takeFirst(), service, u"GetActive"_s);
    request.setAutoStartService(false);
    askOnBus(m_bus, request, this, [this, service, paths](const QDBusPendingCall &answer) {
        const QDBusPendingReply<bool> active(answer);
        if (!active.isError())
            setActive(service, active.value());
        else if (active.error().type() != QDBusError::ServiceUnknown)
            ask(service, paths);
    });
}

void ScreenSavers::activeChanged(const QDBusMessage &signal)
{
    const QVariant active = signal.arguments().value(0);
    if (active.metaType() == QMetaType::fromType<bool>())
        setActive(signal.interface(), active.toBool());
}

void ScreenSavers::setActive(const QString &service, bool active)
{
    if (active == m_active.contains(service))
        return;
    if (active)
        m_active.insert(service);
    else
        m_active.remove(service);
    Q_EMIT changed();
}

} // namespace Orbita
