#include "companion/service/ApplicationQuitter.h"

#include "companion/service/ProcessWindows.h"
#include "companion/service/QuitPlan.h"
#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"
#include "support/RowName.h"

#include <csignal>
#include <functional>
#include <unistd.h>

using namespace Orbita;
using namespace Qt::StringLiterals;

namespace {

using Windows = QuitFacts::Windows;

struct PlanRow {
    const char *name;
    std::function<void(QuitFacts &)> change;
    std::optional<QuitStep> step;
};

/// The row of a process that runs the file \a executable and calls itself \a process.
PlanRow runs(const char *name, const QString &executable, const QString &process, std::optional<QuitStep> step)
{
    const auto change = [=](QuitFacts &facts) {
        facts.executableName = executable;
        facts.processName = process;
    };
    return {name, change, step};
}

class QuitPlan : public testing::TestWithParam<PlanRow> {};

TEST_P(QuitPlan, follows)
{
    QuitFacts facts{.processIdentifier = 4711,
                    .exists = true,
                    .isOfThisUser = true,
                    .executableName = u"mousepad"_s,
                    .processName = u"mousepad"_s,
                    .windows = Windows::Closable};
    GetParam().change(facts);
    const auto plan = planQuit(facts);
    EXPECT_EQ(plan ? std::optional(*plan) : std::nullopt, GetParam().step);
    EXPECT_TRUE(plan || (plan.error().endsWith(u'.') && !plan.error().contains(u'%')));
}

INSTANTIATE_TEST_SUITE_P(
    Facts, QuitPlan,
    testing::Values(
        PlanRow{"windows are closed", [](QuitFacts &) {}, QuitStep::CloseWindows},
        PlanRow{"without windows it is signalled", [](QuitFacts &f) { f.windows = Windows::None; }, QuitStep::Signal},
        PlanRow{"number 0", [](QuitFacts &f) { f.processIdentifier = 0; }, {}},
        PlanRow{"number 1", [](QuitFacts &f) { f.processIdentifier = 1; }, {}},
        PlanRow{"a group", [](QuitFacts &f) { f.processIdentifier = -4711; }, {}},
        PlanRow{"more than any number", [](QuitFacts &f) { f.processIdentifier = (1LL << 32) + 4711; }, {}},
        PlanRow{"gone", [](QuitFacts &f) { f.exists = false; }, {}},
        PlanRow{"another users", [](QuitFacts &f) { f.isOfThisUser = false; }, {}},
        PlanRow{"an ancestor", [](QuitFacts &f) { f.isAncestor = true; }, {}},
        PlanRow{"what the session stands on", [](QuitFacts &f) { f.carriesSession = true; }, {}},
        PlanRow{"a kernel thread", [](QuitFacts &f) { f.executableName.clear(); }, {}},
        runs("a shell", u"plasmashell"_s, u"plasmashell"_s, {}),
        runs("a locker that an interpreter runs by its cut name", u"python3.11"_s, u"cinnamon-screen"_s, {}),
        runs("the terminals of others", u"tmux"_s, u"tmux: server"_s, {}),
        runs("what locks the screen when idle", u"xss-lock"_s, u"xss-lock"_s, {}),
        runs("a desktops agent for passwords", u"polkit-mate-authentication-agent-1"_s, u"polkit-mate-aut"_s, {}),
        runs("what keeps keys", u"gpg-agent"_s, u"gpg-agent"_s, {}),
        runs("not a lockers settings by their cut name", u"mate-screensaver-preferences"_s, u"mate-screensave"_s,
             QuitStep::CloseWindows),
        runs("not by a mere beginning", u"python3.11"_s, u"cinn"_s, QuitStep::CloseWindows),
        PlanRow{"a panel", [](QuitFacts &f) { f.windows = Windows::OfDesktopOnly; }, {}},
        PlanRow{"windows of another", [](QuitFacts &f) { f.windows = Windows::OfAnother; }, {}},
        PlanRow{"windows out of reach", [](QuitFacts &f) { f.windows = Windows::OutOfReach; }, {}}),
    rowName<PlanRow>);

TEST(QuitFacts, tell_of_windows_on_other_displays)
{
    for (const char *name : {"", ":1", ":1.0", "unix:1"})
        EXPECT_FALSE(mayHaveWindowsBeyond(":1.2", {name, ""})) << name;
    for (const char *name : {":0", ":10", "localhost:1", "192.168.0.1:1", "?"})
        EXPECT_TRUE(mayHaveWindowsBeyond(":1.2", {name, ""})) << name;
    EXPECT_TRUE(mayHaveWindowsBeyond(":1", {":1", "wayland-0"}));
    EXPECT_TRUE(mayHaveWindowsBeyond("", {":1", ""}));
}

struct WindowsRow {
    const char *name;
    WindowManager windowManager;
    const char *title;
    QString program;
    QStringList arguments;
};

class QuitWithWindows : public testing::TestWithParam<WindowsRow> {};

TEST_P(QuitWithWindows, closes_them_and_sends_no_signal)
{
    const WindowsRow &row = GetParam();
    DesktopSession session({.windowManager = row.windowManager, .sessionBus = false});
    qputenv("DISPLAY", session.connection().display());
    Program &asked = session.start(row.program, row.arguments);
    Program &other = session.start(u"plain-window"_s, {u"--title"_s, u"B"_s});
    session.windows().waitFor(withTitle(QLatin1String(row.title)), u"asked"_s);
    session.windows().waitFor(withTitle(u"B"_s), u"B"_s);

    EXPECT_TRUE(quitApplication(asked.pid()).hasValue());
    EXPECT_EQ(asked.waitForExit(), 0) << "by its own choice";
    EXPECT_TRUE(other.isRunning());
    qunsetenv("DISPLAY");
}

INSTANTIATE_TEST_SUITE_P(
    , QuitWithWindows,
    testing::Values(WindowsRow{"listed", WindowManager::Openbox, "A", u"plain-window"_s, {u"--title"_s, u"A"_s}},
                    WindowsRow{
                        "on the mere screen", WindowManager::None, "A", u"plain-window"_s, {u"--title"_s, u"A"_s}},
                    WindowsRow{"listed and silent about its process", WindowManager::Openbox, "xedit", u"xedit"_s, {}}),
    rowName<WindowsRow>);

TEST(QuitApplication, signals_what_has_no_windows_unless_they_may_be_out_of_reach)
{
    DesktopSession session({.windowManager = WindowManager::None, .sessionBus = false});
    const QByteArray display = session.connection().display();
    const auto sleeper = [&](const QString &variable, const QString &value) -> Program & {
        QProcessEnvironment environment;
        environment.insert(variable, value);
        return session.start(u"sleep"_s, {u"600"_s}, environment);
    };
    Program &without = sleeper(u"DISPLAY"_s, {});
    Program &here = sleeper(u"DISPLAY"_s, QString::fromLatin1(display));
    Program &elsewhere = sleeper(u"DISPLAY"_s, u":no-such-display"_s);
    Program &onWayland = sleeper(u"WAYLAND_DISPLAY"_s, u"wayland-0"_s);

    qunsetenv("DISPLAY");
    EXPECT_FALSE(quitApplication(here.pid()).hasValue()) << "where no display can be looked at";
    EXPECT_TRUE(quitApplication(without.pid()).hasValue());
    EXPECT_EQ(without.waitForExit(), 128 + SIGTERM);
    EXPECT_FALSE(quitApplication(without.pid()).hasValue()) << "it has ended";
    qputenv("DISPLAY", display);
    EXPECT_FALSE(quitApplication(elsewhere.pid()).hasValue());
    EXPECT_FALSE(quitApplication(onWayland.pid()).hasValue());
    EXPECT_TRUE(quitApplication(here.pid()).hasValue());
    EXPECT_EQ(here.waitForExit(), 128 + SIGTERM);
    qunsetenv("DISPLAY");
}

TEST(QuitApplication, spares_the_script_that_waits_for_the_window_manager)
{
    DesktopSession session({.windowManager = WindowManager::None, .sessionBus = false});
    qputenv("DISPLAY", session.connection().display());
    Program &script = session.start(u"sh"_s, {u"-c"_s, u"openbox & wait"_s});
    waitUntil([] { return ProcessWindows(0).windowManager() > 0; }, u"there was a window manager"_s);
    EXPECT_TRUE(quitApplication(script.pid()).error().contains(QLatin1String("session")));
    qunsetenv("DISPLAY");
}

TEST(QuitApplication, spares_itself_and_what_it_descends_from)
{
    EXPECT_TRUE(quitApplication(getpid()).error().contains(QLatin1String("itself")));
    EXPECT_FALSE(quitApplication(getppid()).hasValue());
}

} // namespace
