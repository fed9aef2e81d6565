#include "PrivateSession.h"

#include "platform/desktop/ApplicationIndex.h"
#include "platform/desktop/GioWorkspace.h"
#include "platform/desktop/StartupNotifier.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "support/RowName.h"

#include <csignal>
#include <sys/stat.h>
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
    explicit RecordingNotifier(Record &record) : m_record(record) {}

    std::unique_ptr<StartupSequence> begin(const Launchee &launchee) override
    {
        class Sequence final : public StartupSequence {
        public:
            explicit Sequence(Record &record) : m_record(record) {}
            QByteArray id() const override { return "begun_TIME7"; }
            void cancel() override { ++m_record.cancelled; }

        private:
            Record &m_record;
        };
        m_record.begun << launchee;
        return std::make_unique<Sequence>(m_record);
    }
    QByteArray token() override { return "token_TIME8"; }

private:
    Record &m_record;
};

class GioWorkspaceTest : public testing::Test {
protected:
    GioWorkspaceTest() { PrivateSession::clear(); }

    RecordingNotifier::Record notifications;
    GioWorkspace workspace{std::make_unique<RecordingNotifier>(notifications)};
};

TEST_F(GioWorkspaceTest, AChildIsIndependentOfUs)
{
    const int ours = dup(0); // without close-on-exec
    struct sigaction before = {};
    struct sigaction ignore = {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGUSR1, &ignore, &before);
    const Probe probe(QStringLiteral("independent"));
    const QString path = PrivateSession::install(QStringLiteral("independent.desktop"), probe.desktopFile());
    ASSERT_TRUE(workspace.launchApplication(path));
    const auto start = probe.waitForStart();
    close(ours);
    sigaction(SIGUSR1, &before, nullptr);
    ASSERT_TRUE(start);
    EXPECT_EQ(start->session, start->process);
    EXPECT_FALSE(start->openFiles.contains(QString::number(ours)));
    EXPECT_TRUE(waitUntil([&] { return kill(pid_t(start->process), 0) != 0; })) << "an unreaped child would stay";
}

TEST_F(GioWorkspaceTest, OnlyAnApplicationThatNotifiesIsAnnouncedAndAllGetAToken)
{
    qputenv("DESKTOP_STARTUP_ID", "our own");
    const Probe notifying(QStringLiteral("notifying"));
    const Probe silent(QStringLiteral("silent"));
    ASSERT_TRUE(workspace.launchApplication(PrivateSession::install(
        QStringLiteral("notifying.desktop"), notifying.desktopFile("%p", "StartupNotify=true\nStartupWMClass=Probe"))));
    ASSERT_TRUE(workspace.launchApplication(
        PrivateSession::install(QStringLiteral("silent.desktop"), silent.desktopFile("%p"))));
    const auto first = notifying.waitForStart();
    const auto second = silent.waitForStart();
    qunsetenv("DESKTOP_STARTUP_ID");
    ASSERT_TRUE(first && second);
    ASSERT_EQ(notifications.begun.size(), 1);
    EXPECT_EQ(notifications.begun.first().windowClass, QStringLiteral("Probe"));
    EXPECT_EQ(first->environment.value(QStringLiteral("DESKTOP_STARTUP_ID")), QStringLiteral("begun_TIME7"));
    EXPECT_EQ(first->environment.value(QStringLiteral("XDG_ACTIVATION_TOKEN")), QStringLiteral("begun_TIME7"));
    EXPECT_FALSE(second->environment.contains(QStringLiteral("DESKTOP_STARTUP_ID")));
    EXPECT_EQ(second->environment.value(QStringLiteral("XDG_ACTIVATION_TOKEN")), QStringLiteral("token_TIME8"));
}

TEST_F(GioWorkspaceTest, ALaunchThatFailsIsTakenBack)
{
    const Probe probe(QStringLiteral("breaks"));
    const QString path = PrivateSession::write(QStringLiteral("files/breaks.desktop"),
                                               probe.desktopFile("%p", "StartupNotify=true\nPath=/no/such/folder"));
    const auto result = workspace.launchApplication(path);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), Workspace::Error::LaunchFailed);
    EXPECT_EQ(notifications.begun.size(), 1);
    EXPECT_EQ(notifications.cancelled, 1);
}

struct ArgumentsRow {
    const char *name;
    QByteArray exec;
    QString fileName;
    QStringList arguments; ///< "FILE" stands for the opened file
};

class Arguments : public testing::TestWithParam<ArgumentsRow> {};

