// The command `orbita` and the one instance that it talks to.

#include "desktop/OrbitaSession.h"
#include "platform/desktop/DesktopApplication.h"
#include "support/RowName.h"

#include <QFile>

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
        const auto isCentred = [&] {
            const auto window = session.windows().info(settings.id);
            return window && (window->geometry.center() - QPoint(640, 400)).manhattanLength() < 40; // by its frame
        };
        waitUntil(isCentred, u"the settings stand in the middle of the screen"_s);
        session.windows().close(settings.id);
        waitUntil([&] { return !session.windows().find(withTitle(settings.title)); }, u"the settings are closed"_s);
    }
    session.show();
    EXPECT_EQ(session.pid(), first.pid()) << "the command has become the program itself";
    EXPECT_EQ(instances(session).size(), 1);
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

TEST(Commands, reachTheInstanceFromTheDesktopToo)
{
    OrbitaSession session;
    session.show();
    const auto call = [&](const QString &method, const QVariantList &arguments) {
        session.desktop().bus().call(instanceName, u"/org/orbita/Orbita"_s, u"org.freedesktop.Application"_s, method,
                                     arguments);
    };
    const auto act = [&](const QString &action) { call(u"ActivateAction"_s, {action, QVariantList(), QVariantMap()}); };
    EXPECT_THROW(act(u"dance"_s), DesktopFailure);
    EXPECT_TRUE(session.ring()) << "it has had no effect";
    act(u"hide"_s);
    session.waitUntilHidden();
    call(u"Activate"_s, {QVariantMap()});
    session.waitForSettings();
}

TEST(Commands, haveTheInstanceOpenAddressesOfAnyLength)
{
    OrbitaSession session({.windowManager = WindowManager::None});
    DesktopApplication instance(instanceName);
    QStringList opened;
    QObject::connect(&instance, &DesktopApplication::opened, &instance,
                     [&](const QStringList &urls) { opened += urls; });
    ASSERT_EQ(instance.registerOn(session.desktop().bus().connection()), DesktopApplication::Registration::Registered);
    const QString longOne = u"orbita-com:"_s + QString(1024 * 1024, u'a');
    const QString file = session.desktop().folders().write(u"urls"_s, longOne.toUtf8() + "\n\norbita-com:%7b /../'\n");
    EXPECT_EQ(session.run({u"open"_s, u"orbita-com:+\"%zz"_s, u"b:"_s}).status, 0);
    EXPECT_EQ(session.desktop().start(u"sh"_s, {u"-c"_s, u"orbita open - <"_s + file}).waitForExit(), 0);
    EXPECT_EQ(opened, (QStringList{u"orbita-com:+\"%zz"_s, u"b:"_s, longOne, u"orbita-com:%7b /../'"_s}));
}

TEST(Commands, registerTheProgramSoThatTheDesktopStartsItForAnAddress)
{
    OrbitaSession session;
    session.orbita(u"--register"_s);
    EXPECT_EQ(session.desktop().start(u"gio"_s, {u"open"_s, u"orbita-com:"_s}).waitForExit(), 0);
    session.desktop().bus().waitForName(instanceName);
    const qint64 pid = session.pid();
    session.orbita(u"open orbita-com:%7B"_s);
    session.orbita(u"quit"_s);
    waitUntil([&] { return hasEnded(pid); }, u"the program has ended"_s);

    const auto activate = [&] {
        session.desktop().bus().call(instanceName, u"/org/orbita/Orbita"_s, u"org.freedesktop.Application"_s,
                                     u"Activate"_s, {QVariantMap()});
    };
    activate();
    session.show();
    EXPECT_EQ(session.windows().matching(withClass(u"orbita"_s)).size(), 1) << "the ring alone";
    activate();
    session.waitForSettings();
    session.orbita(u"--unregister"_s);
    EXPECT_NE(session.desktop().start(u"gio"_s, {u"open"_s, u"orbita-com:"_s}).waitForExit(), 0);
}

/// A command that answers on the terminal and starts nothing.
struct Answered {
    const char *name;
    const char *command; ///< what follows "orbita"
    const char *display; ///< nullptr: the session's own
    bool sessionBus;
    int status;
    const char *line; ///< the first one; the only one where the command fails
};

class AnsweredCommand : public testing::TestWithParam<Answered> {};

TEST_P(AnsweredCommand, startsNothing)
{
    OrbitaSession session({.windowManager = WindowManager::None, .sessionBus = GetParam().sessionBus});
    QProcessEnvironment environment;
    if (GetParam().display)
        environment.insert(u"DISPLAY"_s, QLatin1String(GetParam().display));
    const QStringList arguments = QString::fromLatin1(GetParam().command).split(u' ', Qt::SkipEmptyParts);
    const CommandResult result = session.run(arguments, environment);
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_EQ(result.lines.value(0), QLatin1String(GetParam().line));
    EXPECT_TRUE(result.status == 0 || result.lines.size() == 1) << qPrintable(result.lines.join(u'\n'));
    EXPECT_TRUE(instances(session).isEmpty());
}

const Answered answers[]{
    {"help", "--help", "", false, 0, "Usage: orbita [COMMAND] [OPTION]"},
    {"version", "--version", "", false, 0, "orbita " ORBITA_VERSION},
    {"an unknown command", "dance", nullptr, true, 2, "orbita: Unknown command; see \"orbita --help\"."},
    {"hide while nothing runs", "hide", nullptr, true, 1, "orbita: Orbita is not running."},
    {"quit without a session bus", "quit", nullptr, false, 1,
     "orbita: There is no session bus, so a running Orbita cannot be reached."},
    {"start without a display", "", "", true, 1, "orbita: There is no X11 display to show the ring on."},
    {"show on a display that is not there", "show", ":9999", true, 1, "orbita: The X11 display cannot be reached."},
};
INSTANTIATE_TEST_SUITE_P(Commands, AnsweredCommand, testing::ValuesIn(answers), rowName<Answered>);

TEST(Commands, showTheRingWithoutASessionBus)
{
    OrbitaSession session({.sessionBus = false});
    session.input().moveTo({640, 400});
    const CommandResult shown = session.run({u"show"_s});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.lines.filter(u"bus"_s).size(), 1) << qPrintable(shown.lines.join(u'\n'));
    session.dismiss();
}

TEST(Commands, openTheSettingsWithTheFirstStartOnlyAndEndTheInstance)
{
    OrbitaSession session;
    QFile::remove(session.defaultsFile());
    session.show();
    session.waitForSettings();
    session.waitForKeyboard(); // which the settings leave to the ring
    waitUntil([&] { return session.defaults().value(u"launchedBefore"_s).toBool(); }, u"the launch is remembered"_s);
    const qint64 pid = session.pid();
    session.orbita(u"quit"_s);
    waitUntil([&] { return hasEnded(pid); }, u"the program has ended"_s);
    session.show();
    EXPECT_NE(session.pid(), pid);
    EXPECT_EQ(session.windows().matching(withClass(u"orbita"_s)).size(), 1) << "the ring alone";
}

} // namespace
} // namespace Orbita
