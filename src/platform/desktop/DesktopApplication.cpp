#include "platform/desktop/DesktopApplication.h"

#include "platform/desktop/DesktopApplicationAdaptor.h"

#include <QDBusMessage>

namespace Orbita {

DesktopApplication::DesktopApplication(QString name, QStringList actions, QObject *parent)
    : QObject(parent), m_name(std::move(name)), m_actions(std::move(actions))
{
    new DesktopApplicationAdaptor(*this);
}

DesktopApplication::Registration DesktopApplication::registerOn(QDBusConnection bus)
{
    if (!bus.isConnected())
        return Registration::NoBus;
    // The object first: whoever sees the name may call it at once.
    if (!bus.registerObject(objectPath(m_name), this, QDBusConnection::ExportAdaptors))
        return Registration::NoBus;
    return bus.registerService(m_name) ? Registration::Registered : Registration::AlreadyRunning;
}

QString DesktopApplication::objectPath(const QString &name)
{
    QString path = u'/' + name;
    return path.replace(u'.', u'/').replace(u'-', u'_');
}

void DesktopApplication::open(const QStringList &urls)
{
    Q_EMIT opened(urls, calledFromDBus() ? message().service() : QString());
}

void DesktopApplication::refuse(const QString &sentence)
{
    if (calledFromDBus())
        sendErrorReply(refusalError(m_name), sentence);
}

void DesktopApplication::activateAction(const QString &name)
{
    if (m_actions.contains(name))
        Q_EMIT actionRequested(name);
    else if (calledFromDBus())
        sendErrorReply(QDBusError::NotSupported, QStringLiteral("There is no action \"%1\".").arg(name));
}

} // namespace Orbita
