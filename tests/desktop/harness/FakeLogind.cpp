#include "desktop/harness/FakeLogind.h"

#include "desktop/harness/Wait.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

const QString root = QStringLiteral("/org/freedesktop/login1");
const QString desktop = QStringLiteral("c1");
const QString other = QStringLiteral("2");

QString pathOf(const QString &session)
{
    return root + u"/session/"_s + (session == other ? u"_32"_s : session);
}

} // namespace

FakeLogind::FakeLogind(const QString &busAddress, Found found)
    : m_bus(busAddress),
      m_found(found),
      m_session{{u"Class"_s, u"user"_s}, {u"LockedHint"_s, false}, {u"Active"_s, true}}
{
    QDBusConnection connection = m_bus.connection();
    if (!connection.registerVirtualObject(root, this, QDBusConnection::SubPath)
        || !connection.registerService(u"org.freedesktop.login1"_s))
        throw DesktopFailure(u"logind runs there already"_s);
}

void FakeLogind::set(const QString &property, bool value)
{
    m_session[property] = value;
    auto signal
        = QDBusMessage::createSignal(pathOf(desktop), u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    signal << u"org.freedesktop.login1.Session"_s << QVariantMap{{property, value}} << QStringList();
    m_bus.connection().send(signal);
}

bool FakeLogind::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    return connection.send(answer(message));
}

QDBusMessage FakeLogind::session(const QDBusMessage &question, const QString &id)
{
    return question.createReply(QVariant::fromValue(QDBusObjectPath(pathOf(id))));
}

QDBusMessage FakeLogind::answer(const QDBusMessage &question) const
{
    const QString method = question.member();
    const QString argument = question.arguments().value(0).toString();
    if (method == "GetSessionByPID"_L1 && m_found != Found::ByIdentifier)
        return session(question, m_found == Found::ByProcess ? desktop : other);
    if (method == "GetSession"_L1 && (argument == desktop || argument == other))
        return session(question, argument);
    if (method == "GetUser"_L1)
        return question.createReply(QVariant::fromValue(QDBusObjectPath(root + u"/user/_30"_s)));
    if (method == "Get"_L1 && m_found == Found::AsDisplay) {
        QDBusArgument display;
        display.beginStructure();
        display << desktop << QDBusObjectPath(pathOf(desktop));
        display.endStructure();
        return question.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(display))));
    }
    if (method == "GetAll"_L1) {
        const QVariantMap ofManager{{u"Class"_s, u"manager"_s}, {u"LockedHint"_s, true}, {u"Active"_s, false}};
        return question.createReply(question.path() == pathOf(desktop) ? m_session : ofManager);
    }
    return question.createErrorReply(u"org.freedesktop.login1.NoSuchSession"_s, u"There is no such session"_s);
}

} // namespace Orbita
