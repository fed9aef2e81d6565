#include "PrivateSession.h"

#include "platform/desktop/ApplicationIndex.h"
#include "platform/desktop/GioWorkspace.h"
#include "platform/desktop/StartupNotifier.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <csignal>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace Orbita {

namespace {

/// Hands out ids and writes down what becomes of them.
class RecordingNotifier final : public StartupNotifier {
public:
    struct Record {
        QList<Launchee> begun;
        int cancelled = 0;
    };
    struct Sequence final : StartupSequence {
        explicit Sequence(Record &of) : record(of) {}
        QByteArray id() const override { return "begun_TIME7"; }
        void cancel() override { ++record.cancelled; }
        Record &record;
    };
    explicit RecordingNotifier(Record &record) : m_record(record) {}

    std::unique_ptr<StartupSequence> begin(const Launchee &launchee) override
    {
        m_record.begun << launchee;
        return std::make_unique<Sequence>(m_record);
    }
    QByteArray token() override { return "token_TIME8"; }

private:
    Record &m_record;
};

using PrivateSession::install;

/// Puts a pipe in place of the application \a id. Opening one to read would wait for ever.
QString plantPipe(const QByteArray &id)
{
    const QString path = PrivateSession::path(".local/share/applications/" + id + ".desktop");
    EXPECT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    return path;
}

class GioWorkspaceTest : public testing::Test {
protected:
    GioWorkspaceTest() { PrivateSession::clear(); }

    RecordingNotifier::Record notifications;
    GioWorkspace workspace{std::make_unique<RecordingNotifier>(notifications)};
};

TEST_F(GioWorkspaceTest, AChildIsIndependentOfUs)
{
    const int ours = dup(0); // without close-on-exec
    const Probe probe("independent");
    ASSERT_TRUE(workspace.launchApplication(install("independent", probe.desktopFile())));
    const auto start = probe.waitForStart();
    close(ours);
    EXPECT_EQ(start["session"], start["process"]);
    EXPECT_FALSE(start["file"].contains(QString::number(ours)));
    const auto process = start["process"].constFirst().toInt();
    EXPECT_TRUE(eventually([&] { return kill(process, 0) != 0; })) << "an unreaped child would stay";
}

TEST_F(GioWorkspaceTest, OnlyAnApplicationThatNotifiesIsAnnouncedAndAllGetAToken)
{
    qputenv("DESKTOP_STARTUP_ID", "our own");
    const Probe notifying("notifying");
    const Probe silent("silent");
    ASSERT_TRUE(workspace.launchApplication(
        install("notifying", notifying.desktopFile("%p", "StartupNotify=true\nStartupWMClass=Probe"))));
    ASSERT_TRUE(workspace.launchApplication(install("silent", silent.desktopFile("%p"))));
    const auto first = notifying.waitForStart();
    const auto second = silent.waitForStart();
    qunsetenv("DESKTOP_STARTUP_ID");
    ASSERT_EQ(notifications.begun.size(), 1);
    EXPECT_EQ(notifications.begun.first().windowClass, QStringLiteral("Probe"));
    EXPECT_EQ(first["DESKTOP_STARTUP_ID"], QStringList{QStringLiteral("begun_TIME7")});
    EXPECT_EQ(first["XDG_ACTIVATION_TOKEN"], QStringList{QStringLiteral("begun_TIME7")});
    EXPECT_FALSE(second.contains("DESKTOP_STARTUP_ID"));
    EXPECT_EQ(second["XDG_ACTIVATION_TOKEN"], QStringList{QStringLiteral("token_TIME8")});
}

TEST_F(GioWorkspaceTest, ALaunchThatFailsIsTakenBack)
{
    const Probe probe("breaks");
    const auto result = workspace.launchApplication(
        install("breaks", probe.desktopFile("%p", "StartupNotify=true\nPath=/no/such/folder")));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), Workspace::Error::LaunchFailed);
    EXPECT_EQ(notifications.begun.size(), 1);
    EXPECT_EQ(notifications.cancelled, 1);
}