TEST_P(Arguments, AreThoseOfTheExecKey)
{
    PrivateSession::clear();
    GioWorkspace workspace(std::make_unique<NoStartupNotifier>());
    const Probe probe(QStringLiteral("arguments"));
    const QString application
        = PrivateSession::write(QStringLiteral("files/some.desktop"), probe.desktopFile(GetParam().exec));
    const QString file = PrivateSession::write(QStringLiteral("files/") + GetParam().fileName, "x");
    ASSERT_TRUE(workspace.openFile(file, application));
    const auto start = probe.waitForStart();
    ASSERT_TRUE(start);
    QStringList expected = GetParam().arguments;
    expected.replaceInStrings(QStringLiteral("FILE"), file);
    EXPECT_EQ(start->arguments, expected);
}

const QString hostile = QStringLiteral("a 'b' \"c\" $(touch d) %f `e`;&|ä.txt");

INSTANTIATE_TEST_SUITE_P(
    Exec, Arguments,
    testing::Values(ArgumentsRow{"a file by its path",
                                 "%p --open %f",
                                 QStringLiteral("x.txt"),
                                 {QStringLiteral("--open"), QStringLiteral("FILE")}},
                    ArgumentsRow{"without a field code the file comes last",
                                 "%p --new",
                                 QStringLiteral("x.txt"),
                                 {QStringLiteral("--new"), QStringLiteral("FILE")}},
                    ArgumentsRow{"quotes and a percent sign",
                                 "%p \"two words\" 100%% %u",
                                 QStringLiteral("x.txt"),
                                 {QStringLiteral("two words"), QStringLiteral("100%"), QStringLiteral("FILE")}},
                    ArgumentsRow{"a hostile name is one argument", "%p %f", hostile, {QStringLiteral("FILE")}}),
    rowName<ArgumentsRow>);

struct BadRow {
    const char *name;
    std::function<QString(const Probe &)> plant; ///< returns the path to launch
    Workspace::Error error;
};

QString plantBad(const QByteArray &content)
{
    return PrivateSession::install(QStringLiteral("bad.desktop"), content);
}

class BadApplication : public testing::TestWithParam<BadRow> {};

TEST_P(BadApplication, IsRefusedAndStillHasANameAndAnIcon)
{
    PrivateSession::clear();
    GioWorkspace workspace(std::make_unique<NoStartupNotifier>());
    const Probe probe(QStringLiteral("bad"));
    const QString path = GetParam().plant(probe);
    const auto result = workspace.launchApplication(path);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), GetParam().error);
    EXPECT_FALSE(probe.wasStarted());
    EXPECT_FALSE(workspace.displayName(path).isEmpty());
    EXPECT_FALSE(workspace.icon(path).render({16, 16}).isNull());
}

INSTANTIATE_TEST_SUITE_P(
    Applications, BadApplication,
    testing::Values(
        BadRow{"noise", [](const Probe &) { return plantBad("\xff\x00[[[=\n=\n"); }, Workspace::Error::LaunchFailed},
        BadRow{"empty", [](const Probe &) { return plantBad(""); }, Workspace::Error::LaunchFailed},
        BadRow{"no command", [](const Probe &) { return plantBad("[Desktop Entry]\nType=Application\nName=X\n"); },
               Workspace::Error::LaunchFailed},
        BadRow{"a command that is not there",
               [](const Probe &) { return plantBad("[Desktop Entry]\nType=Application\nName=X\nExec=/no/such\n"); },
               Workspace::Error::LaunchFailed},
        BadRow{"unbalanced quotes", [](const Probe &p) { return plantBad(p.desktopFile("\"%p")); },
               Workspace::Error::LaunchFailed},
        BadRow{"deleted by the user", [](const Probe &p) { return plantBad(p.desktopFile("%p", "Hidden=true")); },
               Workspace::Error::LaunchFailed},
        BadRow{"ten megabytes",
               [](const Probe &p) { return plantBad(p.desktopFile("%p", QByteArray(10'000'000, '#'))); },
               Workspace::Error::LaunchFailed},
        BadRow{"a loop of links",
               [](const Probe &) {
                   const QString a = PrivateSession::path(QStringLiteral("files/a.desktop"));
                   QFile::link(a, a);
                   return a;
               },
               Workspace::Error::Missing},
        BadRow{"a pipe",
               [](const Probe &) {
                   const QString pipe = PrivateSession::path(QStringLiteral("data/applications/pipe.desktop"));
                   mkfifo(QFile::encodeName(pipe).constData(), 0600);
                   return pipe;
               },
               Workspace::Error::LaunchFailed},
        BadRow{"a folder",
               [](const Probe &) {
                   const QString folder = PrivateSession::path(QStringLiteral("files/folder.desktop"));
                   QDir().mkpath(folder);
                   return folder;
               },
               Workspace::Error::LaunchFailed},
        BadRow{"an AppImage that may not be executed",
               [](const Probe &) { return PrivateSession::write(QStringLiteral("files/X.AppImage"), "#!/bin/sh\n"); },
               Workspace::Error::LaunchFailed}),
    rowName<BadRow>);

