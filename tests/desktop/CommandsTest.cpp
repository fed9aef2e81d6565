// The command `orbita` and the one instance that it talks to.

#include "desktop/OrbitaSession.h"
#include "support/RowName.h"

#include <QDBusMessage>
#include <QFile>

#include <cstdlib>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

const QString instanceName = u"org.orbita.Orbita"_s;

/// The processes of the session that are the program behind the command.
QList<qint64> instances(OrbitaSession &session)
{
    QList<qint64> found;
    for (const qint64 pid : session.desktop().processes().all()) {
        if (QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(pid)).endsWith(u"/orbita-desktop"_s))
            found.append(pid);
    }
    return found;
}

void waitForFirstLaunch(const OrbitaSession &session)
{
    waitUntil([&] { return session.defaults().value(u"launchedBefore"_s).toBool(); }, u"the launch is remembered"_s);
}

TEST(Commands, toggleAndHideTheRing)
{
    OrbitaSession session;
    session.input().moveTo({640, 400});
    session.orbita(u"toggle"_s);
    session.waitForRing();
    session.waitUntilStill();
    session.orbita(u"toggle"_s);
    session.waitUntilHidden();
    session.orbita(u"toggle"_s);
    session.waitForRing();
    session.orbita(u"hide"_s);
    session.waitUntilHidden();
    session.orbita(u"hide"_s); // it is hidden already
    EXPECT_TRUE(session.log().contains("The ring is shown")) << "the terminal that started Orbita may be gone";
}

/// Waits until \a settings stands in the middle of the \a screen, give or take the height of its frame.
void waitUntilCentred(OrbitaSession &session, const WindowInfo &settings, const QRect &screen)
{
    const auto isCentred = [&] {
        const auto window = session.windows().info(settings.id);
        const QList<quint32> frame = session.desktop().connection().values(settings.id, "_NET_FRAME_EXTENTS");
        if (!window || frame.size() != 4)
            return false;
        const QPoint offset = window->geometry.center() - screen.center();
        return std::abs(offset.x()) <= 1 && std::abs(offset.y()) <= int(frame[2] + frame[3]);
    };
    waitUntil(isCentred, u"the settings stand in the middle of the screen"_s);
}

TEST(Commands, openTheSettingsOfTheRunningInstance)
{
    OrbitaSession session;
    Program &first = session.desktop().start(u"orbita"_s);
    session.desktop().bus().waitForName(instanceName);
    for (const QString &command : {QString(), u"settings"_s}) {
        session.orbita(command);
        const WindowInfo settings = session.waitForSettings();
        EXPECT_TRUE(settings.managed);
        EXPECT_FALSE(session.ring());
        session.waitUntilActive(settings);
        waitUntilCentred(session, settings, QRect(0, 0, 1280, 800));
        session.windows().close(settings.id);
        session.windows().waitUntilGone(withTitle(settings.title), u"the settings are closed"_s);
    }
    session.show();
    EXPECT_EQ(session.pid(), first.pid()) << "the command has become the program itself";
    EXPECT_EQ(instances(session).size(), 1);
}

TEST(Commands, endTheInstance)
{
    OrbitaSession session;
    session.orbita(u"settings"_s);
    session.waitForSettings();
    const qint64 pid = session.pid();
    session.orbita(u"quit"_s);
    waitUntil([&] { return hasEnded(pid); }, u"the program has ended"_s);
    EXPECT_FALSE(session.desktop().bus().hasOwner(instanceName));
    session.show();
    EXPECT_NE(session.pid(), pid);
}

TEST(Commands, passOnWhatASecondInstanceWasStartedFor)
{
    OrbitaSession session;
    session.show();
    session.dismiss();
    // As a command does that found no instance a moment ago.
    EXPECT_EQ(session.desktop().start(u"orbita-desktop"_s, {u"--show"_s}).waitForExit(), 0);
    session.waitForRing();
    EXPECT_EQ(instances(session), QList<qint64>{session.pid()});
}

