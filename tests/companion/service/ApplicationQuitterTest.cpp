#include "companion/service/ApplicationQuitter.h"

#include "companion/service/QuitPlan.h"
#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"
#include "support/RowName.h"

#include <csignal>
#include <unistd.h>

using namespace Orbita;

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
                    .executableName = QStringLiteral("mousepad"),
                    .processName = QStringLiteral("mousepad"),
                    .windows = Windows::Closable};
    GetParam().change(facts);
    const auto plan = planQuit(facts);
    ASSERT_EQ(plan.hasValue(), GetParam().step.has_value());
    if (plan)
        EXPECT_EQ(*plan, *GetParam().step);
    else
        EXPECT_TRUE(plan.error().endsWith(u'.') && !plan.error().contains(u'%'));
}

INSTANTIATE_TEST_SUITE_P(
    Facts, QuitPlan,
    testing::Values(PlanRow{"windows are closed", [](QuitFacts &) {}, QuitStep::CloseWindows},
                    PlanRow{"without windows it is signalled", [](QuitFacts &f) { f.windows = Windows::None; },
                            QuitStep::Signal},
                    PlanRow{"number 0", [](QuitFacts &f) { f.processIdentifier = 0; }, {}},
                    PlanRow{"number 1", [](QuitFacts &f) { f.processIdentifier = 1; }, {}},
                    PlanRow{"a group", [](QuitFacts &f) { f.processIdentifier = -4711; }, {}},
                    PlanRow{"more than any number", [](QuitFacts &f) { f.processIdentifier = (1LL << 32) + 4711; }, {}},
                    PlanRow{"gone", [](QuitFacts &f) { f.exists = false; }, {}},
                    PlanRow{"another users", [](QuitFacts &f) { f.isOfThisUser = false; }, {}},
                    PlanRow{"an ancestor", [](QuitFacts &f) { f.isAncestor = true; }, {}},
                    PlanRow{"the window manager", [](QuitFacts &f) { f.isWindowManager = true; }, {}},
                    PlanRow{"a kernel thread", [](QuitFacts &f) { f.executableName.clear(); }, {}},
                    PlanRow{"a shell", [](QuitFacts &f) { f.executableName = QStringLiteral("plasmashell"); }, {}},
                    PlanRow{"a script by its cut name",
                            [](QuitFacts &f) {
                                f.executableName = QStringLiteral("python3.11");
                                f.processName = QStringLiteral("cinnamon-launc");
                                f.processName += u'h';
                            },
                            {}},
                    PlanRow{"not by a mere beginning", [](QuitFacts &f) { f.processName = QStringLiteral("cinn"); },
                            QuitStep::CloseWindows},
                    PlanRow{"a panel", [](QuitFacts &f) { f.windows = Windows::OfDesktopOnly; }, {}},
                    PlanRow{"windows out of reach", [](QuitFacts &f) { f.windows = Windows::OutOfReach; }, {}}),
    rowName<PlanRow>);

/// Sets $DISPLAY of this program for as long as it lives.
struct Display {
    explicit Display(const QByteArray &name) { qputenv("DISPLAY", name); }
    ~Display() { qunsetenv("DISPLAY"); }
};

class QuitWithWindows : public testing::TestWithParam<WindowManager> {};

TEST_P(QuitWithWindows, closes_them_and_sends_no_signal)
{
    DesktopSession session({.windowManager = GetParam(), .sessionBus = false});
    const Display display(session.connection().display());
    Program &asked = session.start(QStringLiteral("plain-window"), {QStringLiteral("--title"), QStringLiteral("A")});
    Program &other = session.start(QStringLiteral("plain-window"), {QStringLiteral("--title"), QStringLiteral("B")});
    session.windows().waitFor(withTitle(QStringLiteral("A")), QStringLiteral("A"));
    session.windows().waitFor(withTitle(QStringLiteral("B")), QStringLiteral("B"));

    EXPECT_TRUE(quitApplication(asked.pid()).hasValue());
    EXPECT_EQ(asked.waitForExit(), 0) << "by its own choice";
    EXPECT_TRUE(other.isRunning());
}

INSTANTIATE_TEST_SUITE_P(, QuitWithWindows, testing::Values(WindowManager::Openbox, WindowManager::None),
                         [](const auto &row) {
                             return row.param == WindowManager::None ? "without_a_manager" : "by_the_manager";
                         });

TEST(QuitApplication, signals_what_has_no_windows_unless_they_may_be_out_of_reach)
{
    const QString sleep = QStringLiteral("sleep");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    Program plain(sleep, {QStringLiteral("600")}, environment);
    environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":no-such-display"));
    Program onDisplay(sleep, {QStringLiteral("600")}, environment);

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
