// The command `orbita` and the one instance that it talks to.

#include "desktop/OrbitaSession.h"
#include "support/RowName.h"

#include <QFile>

namespace Orbita {
namespace {

const QString instanceName = QStringLiteral("org.orbita.Orbita");

/// The processes of the session that are the program behind the command.
QList<qint64> instances(OrbitaSession &session)
{
    QList<qint64> found;
    for (const qint64 pid : session.desktop().processes().all()) {
        if (QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(pid)).endsWith(QStringLiteral("/orbita-desktop")))
            found.append(pid);
    }
    return found;
}

QProcessEnvironment withDisplay(const QString &display)
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("DISPLAY"), display);
    return environment;
}

TEST(Commands, hideTheRing)
{
    OrbitaSession session;
    session.show();
    EXPECT_EQ(session.orbita({QStringLiteral("hide")}), 0);
    session.waitUntilHidden();
    EXPECT_EQ(session.orbita({QStringLiteral("hide")}), 0) << "it is hidden already";
}

TEST(Commands, toggleTheRing)
{
    OrbitaSession session;
    const QStringList toggle{QStringLiteral("toggle")};
    session.input().moveTo({640, 400});
    ASSERT_EQ(session.orbita(toggle), 0);
    session.waitForRing();
    session.waitUntilStill();
    ASSERT_EQ(session.orbita(toggle), 0);
    session.waitUntilHidden();
    ASSERT_EQ(session.orbita(toggle), 0);
    session.waitForRing();
}

TEST(Commands, openTheSettings)
{
    OrbitaSession session;
    ASSERT_EQ(session.orbita({QStringLiteral("settings")}), 0);
    const WindowInfo settings = session.waitForSettings();
    EXPECT_TRUE(settings.managed);
    EXPECT_FALSE(session.ring());
    session.windows().close(settings.id);
    session.windows().waitUntilGone(withTitle(settings.title), QStringLiteral("the settings are closed"));
    session.show();
}

TEST(Commands, openTheSettingsOfTheRunningInstance)
{
    OrbitaSession session;
    Program &first = session.desktop().start(QStringLiteral("orbita"));
    session.desktop().bus().waitForName(instanceName);
    EXPECT_EQ(session.orbita({}), 0);
    session.waitForSettings();
    EXPECT_EQ(session.pid(), first.pid()) << "the command has become the program itself";
    EXPECT_EQ(instances(session).size(), 1);
}

TEST(Commands, endTheInstance)
{
    OrbitaSession session;
    session.show();
    const qint64 pid = session.pid();
    EXPECT_EQ(session.orbita({QStringLiteral("quit")}), 0);
    waitUntil([&] { return hasEnded(pid); }, QStringLiteral("the program has ended"));
    EXPECT_FALSE(session.desktop().bus().hasOwner(instanceName));
    EXPECT_FALSE(session.ring());
    session.show();
    EXPECT_NE(session.pid(), pid);
}

TEST(Commands, passOnWhatASecondInstanceWasStartedFor)
{
    OrbitaSession session;
    session.show();
    session.dismiss();
    // As a command does that found no instance a moment ago.
    Program &late = session.desktop().start(QStringLiteral("orbita-desktop"), {QStringLiteral("--show")});
    EXPECT_EQ(late.waitForExit(), 0);
    session.waitForRing();
    EXPECT_EQ(instances(session), QList<qint64>{session.pid()});
}

struct Refused {
    const char *name;
    const char *command; ///< what follows "orbita"
    const char *display; ///< nullptr: the session's own
    bool sessionBus;
    int status;
    const char *line;
};

class RefusedCommand : public testing::TestWithParam<Refused> {};

TEST_P(RefusedCommand, saysWhyInOneLine)
{
    SessionOptions options;
    options.sessionBus = GetParam().sessionBus;
    options.windowManager = WindowManager::None;
    OrbitaSession session(options);
    const char *display = GetParam().display;
    const QStringList arguments = QString::fromLatin1(GetParam().command).split(u' ', Qt::SkipEmptyParts);
    const CommandResult result
        = session.run(arguments, display ? withDisplay(QLatin1String(display)) : QProcessEnvironment());
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_EQ(result.lines, QStringList(QLatin1String("orbita: ") + QLatin1String(GetParam().line)));
    EXPECT_TRUE(instances(session).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Commands, RefusedCommand,
    testing::Values(
        Refused{"an unknown command", "dance", nullptr, true, 2, "Unknown command; see \"orbita --help\"."},
        Refused{"two commands", "show hide", nullptr, true, 2, "Unknown command; see \"orbita --help\"."},
        Refused{"hide while nothing runs", "hide", nullptr, true, 1, "Orbita is not running."},
        Refused{"quit while nothing runs", "quit", nullptr, true, 1, "Orbita is not running."},
        Refused{"quit without a session bus", "quit", nullptr, false, 1,
                "There is no session bus, so a running Orbita cannot be reached."},
        Refused{"start without a display", "", "", true, 1, "There is no X11 display to show the ring on."},
        Refused{"show without a display", "show", "", true, 1, "There is no X11 display to show the ring on."},
        Refused{"start on a display that is not there", "", ":9999", true, 1, "The X11 display cannot be reached."},
        Refused{"show on a display that is not there", "show", ":9999", true, 1, "The X11 display cannot be reached."}),
    rowName<Refused>);

TEST(Commands, showTheRingWithoutASessionBus)
{
    SessionOptions options;
    options.sessionBus = false;
    OrbitaSession session(options);
    session.input().moveTo({640, 400});
    const CommandResult shown = session.run({QStringLiteral("show")});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.lines.filter(QStringLiteral("bus")).size(), 1) << qPrintable(shown.lines.join(u'\n'));
    session.waitForRing();
    session.dismiss();
}

TEST(Commands, openTheSettingsWithTheFirstStartOnly)
{
    const QString launchedBefore = QStringLiteral("launchedBefore");
    OrbitaSession session;
    QFile::remove(session.defaultsFile());
    Program &first = session.desktop().start(QStringLiteral("orbita"));
    session.waitForSettings();
    waitUntil([&] { return session.defaults().value(launchedBefore).toBool(); },
              QStringLiteral("the launch is remembered"));
    ASSERT_EQ(session.orbita({QStringLiteral("quit")}), 0);
    EXPECT_EQ(first.waitForExit(), 0);

    session.show();
    EXPECT_EQ(session.windows().matching(withClass(QStringLiteral("orbita"))).size(), 1) << "the ring alone";
}

TEST(Commands, showTheRingInSpiteOfDamagedSettings)
{
    OrbitaSession session;
    const QByteArray damaged = "<plist><dict><key>swiftMode</key><integer>1";
    session.desktop().folders().write(session.defaultsFile(), damaged);
    session.show();
    EXPECT_EQ(OrbitaSession::setAside(session.defaultsFile()), QList<QByteArray>{damaged});
    waitUntil([&] { return session.defaults().value(QStringLiteral("launchedBefore")).toBool(); },
              QStringLiteral("there are new settings"));
}

} // namespace
} // namespace Orbita
