#include "platform/desktop/LogindSession.h"

#include "platform/desktop/BusCall.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingReply>

#include <unistd.h>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

const QString serviceName = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString lockedProperty = QStringLiteral("LockedHint");
const QString activeProperty = QStringLiteral("Active");

QDBusMessage question(const QString &path, const QString &interface, const QString &method, const QVariant &argument)
{
    QDBusMessage message = QDBusMessage::createMethodCall(serviceName, path, interface, method);
    message.setAutoStartService(false);
    message << argument;
    return message;
}

QDBusMessage questionForProperties(const QString &sessionPath)
{
    return question(sessionPath, propertiesInterface, u"GetAll"_s, sessionInterface);
}

/// The path of the session that the property "Display" of a user names; empty when it names none.
QString pathOfDisplay(const QDBusPendingReply<QDBusVariant> &answer)
{
    const QVariant value = answer.isError() ? QVariant() : answer.value().variant();
    const auto argument = value.value<QDBusArgument>();
    if (value.metaType() != QMetaType::fromType<QDBusArgument>() || argument.currentSignature() != "(so)"_L1)
        return {};
    QString id;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> id >> path;
    argument.endStructure();
    return id.isEmpty() ? QString() : path.path();
}

bool truth(const QVariantMap &properties, const QString &name, bool otherwise)
{
    const QVariant value = properties.value(name);
    return value.metaType() == QMetaType::fromType<bool>() ? value.toBool() : otherwise;
}

/// Whether a user may sit before \a session: it is not that of a service manager or a greeter, not one over a network,
/// and has not ended with programs left over, as a terminal that outlives its windows leaves them.
bool isOfUser(const QVariantMap &session)
{
    return session.value(u"Class"_s).toString().startsWith("user"_L1)
        && session.value(u"State"_s).toString() != "closing"_L1 && !truth(session, u"Remote"_s, false);
}

} // namespace

LogindSession::LogindSession(QObject *parent) : QObject(parent)
{
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                forget();
                if (!owner.isEmpty())
                    lookUp();
            });
}

LogindSession::~LogindSession() = default;

void LogindSession::follow(const QDBusConnection &systemBus)
{
    m_bus = systemBus;
    if (!m_bus.isConnected())
        return;
    m_watcher.setConnection(m_bus);
    m_watcher.addWatchedService(serviceName);
    m_bus.connect(serviceName, managerPath, managerInterface, u"SessionNew"_s, this, SLOT(sessionAppeared()));
    lookUp();
}

void LogindSession::ask(const QDBusMessage &question, const Answered &then)
{
    askOnBus(m_bus, question, m_asker.get(), then);
}

void LogindSession::sessionAppeared()
{
    // A service of the user's may be quicker than the session that it belongs to.
    if (m_path.isEmpty())
        lookUp();
}

void LogindSession::lookUp()
{
    m_asker = std::make_unique<QObject>();
    QList<QDBusMessage> questions{
        question(managerPath, managerInterface, u"GetSessionByPID"_s, quint32(QCoreApplication::applicationPid()))};
    // A session hands it to the user's services together with its display, but it may be a leftover.
    const QString id = qEnvironmentVariable("XDG_SESSION_ID");
    if (!id.isEmpty())
        questions.append(question(managerPath, managerInterface, u"GetSession"_s, id));
    consider(questions);
}

void LogindSession::consider(QList<QDBusMessage> questions)
{
    if (questions.isEmpty()) {
        takeDisplay();
        return;
    }
    const QDBusMessage first = questions.takeFirst();
    ask(first, [this, questions](const QDBusPendingCall &answer) {
        const QDBusPendingReply<QDBusObjectPath> found(answer);
        if (found.isError()) {
            consider(questions);
            return;
        }
        const QString path = found.value().path();
        ask(questionForProperties(path), [this, questions, path](const QDBusPendingCall &properties) {
            const QDBusPendingReply<QVariantMap> session(properties);
            if (!session.isError() && isOfUser(session.value()))
                take(path);
            else
                consider(questions);
        });
    });
}

void LogindSession::takeDisplay()
{
    ask(question(managerPath, managerInterface, u"GetUser"_s, quint32(::getuid())), [this](const auto &answer) {
        const QDBusPendingReply<QDBusObjectPath> user(answer);
        if (user.isError())
            return;
        QDBusMessage request
            = question(user.value().path(), propertiesInterface, u"Get"_s, u"org.freedesktop.login1.User"_s);
        request << u"Display"_s;
        ask(request, [this](const auto &display) {
            if (const QString path = pathOfDisplay(display); !path.isEmpty())
                take(path);
        });
    });
}

void LogindSession::take(const QString &path)
{
    m_path = path;
    m_bus.connect(serviceName, m_path, propertiesInterface, u"PropertiesChanged"_s, this,
                  SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
    readProperties(); // again: they may have changed before they were followed
}

void LogindSession::forget()
{
    m_asker.reset();
    if (!m_path.isEmpty())
        m_bus.disconnect(serviceName, m_path, propertiesInterface, u"PropertiesChanged"_s, this,
                         SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
    m_path.clear();
    apply({{lockedProperty, false}, {activeProperty, true}});
}

void LogindSession::readProperties()
{
    ask(questionForProperties(m_path), [this](const QDBusPendingCall &answer) {
        const QDBusPendingReply<QVariantMap> properties(answer);
        if (!properties.isError())
            apply(properties.value());
    });
}

void LogindSession::propertiesChanged(const QString &interface, const QVariantMap &properties,
                                      const QStringList &invalidated)
{
    if (interface != sessionInterface || m_path.isEmpty()) // it may have been under way while it was forgotten
        return;
    apply(properties);
    if (invalidated.contains(lockedProperty) || invalidated.contains(activeProperty))
        readProperties();
}

void LogindSession::apply(const QVariantMap &properties)
{
    const bool isLocked = truth(properties, lockedProperty, m_isLocked);
    const bool isActive = truth(properties, activeProperty, m_isActive);
    if (isLocked == m_isLocked && isActive == m_isActive)
        return;
    m_isLocked = isLocked;
    m_isActive = isActive;
    Q_EMIT changed();
}

} // namespace Orbita