TEST_F(GioWorkspaceTest, ArgumentsAreThoseOfTheExecKey)
{
    struct Row {
        QByteArray exec;
        QByteArray fileName;
        QStringList arguments; ///< "FILE" stands for the opened file
    };
    const QByteArray hostile = "a 'b' \"c\" $(touch d) %f `e`;&|ä.txt";
    for (const auto &[exec, fileName, arguments] :
         {Row{"%p --open %f", "x.txt", {QStringLiteral("--open"), QStringLiteral("FILE")}},
          Row{"%p \"two words\" 100%% %u",
              "x.txt",
              {QStringLiteral("two words"), QStringLiteral("100%"), QStringLiteral("FILE")}},
          Row{"%p %f", hostile, {QStringLiteral("FILE")}}}) {
        const Probe probe("arguments");
        const QString application = PrivateSession::write("files/some.desktop", probe.desktopFile(exec));
        const QString file = PrivateSession::write("files/" + fileName, "x");
        ASSERT_TRUE(workspace.openFile(file, application));
        QStringList expected = arguments;
        expected.replaceInStrings(QStringLiteral("FILE"), file);
        EXPECT_EQ(probe.waitForStart()["argument"], expected) << exec.constData();
    }
}

TEST_F(GioWorkspaceTest, ABadApplicationIsRefusedAndStillHasANameAndAnIcon)
{
    const Probe probe("bad");
    const QByteArray minimal = "[Desktop Entry]\nType=Application\nName=X\n";
    const QString loop = PrivateSession::path("files/a.desktop");
    QFile::link(loop, loop);
    const QString folder = PrivateSession::path("files/folder.desktop");
    QDir().mkpath(folder);
    const std::vector<std::pair<const char *, QString>> rows{
        {"noise", install("1", "\xff\x00[[[=\n=\n")},
        {"empty", install("2", "")},
        {"no command", install("3", minimal)},
        {"a command that is not there", install("4", minimal + "Exec=/no/such\n")},
        {"unbalanced quotes", install("5", probe.desktopFile("\"%p"))},
        {"deleted by the user", install("6", probe.desktopFile("%p", "Hidden=true"))},
        {"ten megabytes", install("7", probe.desktopFile("%p", QByteArray(10'000'000, '#')))},
        {"a loop of links", loop},
        {"a pipe", plantPipe("pipe")},
        {"a folder", folder},
        {"not executable", PrivateSession::write("files/X.AppImage", "#!/bin/sh\n")}};
    for (const auto &[name, path] : rows) {
        SCOPED_TRACE(name);
        const auto result = workspace.launchApplication(path);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), path == loop ? Workspace::Error::Missing : Workspace::Error::LaunchFailed);
        EXPECT_FALSE(workspace.displayName(path).isEmpty());
        EXPECT_FALSE(workspace.icon(path).render({16, 16}).isNull());
    }
    EXPECT_FALSE(probe.wasStarted());
}

TEST_F(GioWorkspaceTest, ABundleStartsItsProgram)
{
    for (const auto &[launched, program] :
         {std::pair("100% 'Mine'.AppImage", "100% 'Mine'.AppImage"), std::pair("tool", "tool"),
          std::pair("X.app", "X.app/AppRun"), std::pair("Y.app/", "Y.app/Y"),
          std::pair("Z.app", "Z.app/Contents/MacOS/Z")}) {
        const Probe probe(program);
        const QString path = PrivateSession::path(QByteArray("files/") + launched);
        ASSERT_TRUE(workspace.launchApplication(path)) << launched;
        EXPECT_FALSE(probe.waitForStart().isEmpty()) << launched;
    }
}

/// Whether nothing above the test's own folders makes every application in them an untrusted one.
bool areModesKept()
{
    for (const QString &path : {QStringLiteral("/"), QStringLiteral("/tmp"), PrivateSession::path("files")}) {
        struct statfs system = {};
        struct stat status = {};
        const QByteArray name = QFile::encodeName(path);
        if (statfs(name.constData(), &system) != 0 || stat(name.constData(), &status) != 0
            || system.f_type == FUSE_SUPER_MAGIC || system.f_type == V9FS_MAGIC
            || (status.st_uid != 0 && status.st_uid != geteuid()))
            return false;
    }
    return true;
}

