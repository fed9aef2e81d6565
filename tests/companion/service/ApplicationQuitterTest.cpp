#include "companion/service/ApplicationQuitter.h"

#include "companion/service/QuitPlan.h"
#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"
#include "support/RowName.h"

#include <csignal>
#include <unistd.h>

using namespace Orbita;
using namespace Qt::StringLiterals;

namespace {

using Windows = QuitFacts::Windows;

struct PlanRow {
    const char *name;
    void (*change)(QuitFacts &);
    std::optional<QuitStep> step;
};

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
        PlanRow{"the window manager", [](QuitFacts &f) { f.isWindowManager = true; }, {}},
        PlanRow{"a kernel thread", [](QuitFacts &f) { f.executableName.clear(); }, {}},
        PlanRow{"a shell", [](QuitFacts &f) { f.executableName = u"plasmashell"_s; }, {}},
        PlanRow{"a script by its cut name", [](QuitFacts &f) { f.processName = u"cinnamon-launch"_s; }, {}},
        PlanRow{"not by a mere beginning", [](QuitFacts &f) { f.processName = u"cinn"_s; }, QuitStep::CloseWindows},
        PlanRow{"a panel", [](QuitFacts &f) { f.windows = Windows::OfDesktopOnly; }, {}},
        PlanRow{"windows out of reach", [](QuitFacts &f) { f.windows = Windows::OutOfReach; }, {}}),
    rowName<PlanRow>);

class QuitWithWindows : public testing::TestWithParam<WindowManager> {};

TEST_P(QuitWithWindows, closes_them_and_sends_no_signal)
{
    DesktopSession session({.windowManager = GetParam(), .sessionBus = false});
    qputenv("DISPLAY", session.connection().display());
    Program &asked = session.start(u"plain-window"_s, {u"--title"_s, u"A"_s});
    Program &other = session.start(u"plain-window"_s, {u"--title"_s, u"B"_s});
    session.windows().waitFor(withTitle(u"A"_s), u"A"_s);
    session.windows().waitFor(withTitle(u"B"_s), u"B"_s);

    EXPECT_TRUE(quitApplication(asked.pid()).hasValue());
    EXPECT_EQ(asked.waitForExit(), 0) << "by its own choice";
    EXPECT_TRUE(other.isRunning());
    qunsetenv("DISPLAY");
}

INSTANTIATE_TEST_SUITE_P(, QuitWithWindows, testing::Values(WindowManager::Openbox, WindowManager::None));

TEST(QuitApplication, signals_what_has_no_windows_unless_they_may_be_out_of_reach)
{
    qunsetenv("DISPLAY");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"DISPLAY"_s);
    Program plain(u"sleep"_s, {u"600"_s}, environment);
    environment.insert(u"DISPLAY"_s, u":no-such-display"_s);
    Program onDisplay(u"sleep"_s, {u"600"_s}, environment);

    EXPECT_TRUE(quitApplication(plain.pid()).hasValue());
    EXPECT_EQ(plain.waitForExit(), 128 + SIGTERM);
    EXPECT_FALSE(quitApplication(onDisplay.pid()).hasValue());
    EXPECT_FALSE(quitApplication(plain.pid()).hasValue()) << "it has ended";
}

TEST(QuitApplication, spares_itself_and_what_it_descends_from)
{
    EXPECT_TRUE(quitApplication(getpid()).error().contains(QLatin1String("itself")));
    EXPECT_FALSE(quitApplication(getppid()).hasValue());
}

} // namespace
