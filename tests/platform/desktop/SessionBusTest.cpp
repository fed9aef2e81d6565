#include "PrivateSession.h"

#include "platform/desktop/GioWorkspace.h"
#include "platform/desktop/StartupNotifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QUrl>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

/// An object that another program offers on the bus: takes every call and writes down its name and first argument.
class BusObject final : public QDBusVirtualObject {
public:
    BusObject(const QString &service, const QString &path)
    {
        EXPECT_TRUE(m_other.registerVirtualObject(path, this));
        EXPECT_TRUE(m_other.registerService(service));
    }
    ~BusObject() override { QDBusConnection::disconnectFromBus(QStringLiteral("other")); }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        calls << message.member() + u' ' + message.arguments().value(0).toStringList().join(u' ');
        return connection.send(message.createReply());
    }
    /// Waits for the calls \a expected, and no others.
    void expectCalls(const QStringList &expected) const
    {
        EXPECT_TRUE(eventually([&] { return calls.size() >= expected.size(); }));
        EXPECT_EQ(calls, expected);
    }

    QStringList calls;

private:
    QDBusConnection m_other = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("other"));
};

QString urlOf(const QString &path)
{
    return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}

class SessionBusTest : public testing::Test {
protected:
    SessionBusTest() { PrivateSession::clear(); }

    GioWorkspace workspace{std::make_unique<NoStartupNotifier>()};
};

TEST_F(SessionBusTest, AnActivatableApplicationIsAskedOverTheBus)
{
    const BusObject application(QStringLiteral("org.example.Probe"), QStringLiteral("/org/example/Probe"));
    const Probe probe("activatable");
    const QString path = PrivateSession::install("org.example.Probe", probe.desktopFile("%p", "DBusActivatable=true"));
    const QString file = PrivateSession::write("files/a b.txt", "x");
    ASSERT_TRUE(workspace.launchApplication(path));
    ASSERT_TRUE(workspace.openFile(file, path));
    application.expectCalls({QStringLiteral("Activate "), QStringLiteral("Open ") + urlOf(file)});
    EXPECT_FALSE(probe.wasStarted());
}

TEST_F(SessionBusTest, TheFileManagerShowsFoldersAndSelectsFiles)
{
    const BusObject fileManager(QStringLiteral("org.freedesktop.FileManager1"),
                                QStringLiteral("/org/freedesktop/FileManager1"));
    const QString folder = PrivateSession::path("files");
    const QString file = PrivateSession::write("files/ä #1.txt", "x");
    ASSERT_TRUE(workspace.showInFileManager(folder));
    ASSERT_TRUE(workspace.showInFileManager(file));
    fileManager.expectCalls(
        {QStringLiteral("ShowFolders ") + urlOf(folder), QStringLiteral("ShowItems ") + urlOf(file)});
}

TEST_F(SessionBusTest, WithoutThatServiceTheFolderIsOpenedByItsDefaultApplication)
{
    const Probe probe("folders");
    PrivateSession::install("folders", probe.desktopFile("%p %f", "MimeType=inode/directory;"));
    PrivateSession::associate("inode/directory", "folders");
    const QString file = PrivateSession::write("files/shown.txt", "x");
    ASSERT_TRUE(workspace.showInFileManager(file));
    EXPECT_EQ(probe.waitForStart()["argument"], QStringList{PrivateSession::path("files")});
}

} // namespace
} // namespace Orbita