/// Calls \a method of the interface that desktops call and returns the answer.
QDBusMessage callApplication(OrbitaSession &session, const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(instanceName, u"/org/orbita/Orbita"_s,
                                                       u"org.freedesktop.Application"_s, method);
    call.setArguments(arguments);
    return session.desktop().bus().connection().call(call);
}

TEST(Commands, reachTheInstanceFromTheDesktopToo)
{
    OrbitaSession session;
    session.show();
    const auto act = [&](const QString &action) {
        return callApplication(session, u"ActivateAction"_s, {action, QVariantList(), QVariantMap()}).errorName();
    };
    const QString notSupported = u"org.freedesktop.DBus.Error.NotSupported"_s;
    EXPECT_EQ(act(u"dance"_s), notSupported);
    EXPECT_EQ(callApplication(session, u"Open"_s, {QStringList(u"file:///a"_s), QVariantMap()}).errorName(),
              notSupported);
    EXPECT_TRUE(session.ring()) << "neither has had an effect";
    EXPECT_EQ(act(u"hide"_s), QString());
    session.waitUntilHidden();
    EXPECT_EQ(callApplication(session, u"Activate"_s, {QVariantMap()}).errorName(), QString());
    session.waitForSettings();
}

struct Answered {
    const char *name;
    const char *option;
    const char *firstLine;
};

class AnsweredOption : public testing::TestWithParam<Answered> {};

TEST_P(AnsweredOption, needsNoDesktop)
{
    OrbitaSession session({.windowManager = WindowManager::None, .sessionBus = false});
    QProcessEnvironment environment;
    environment.insert(u"DISPLAY"_s, QString());
    const CommandResult result = session.run({QString::fromLatin1(GetParam().option)}, environment);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.value(0), QString::fromLatin1(GetParam().firstLine));
    EXPECT_TRUE(instances(session).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Commands, AnsweredOption,
                         testing::Values(Answered{"help", "--help", "Usage: orbita [COMMAND] [OPTION]"},
                                         Answered{"version", "--version", "orbita " ORBITA_VERSION}),
                         rowName<Answered>);

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
    OrbitaSession session({.windowManager = WindowManager::None, .sessionBus = GetParam().sessionBus});
    QProcessEnvironment environment;
    if (GetParam().display)
        environment.insert(u"DISPLAY"_s, QLatin1String(GetParam().display));
    const QStringList arguments = QString::fromLatin1(GetParam().command).split(u' ', Qt::SkipEmptyParts);
    const CommandResult result = session.run(arguments, environment);
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_EQ(result.lines, QStringList("orbita: "_L1 + QLatin1String(GetParam().line)));
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
    OrbitaSession session({.sessionBus = false});
    session.input().moveTo({640, 400});
    const CommandResult shown = session.run({u"show"_s});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.lines.filter(u"bus"_s).size(), 1) << qPrintable(shown.lines.join(u'\n'));
    session.dismiss();
}

TEST(Commands, openTheSettingsWithTheFirstStartOnly)
{
    OrbitaSession session;
    QFile::remove(session.defaultsFile());
    Program &first = session.desktop().start(u"orbita"_s);
    session.waitForSettings();
    waitForFirstLaunch(session);
    session.orbita(u"quit"_s);
    EXPECT_EQ(first.waitForExit(), 0);
    session.show();
    EXPECT_EQ(session.windows().matching(withClass(u"orbita"_s)).size(), 1) << "the ring alone";
}

TEST(Commands, showTheRingInSpiteOfDamagedSettings)
{
    OrbitaSession session;
    const QByteArray damaged = "<plist><dict><key>swiftMode</key><integer>1";
    session.desktop().folders().write(session.defaultsFile(), damaged);
    session.show();
    session.waitForSettings();
    session.waitForKeyboard(); // which the settings of a first start leave to the ring
    EXPECT_EQ(OrbitaSession::setAside(session.defaultsFile()), QList<QByteArray>{damaged});
    waitForFirstLaunch(session);
}

} // namespace
} // namespace Orbita