struct BundleRow {
    const char *name;
    const char *launched; ///< below the files
    const char *program;  ///< what must start
};

class Bundle : public testing::TestWithParam<BundleRow> {};

TEST_P(Bundle, StartsItsProgram)
{
    PrivateSession::clear();
    GioWorkspace workspace(std::make_unique<NoStartupNotifier>());
    const Probe probe(QLatin1String(GetParam().program));
    const QString path = PrivateSession::path(QStringLiteral("files/") + QLatin1String(GetParam().launched));
    ASSERT_TRUE(workspace.launchApplication(path));
    EXPECT_TRUE(probe.waitForStart());
}

INSTANTIATE_TEST_SUITE_P(Programs, Bundle,
                         testing::Values(BundleRow{"an AppImage", "100% 'Mine'.AppImage", "100% 'Mine'.AppImage"},
                                         BundleRow{"any executable file", "tool", "tool"},
                                         BundleRow{"a folder with AppRun", "X.app", "X.app/AppRun"},
                                         BundleRow{"a folder with a program of its name", "Y.app/", "Y.app/Y"},
                                         BundleRow{"a folder with a nested program", "Z.app",
                                                   "Z.app/Contents/MacOS/Z"}),
                         rowName<BundleRow>);

TEST_F(GioWorkspaceTest, ATerminalProgramRunsInATerminalOrNotAtAll)
{
    const Probe program(QStringLiteral("program"));
    const QString path
        = PrivateSession::install(QStringLiteral("terminal.desktop"), program.desktopFile("%p", "Terminal=true"));
    const QByteArray searchPath = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(PrivateSession::path(QStringLiteral("files"))));
    const auto without = workspace.launchApplication(path);
    const Probe terminal(QStringLiteral("xterm"));
    const auto with = workspace.launchApplication(path);
    qputenv("PATH", searchPath);
    ASSERT_FALSE(without);
    EXPECT_EQ(without.error(), Workspace::Error::LaunchFailed);
    ASSERT_TRUE(with);
    const auto start = terminal.waitForStart();
    ASSERT_TRUE(start);
    EXPECT_TRUE(start->arguments.contains(program.program()));
}

TEST_F(GioWorkspaceTest, NamesAreThoseTheUserKnows)
{
    const Probe probe(QStringLiteral("named"));
    const auto named = [&](const QString &path) { return workspace.displayName(path); };
    EXPECT_EQ(named(PrivateSession::install(QStringLiteral("org.example.N.desktop"), probe.desktopFile())),
              QStringLiteral("Probe"));
    EXPECT_EQ(named(plantBad("[Desktop Entry]\nType=Application\nName= Two\\n lines \nExec=/no/such\n")),
              QStringLiteral("Two lines"));
    EXPECT_EQ(named(PrivateSession::path(QStringLiteral("files/gone.desktop"))), QStringLiteral("gone"));
    EXPECT_EQ(named(PrivateSession::write(QStringLiteral("files/letter.app.txt"), "x")),
              QStringLiteral("letter.app.txt"));
}

TEST_F(GioWorkspaceTest, AFileOfTheUsersOwnStandsInFrontOfTheSystems)
{
    const Probe systems(QStringLiteral("systems"));
    const Probe users(QStringLiteral("users"));
    const QString path
        = PrivateSession::write(QStringLiteral("share/applications/both.desktop"), systems.desktopFile());
    PrivateSession::install(QStringLiteral("both.desktop"), users.desktopFile().replace("=Probe", "=Mine"));
    ASSERT_TRUE(waitUntil([&] { return workspace.displayName(path) == QStringLiteral("Mine"); }));
    ASSERT_TRUE(workspace.launchApplication(path));
    EXPECT_TRUE(users.waitForStart());
    EXPECT_FALSE(systems.wasStarted());
    QFile::remove(path);
}

