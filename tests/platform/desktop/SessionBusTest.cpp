#include "PrivateSession.h"

#include "platform/desktop/GioWorkspace.h"
#include "platform/desktop/StartupNotifier.h"

#include <QDBusConnection>
#include <QObject>
#include <QUrl>
#include <QVariantMap>

#include <gtest/gtest.h>

namespace Orbita {

// What other programs offer on the bus.

class BusApplication : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    QStringList calls;

public Q_SLOTS:
    void Activate(const QVariantMap &) { calls << QStringLiteral("activate"); }
    void Open(const QStringList &uris, const QVariantMap &) { calls << QStringLiteral("open ") + uris.join(u' '); }
};

class BusFileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")
public:
    QStringList calls;

public Q_SLOTS:
    void ShowFolders(const QStringList &uris, const QString &)
    {
        calls << QStringLiteral("folders ") + uris.join(u' ');
    }
    void ShowItems(const QStringList &uris, const QString &) { calls << QStringLiteral("items ") + uris.join(u' '); }
};

namespace {

class SessionBusTest : public testing::Test {
protected:
    SessionBusTest() { PrivateSession::clear(); }

    /// Offers \a object under \a service on a connection of its own, as another program would.
    void offer(const QString &service, const QString &path, QObject *object)
    {
        ASSERT_TRUE(m_other.registerObject(path, object, QDBusConnection::ExportAllSlots));
        ASSERT_TRUE(m_other.registerService(service));
    }
    ~SessionBusTest() override { QDBusConnection::disconnectFromBus(QStringLiteral("other")); }

    GioWorkspace workspace{std::make_unique<NoStartupNotifier>()};

private:
    QDBusConnection m_other = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("other"));
};

TEST_F(SessionBusTest, AnActivatableApplicationIsAskedOverTheBus)
{
    BusApplication application;
    offer(QStringLiteral("org.example.Probe"), QStringLiteral("/org/example/Probe"), &application);
    const Probe probe(QStringLiteral("activatable"));
    const QString path = PrivateSession::install(QStringLiteral("org.example.Probe.desktop"),
                                                 probe.desktopFile("%p", "DBusActivatable=true"));
    const QString file = PrivateSession::write(QStringLiteral("files/a b.txt"), "x");
    ASSERT_TRUE(workspace.launchApplication(path));
    ASSERT_TRUE(workspace.openFile(file, path));
    ASSERT_TRUE(waitUntil([&] { return application.calls.size() == 2; }));
    EXPECT_EQ(application.calls[0], QStringLiteral("activate"));
    EXPECT_EQ(application.calls[1], QStringLiteral("open ") + QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded));
    EXPECT_FALSE(probe.wasStarted());
}

TEST_F(SessionBusTest, TheFileManagerShowsFoldersAndSelectsFiles)
{
    BusFileManager fileManager;
    offer(QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
          &fileManager);
    const QString folder = PrivateSession::path(QStringLiteral("files"));
    const QString file = PrivateSession::write(QStringLiteral("files/ä #1.txt"), "x");
    ASSERT_TRUE(workspace.showInFileManager(folder));
    ASSERT_TRUE(workspace.showInFileManager(file));
    ASSERT_TRUE(waitUntil([&] { return fileManager.calls.size() == 2; }));
    EXPECT_EQ(fileManager.calls[0],
              QStringLiteral("folders ") + QUrl::fromLocalFile(folder).toString(QUrl::FullyEncoded));
    EXPECT_EQ(fileManager.calls[1], QStringLiteral("items ") + QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded));
}

TEST_F(SessionBusTest, WithoutThatServiceTheFolderIsOpenedByItsDefaultApplication)
{
    const Probe probe(QStringLiteral("folders"));
    PrivateSession::install(QStringLiteral("folders.desktop"), probe.desktopFile("%p %f", "MimeType=inode/directory;"));
    PrivateSession::associate(QStringLiteral("inode/directory"), QStringLiteral("folders.desktop"));
    const QString file = PrivateSession::write(QStringLiteral("files/shown.txt"), "x");
    ASSERT_TRUE(workspace.showInFileManager(file));
    const auto start = probe.waitForStart();
    ASSERT_TRUE(start);
    EXPECT_EQ(start->arguments, QStringList{PrivateSession::path(QStringLiteral("files"))});
}

} // namespace

} // namespace Orbita

#include "SessionBusTest.moc"