TEST_F(GioWorkspaceTest, OnlyATrustedApplicationIsStartedByOpeningIt)
{
    if (!areModesKept())
        GTEST_SKIP() << "the folders of this machine are nobody's, or their modes are made up";
    const Probe probe("opened");
    const Probe image("mine.AppImage");
    const Probe inFolder("Mine.app/AppRun");
    const QString folder = PrivateSession::path("files/Mine.app");
    const QString loose = PrivateSession::write("files/mine.desktop", probe.desktopFile());
    const QString installed = install("opened", probe.desktopFile());
    const uid_t self = geteuid();
    const uid_t somebody = self + 12345;
    const QString files = PrivateSession::path("files");
    // What is opened, what that starts, the file or folder whose mode and owner count, those, and whether it is
    // started.
    using Row = std::tuple<QString, const Probe &, QString, mode_t, uid_t, bool>;
    for (const auto &[opened, started, path, mode, owner, isStarted] :
         {Row{installed, probe, installed, 0602, self, true}, Row{loose, probe, loose, 0700, self, true},
          Row{loose, probe, loose, 0644, self, false}, Row{loose, probe, loose, 0702, self, false},
          Row{loose, probe, loose, 0755, somebody, false},
          Row{image.program(), image, image.program(), 0755, self, true},
          Row{image.program(), image, image.program(), 0757, self, false},
          Row{folder, inFolder, inFolder.program(), 0755, self, true},
          Row{folder, inFolder, inFolder.program(), 0755, somebody, false}, Row{loose, probe, loose, 0700, self, true},
          Row{loose, probe, files, 0777, self, false}, Row{folder, inFolder, files, 0777, self, false},
          Row{loose, probe, files, 0755, somebody, false}, Row{folder, inFolder, files, 01777, somebody, false},
          Row{loose, probe, files, 01777, self, true}, Row{loose, probe, files, 0755, self, true}}) {
        const QByteArray decisive = QFile::encodeName(path);
        // Only the superuser may give files away.
        if (chown(decisive.constData(), owner, gid_t(-1)) != 0 || chmod(decisive.constData(), mode) != 0)
            continue;
        const auto outcome = workspace.openUrl(QUrl::fromLocalFile(opened));
        EXPECT_EQ(bool(outcome), isStarted) << qPrintable(opened) << std::oct << mode;
        if (outcome)
            (void)started.waitForStart();
        else
            EXPECT_EQ(outcome.error(), Workspace::Error::Untrusted);
        EXPECT_EQ(chown(decisive.constData(), self, gid_t(-1)), 0);
    }
    // Nor may others give a file or a folder to any group.
    for (const QString &path : {loose, files}) {
        const QByteArray shared = QFile::encodeName(path);
        if (chown(shared.constData(), self, getegid() + 12345) == 0 && chmod(shared.constData(), 0775) == 0) {
            EXPECT_FALSE(workspace.openUrl(QUrl::fromLocalFile(loose))) << qPrintable(path);
            EXPECT_EQ(chown(shared.constData(), self, getegid()), 0);
        }
    }
}

TEST_F(GioWorkspaceTest, WhatALinkLeadsToIsStartedAndNotTheLink)
{
    if (!areModesKept())
        GTEST_SKIP() << "the folders of this machine are nobody's, or their modes are made up";
    const Probe installed("installed");
    const Probe image("real/X.AppImage"); // writes its report beside itself, by the path that it was started by
    const Probe inFolder("real/Y.app/usr/y");
    const auto link = [](const QString &target, const QByteArray &name) {
        const QString path = PrivateSession::path("files/" + name);
        EXPECT_TRUE(QFile::link(target, path));
        return path;
    };
    link(inFolder.program(), "real/Y.app/AppRun");
    const std::vector<std::pair<QString, const Probe &>> rows{
        {link(install("linked", installed.desktopFile()), "a.desktop"), installed},
        {link(image.program(), "a.AppImage"), image},
        {link(PrivateSession::path("files/real/Y.app"), "a.app"), inFolder}};
    for (const auto &[opened, started] : rows) {
        ASSERT_TRUE(workspace.openFile(opened)) << qPrintable(opened);
        EXPECT_FALSE(started.waitForStart().isEmpty());
    }
    EXPECT_FALSE(workspace.openFile(link(image.program(), "b.desktop"))) << "it is no entry";
}

TEST_F(GioWorkspaceTest, ATerminalProgramRunsInATerminalOrNotAtAll)
{
    const Probe program("program");
    const QString path = install("terminal", program.desktopFile("%p", "Terminal=true"));
    const QByteArray searchPath = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(PrivateSession::path("files")));
    const auto without = workspace.launchApplication(path);
    const Probe terminal("xterm");
    const auto with = workspace.launchApplication(path);
    qputenv("PATH", searchPath);
    ASSERT_FALSE(without);
    EXPECT_EQ(without.error(), Workspace::Error::LaunchFailed);
    ASSERT_TRUE(with);
    EXPECT_TRUE(terminal.waitForStart()["argument"].contains(program.program()));
}

