#include "PrivateSession.h"

#include "platform/desktop/FreedesktopNotifications.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

/// A server that shows nothing, and writes down what it was asked to show.
class NotificationServer final : public QDBusVirtualObject {
public:
    explicit NotificationServer(const QString &capability) : m_capability(capability)
    {
        EXPECT_TRUE(m_bus.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), this));
        EXPECT_TRUE(m_bus.registerService(QStringLiteral("org.freedesktop.Notifications")));
    }
    ~NotificationServer() override { QDBusConnection::disconnectFromBus(QStringLiteral("server")); }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.member() == QLatin1String("GetCapabilities"))
            return connection.send(message.createReply(QStringList(m_capability)));
        EXPECT_EQ(message.member() + message.signature(), QStringLiteral("Notifysusssasa{sv}i"));
        shown = message.arguments();
        return connection.send(message.createReply(1U));
    }

    QVariantList shown;

private:
    QString m_capability;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("server"));
};

TEST(FreedesktopNotifications, AreShownAsTheyStand)
{
    for (const auto &[capability, body] : std::vector<std::pair<const char *, const char *>>{
             {"body", "1 < 2 & <b>"}, {"body-markup", "1 &lt; 2 &amp; &lt;b&gt;"}}) {
        const NotificationServer server(QString::fromLatin1(capability));
        FreedesktopNotifications notifications;
        notifications.notify(QStringLiteral("A & B"), QStringLiteral("1 < 2 & <b>"));
        ASSERT_TRUE(eventually([&] { return server.shown.size() == 8; }));
        EXPECT_EQ(server.shown[0], QStringLiteral("Orbita"));
        EXPECT_EQ(server.shown[2], QStringLiteral("org.orbita.Orbita"));
        EXPECT_EQ(server.shown[3], QStringLiteral("A & B"));
        EXPECT_EQ(server.shown[4], QString::fromLatin1(body));
        const auto hints = qdbus_cast<QVariantMap>(server.shown[6]);
        EXPECT_EQ(hints[QStringLiteral("desktop-entry")], QStringLiteral("org.orbita.Orbita"));
    }
}

TEST(FreedesktopNotifications, AreLoggedWhereNobodyShowsThemAndShownByWhoComesLater)
{
    static QStringList logged;
    const auto before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &message) { logged << message; });
    FreedesktopNotifications notifications;
    notifications.notify(QStringLiteral("A"), QStringLiteral("the text"));
    const bool wasLogged = eventually([] { return !logged.isEmpty(); });
    qInstallMessageHandler(before);
    EXPECT_TRUE(wasLogged);
    EXPECT_EQ(logged, QStringList(QStringLiteral("the text")));
    const NotificationServer late(QStringLiteral("body"));
    EXPECT_TRUE(eventually([&] { return late.shown.size() == 8; }));
}

} // namespace
} // namespace Orbita