/// Opening one to read would wait for ever.
void plantPipe(const char *name)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(PrivateSession::path(QLatin1String(name))).constData(), 0600), 0);
}

TEST_F(GioWorkspaceTest, APipeInFrontOfAFileIsNotOpened)
{
    const Probe probe(QStringLiteral("hidden-by-pipe"));
    const QString path
        = PrivateSession::write(QStringLiteral("share/applications/sub/piped.desktop"), probe.desktopFile());
    plantPipe("data/applications/sub-piped.desktop");
    EXPECT_EQ(workspace.displayName(path), QStringLiteral("Probe"));
    EXPECT_TRUE(workspace.launchApplication(path));
    EXPECT_TRUE(probe.waitForStart());
    QFile::remove(path);
}

TEST_F(GioWorkspaceTest, TheIndexHoldsTheFilesInForceOnly)
{
    const Probe probe(QStringLiteral("indexed"));
    const QByteArray content = probe.desktopFile("%p", "Icon=probe\nStartupWMClass=Probe");
    PrivateSession::install(QStringLiteral("both.desktop"), content);
    PrivateSession::install(QStringLiteral("deleted.desktop"), probe.desktopFile("%p", "Hidden=true"));
    plantPipe("data/applications/pipe.desktop");
    const QStringList systems{PrivateSession::write(QStringLiteral("share/applications/sub/nested.desktop"), content),
                              PrivateSession::write(QStringLiteral("share/applications/both.desktop"), content),
                              PrivateSession::write(QStringLiteral("share/applications/deleted.desktop"), content),
                              PrivateSession::write(QStringLiteral("share/applications/pipe.desktop"), content)};
    const DesktopCatalog catalog = readInstalledApplications();
    for (const QString &path : systems)
        QFile::remove(path);
    ASSERT_EQ(catalog.entries().size(), 2U);
    const DesktopEntry &both = catalog.entries()[0];
    EXPECT_EQ(both.id, QStringLiteral("both"));
    EXPECT_EQ(both.path, PrivateSession::path(QStringLiteral("data/applications/both.desktop")));
    EXPECT_EQ(both.icon, QStringLiteral("probe"));
    EXPECT_EQ(both.startupWmClass, QStringLiteral("Probe"));
    EXPECT_EQ(both.program, QStringLiteral("indexed"));
    EXPECT_EQ(catalog.entries()[1].id, QStringLiteral("sub-nested"));
}

TEST_F(GioWorkspaceTest, AnIconIsRememberedUntilApplicationsChange)
{
    int changes = 0;
    QObject::connect(&workspace, &Workspace::applicationsChanged, &workspace, [&changes] { ++changes; });
    QCoreApplication::processEvents(); // the watching begins
    const auto install = [](const QByteArray &picture) {
        PrivateSession::install(QStringLiteral("pictured.desktop"),
                                "[Desktop Entry]\nType=Application\nName=X\nExec=true\nIcon=" + picture + '\n');
    };
    install("/no/such/first.png");
    ASSERT_TRUE(waitUntil([&] { return changes == 1; }));
    const QString path = PrivateSession::path(QStringLiteral("data/applications/pictured.desktop"));
    const Image first = workspace.icon(path);
    install("/no/such/second.png");
    EXPECT_EQ(workspace.icon(path), first) << "read again";
    ASSERT_TRUE(waitUntil([&] { return changes == 2; }));
    EXPECT_FALSE(workspace.icon(path) == first);
}

TEST_F(GioWorkspaceTest, ApplicationsAreReportedOncePerBurstAndRolesFollow)
{
    const QString role = QStringLiteral("App Store");
    EXPECT_EQ(workspace.coreApplication(role), std::nullopt);
    int changes = 0;
    QObject::connect(&workspace, &Workspace::applicationsChanged, &workspace, [&changes] { ++changes; });
    const Probe probe(QStringLiteral("store"));
    const QString path = PrivateSession::install(QStringLiteral("synaptic.desktop"), probe.desktopFile());
    PrivateSession::install(QStringLiteral("other.desktop"), probe.desktopFile());
    ASSERT_TRUE(waitUntil([&] { return changes >= 1; }));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(workspace.coreApplication(role), path);
    QFile::remove(path);
    ASSERT_TRUE(waitUntil([&] { return changes >= 2; })) << "watching must go on after the first change";
    EXPECT_EQ(workspace.coreApplication(role), std::nullopt);
}

} // namespace

} // namespace Orbita