TEST_F(GioWorkspaceTest, NamesAreThoseTheUserKnows)
{
    const Probe probe("named");
    const auto named = [&](const QString &path) { return workspace.displayName(path); };
    EXPECT_EQ(named(install("org.example.N", probe.desktopFile())), QStringLiteral("Probe"));
    EXPECT_EQ(named(install("bad", "[Desktop Entry]\nType=Application\nName= Two\\n lines \nExec=/no/such\n")),
              QStringLiteral("Two lines"));
    EXPECT_EQ(named(PrivateSession::path("files/gone.desktop")), QStringLiteral("gone"));
    EXPECT_EQ(named(PrivateSession::write("files/letter.app.txt", "x")), QStringLiteral("letter.app.txt"));
}

TEST_F(GioWorkspaceTest, AFileOfTheUsersOwnStandsInFrontOfTheSystems)
{
    const Probe systems("systems");
    const Probe users("users");
    const QString path = PrivateSession::write("share/applications/both.desktop", systems.desktopFile());
    install("both", users.desktopFile().replace("=Probe", "=Mine"));
    ASSERT_TRUE(eventually([&] { return workspace.displayName(path) == QStringLiteral("Mine"); }));
    ASSERT_TRUE(workspace.launchApplication(path));
    (void)users.waitForStart();
    EXPECT_FALSE(systems.wasStarted());

    const QString piped = PrivateSession::write("share/applications/sub/piped.desktop", systems.desktopFile());
    plantPipe("sub-piped");
    EXPECT_EQ(workspace.displayName(piped), QStringLiteral("Probe")) << "a pipe is not opened";
    EXPECT_TRUE(workspace.launchApplication(piped));
    (void)systems.waitForStart();
    QFile::remove(path);
    QFile::remove(piped);
}

TEST_F(GioWorkspaceTest, TheIndexHoldsTheFilesInForceOnly)
{
    const Probe probe("indexed");
    const QByteArray content = probe.desktopFile("%p", "Icon=probe\nStartupWMClass=Probe");
    install("both", content);
    install("deleted", probe.desktopFile("%p", "Hidden=true"));
    plantPipe("pipe");
    install("long", "[Desktop Entry]\nName=" + QByteArray(5'000'000, 'W') + '\n');
    QFile::link(QStringLiteral("."), PrivateSession::path(".local/share/applications/endless"));
    QDir().mkpath(PrivateSession::path(".local/share/applications/folder.desktop"));
    const QStringList systems{PrivateSession::write("share/applications/sub/nested.desktop", content),
                              PrivateSession::write("share/applications/both.desktop", content),
                              PrivateSession::write("share/applications/deleted.desktop", content),
                              PrivateSession::write("share/applications/pipe.desktop", content)};
    const DesktopCatalog catalog = readInstalledApplications();
    for (const QString &path : systems)
        QFile::remove(path);
    ASSERT_EQ(catalog.entries().size(), 2U);
    const DesktopEntry &both = catalog.entries()[0];
    EXPECT_EQ(both.id, QStringLiteral("both"));
    EXPECT_EQ(both.path, PrivateSession::path(".local/share/applications/both.desktop"));
    EXPECT_EQ(both.icon, QStringLiteral("probe"));
    EXPECT_EQ(both.startupWmClass, QStringLiteral("Probe"));
    EXPECT_EQ(both.program, QStringLiteral("indexed"));
    EXPECT_EQ(catalog.entries()[1].id, QStringLiteral("sub-nested"));
}

TEST_F(GioWorkspaceTest, ApplicationsAreReportedOncePerBurstAndRolesAndIconsFollow)
{
    const QString role = QStringLiteral("App Store");
    EXPECT_EQ(workspace.coreApplication(role), std::nullopt);
    int changes = 0;
    QObject::connect(&workspace, &Workspace::applicationsChanged, &workspace, [&changes] { ++changes; });
    const Probe probe("store");
    const QString path = install("synaptic", probe.desktopFile("%p", "Icon=/no/such/first.png"));
    install("other", probe.desktopFile());
    ASSERT_TRUE(eventually([&] { return changes >= 1; }));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(workspace.coreApplication(role), path);
    const Image first = workspace.icon(path);
    install("synaptic", probe.desktopFile("%p", "Icon=/no/such/second.png"));
    EXPECT_EQ(workspace.icon(path), first) << "read again";
    ASSERT_TRUE(eventually([&] { return changes >= 2; })) << "watching must go on after the first change";
    EXPECT_FALSE(workspace.icon(path) == first);
    QFile::remove(path);
    ASSERT_TRUE(eventually([&] { return !workspace.coreApplication(role); }));
}

} // namespace

} // namespace Orbita
