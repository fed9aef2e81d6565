#include "ForeignClient.h"

#include "platform/desktop/ApplicationIndex.h"
#include "platform/desktop/ProcessFacts.h"
#include "platform/memory/MemoryRunningApplications.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11RunningApplications.h"
#include "platform/x11/X11WindowManager.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <algorithm>

namespace Orbita {
namespace {

std::optional<RunningApplication> named(const RunningApplications &port, const QByteArray &name)
{
    const auto all = port.runningApplications();
    const auto found = std::ranges::find(all, QString::fromUtf8(name), &RunningApplication::localizedName);
    return found != all.end() ? std::optional(*found) : std::nullopt;
}

bool isFrontmost(const RunningApplications &port, const QByteArray &name)
{
    const auto frontmost = port.frontmostApplication();
    return frontmost && frontmost->localizedName == QString::fromUtf8(name);
}

// Programs that a test runs, for each back end that hears of them.

struct MemoryDesk {
    MemoryRunningApplications port;

    /// Starts an application with one window, which gets the keyboard.
    void start(const QByteArray &name)
    {
        const QString text = QString::fromUtf8(name);
        port.bringToFront(port.start(QStringLiteral("/a/%1.desktop").arg(text), text));
    }
    void end(const QByteArray &name) { port.terminate(*named(port, name)); }
};

struct X11Desk {
    static DesktopCatalog catalog()
    {
        return DesktopCatalog({{QStringLiteral("org.test.Editor"),
                                QStringLiteral("/a/org.test.Editor.desktop"),
                                QStringLiteral("Text Editor"),
                                QStringLiteral("Editor"),
                                QStringLiteral("editor"),
                                false,
                                {}}});
    }

    VirtualDisplay display;
    X11Connection connection{display.name()};
    X11WindowManager windowManager{connection};
    ApplicationIndex index{catalog};
    X11RunningApplications port{connection, windowManager, index, {}};
    ForeignClient client{display.name()};
    std::map<QByteArray, xcb_window_t> windows;

    X11Desk()
    {
        display.startWindowManager();
        waitUntil([this] { return windowManager.isPresent() && index.isLoaded(); },
                  QStringLiteral("the desk is ready"));
    }
    void start(const QByteArray &name) { windows[name] = client.show({.windowClass = name}); }
    void end(const QByteArray &name) { client.destroy(windows[name]); }
};

template <typename Desk>
class RunningApplicationsContract : public testing::Test {
};
using Desks = testing::Types<MemoryDesk, X11Desk>;
TYPED_TEST_SUITE(RunningApplicationsContract, Desks);

TYPED_TEST(RunningApplicationsContract, followsStartsFocusAndEnds)
{
    TypeParam desk;
    RunningApplications &port = desk.port;
    int changes = 0;
    int frontChanges = 0;
    QObject context;
    QObject::connect(&port, &RunningApplications::runningApplicationsChanged, &context, [&] { ++changes; });
    QObject::connect(&port, &RunningApplications::frontmostApplicationChanged, &context, [&] { ++frontChanges; });

    for (const char *name : {"Zebra", "Ant"}) {
        desk.start(name);
        ASSERT_TRUE(eventually([&] { return isFrontmost(port, name); })) << name;
    }
    EXPECT_GT(changes, 0);
    EXPECT_GT(frontChanges, 1);

    const auto all = port.runningApplications();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].localizedName, QStringLiteral("Zebra")) << "in the order of appearance";
    EXPECT_NE(all[0].serial, 0U);
    EXPECT_FALSE(all[0] == all[1]);
    EXPECT_EQ(all[0].activationPolicy, ActivationPolicy::Regular);
    EXPECT_FALSE(port.isTerminated(all[0]));

    EXPECT_TRUE(port.activate(all[0]));
    EXPECT_TRUE(eventually([&] { return isFrontmost(port, "Zebra"); }));

    desk.end("Zebra");
    EXPECT_TRUE(eventually([&] { return port.isTerminated(all[0]); }));
    EXPECT_FALSE(named(port, "Zebra"));
    EXPECT_FALSE(port.activate(all[0]));
    EXPECT_FALSE(port.isTerminated(all[1]));

    desk.start("Zebra");
    ASSERT_TRUE(eventually([&] { return named(port, "Zebra").has_value(); }));
    EXPECT_FALSE(*named(port, "Zebra") == all[0]) << "another run";
}

class X11Applications : public testing::Test {
protected:
    [[nodiscard]] std::vector<RunningApplication> list() const { return m_port.runningApplications(); }
    [[nodiscard]] bool waitForCount(std::size_t count) const
    {
        return eventually([&] { return list().size() == count; });
    }
    [[nodiscard]] bool waitForActive(xcb_window_t window)
    {
        const bool isActive = eventually([&] { return m_client.windows.activeWindow() == window; });
        // The port must not learn of this together with what comes next: it would see the last window only.
        (void)m_desk.connection.serverTime();
        QCoreApplication::processEvents();
        return isActive;
    }
    [[nodiscard]] bool waitForPolicy(ActivationPolicy policy) const
    {
        return eventually([&] { return list()[0].activationPolicy == policy; });
    }
    /// Runs until the test ends it.
    [[nodiscard]] Program sleeper() const
    {
        return m_desk.display.start(QStringLiteral("sleep"), {QStringLiteral("1d")});
    }

    X11Desk m_desk;
    X11RunningApplications &m_port = m_desk.port;
    const ForeignClient &m_client = m_desk.client;
    const ForeignWindow m_own{.windowClass = "Own", .process = QCoreApplication::applicationPid()};
};

TEST_F(X11Applications, areTheInstalledOnesWhereTheDesktopFileIsFound)
{
    Program older = sleeper();
    const Program younger = sleeper();
    m_client.show({.windowClass = "Editor", .process = younger.pid()});
    m_client.show({.windowClass = "Editor", .process = older.pid()});
    ASSERT_TRUE(eventually([&] { return list().size() == 1 && list()[0].processIdentifier == older.pid(); }))
        << "the oldest of two processes stands for the one application";
    const RunningApplication editor = list()[0];
    EXPECT_EQ(editor.localizedName, QStringLiteral("Text Editor"));
    EXPECT_EQ(editor.bundleIdentifier, QStringLiteral("org.test.Editor"));
    EXPECT_EQ(editor.bundlePath, QStringLiteral("/a/org.test.Editor.desktop"));
    EXPECT_TRUE(editor.executablePath.endsWith(QStringLiteral("/sleep")));

    older.kill();
    EXPECT_TRUE(eventually([&] { return list()[0].processIdentifier == younger.pid(); }));
    EXPECT_TRUE(list()[0] == editor) << "it is still the same run";
}

TEST_F(X11Applications, areRegularOnlyWithAWindowForTheTaskList)
{
    struct Row {
        ForeignWindow window;
        ActivationPolicy policy;
    };
    const xcb_window_t parent = m_client.show({.windowClass = "Parent"});
    const Row rows[]{
        {{.windowClass = "Plain"}, ActivationPolicy::Regular},
        {{.windowClass = "Dialog", .type = "_NET_WM_WINDOW_TYPE_DIALOG"}, ActivationPolicy::Regular},
        {{.windowClass = "Skipping", .state = "_NET_WM_STATE_SKIP_TASKBAR"}, ActivationPolicy::Accessory},
        {{.windowClass = "Dock", .type = "_NET_WM_WINDOW_TYPE_DOCK"}, ActivationPolicy::Accessory},
        {{.windowClass = "Splash", .type = "_NET_WM_WINDOW_TYPE_SPLASH"}, ActivationPolicy::Accessory},
        {{.windowClass = "Child", .parent = parent}, ActivationPolicy::Accessory},
        {m_own, ActivationPolicy::Accessory},
    };
    for (const Row &row : rows)
        m_client.show(row.window);
    for (const Row &row : rows) {
        const QByteArray &name = row.window.windowClass;
        EXPECT_TRUE(eventually([&] {
            const auto record = named(m_port, name);
            return record && record->activationPolicy == row.policy;
        })) << name.constData();
    }
    EXPECT_TRUE(waitForCount(std::size(rows) + 1));
}

TEST_F(X11Applications, hearOfOwnWindowsOnlyThatTheyComeAndGo)
{
    const xcb_window_t foreign = m_client.show({.windowClass = "Foreign"});
    ASSERT_TRUE(eventually([&] { return isFrontmost(m_port, "Foreign"); }));
    const xcb_window_t own = m_client.show(m_own);
    ASSERT_TRUE(waitForActive(own));
    EXPECT_TRUE(eventually([&] { return !m_port.frontmostApplication(); })) << "an own window never is";
    ASSERT_TRUE(eventually([&] { return named(m_port, "Own").has_value(); }));
    std::set<xcb_window_t> retitled;
    QObject context;
    QObject::connect(&m_desk.connection, &X11Connection::propertyChanged, &context,
                     [&](xcb_window_t window, xcb_atom_t property) {
                         if (property == XCB_ATOM_WM_NAME)
                             retitled.insert(window);
                     });
    m_client.connection.setText(own, "WM_NAME", "A frame of a fade");
    m_client.connection.setText(foreign, "WM_NAME", "A title");
    ASSERT_TRUE(eventually([&] { return retitled.contains(foreign); }));
    EXPECT_FALSE(retitled.contains(own));

    const RunningApplication record = *named(m_port, "Own");
    m_client.withdraw(own);
    EXPECT_TRUE(eventually([&] { return !m_port.activate(record); })) << "there is no window";
}

TEST_F(X11Applications, haveANameWhateverTheirWindowsSay)
{
    const Program process = sleeper();
    for (const ForeignWindow &window : {ForeignWindow{.title = "  A\ntitle "}, {.process = process.pid()}, {}}) {
        const std::size_t before = list().size();
        m_client.show(window);
        ASSERT_TRUE(waitForCount(before + 1));
    }
    EXPECT_EQ(list()[0].localizedName, QStringLiteral("A title"));
    EXPECT_EQ(list()[1].localizedName, QStringLiteral("sleep"));
    EXPECT_FALSE(list()[2].localizedName.isEmpty());
}

TEST_F(X11Applications, areWhatTheyWereLaunchedAsUnlessTheirParentWas)
{
    const QString command = QStringLiteral("GIO_LAUNCHED_DESKTOP_FILE=/a/org.test.Editor.desktop "
                                           "GIO_LAUNCHED_DESKTOP_FILE_PID=%1 exec sleep 1d");
    for (const auto &[launched, name] : {std::pair("$PPID", "sleep"), std::pair("$$", "Text Editor")}) {
        const Program process
            = m_desk.display.start(QStringLiteral("sh"), {QStringLiteral("-c"), command.arg(QLatin1String(launched))});
        ASSERT_TRUE(eventually(
            [&] { return readProcessFacts(process.pid()).executablePath.endsWith(QLatin1String("/sleep")); }));
        m_client.show({.process = process.pid()});
        EXPECT_TRUE(eventually([&] { return named(m_port, name).has_value(); })) << name;
    }
}

TEST_F(X11Applications, followWhatAWindowSaysLater)
{
    const xcb_window_t window = m_client.show({.windowClass = "Blank"});
    ASSERT_TRUE(waitForCount(1));
    const RunningApplication before = list()[0];
    m_client.connection.setText(window, "WM_CLASS", QByteArray("editor\0Editor\0", 14));
    EXPECT_TRUE(eventually([&] { return named(m_port, "Text Editor").has_value(); }));
    EXPECT_TRUE(list()[0] == before);
    m_client.setAtom(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
    EXPECT_TRUE(waitForPolicy(ActivationPolicy::Accessory));
}

TEST_F(X11Applications, endWithTheirWindowsWhereTheProcessIsUnknown)
{
    const Program process = sleeper();
    const xcb_window_t window
        = m_client.show({.windowClass = "Remote", .process = process.pid(), .machine = "elsewhere.example"});
    ASSERT_TRUE(waitForCount(1));
    EXPECT_EQ(list()[0].processIdentifier, 0);
    m_client.destroy(window);
    EXPECT_TRUE(waitForCount(0));
}

TEST_F(X11Applications, surviveTheirWindowManager)
{
    const xcb_window_t window = m_client.show({.windowClass = "Lasting"});
    ASSERT_TRUE(waitForCount(1));
    const RunningApplication lasting = list()[0];
    m_desk.display.killWindowManager();
    ASSERT_TRUE(eventually([&] { return !m_desk.windowManager.isPresent(); }));
    xcb_delete_property(m_client.connection, m_client.connection.root(), m_client.connection.atom("_NET_CLIENT_LIST"));
    EXPECT_TRUE(m_port.activate(lasting));
    EXPECT_TRUE(eventually([&] { return m_client.windows.inputFocus() == window; }));
}

TEST_F(X11Applications, comeBackFromMinimisedAndFromAnotherWorkspace)
{
    std::vector<xcb_window_t> windows;
    for (const char *name : {"Pair", "Pair", "Other"}) {
        windows.push_back(m_client.show({.windowClass = name}));
        ASSERT_TRUE(waitForActive(windows.back()));
    }
    ASSERT_TRUE(eventually([&] { return isFrontmost(m_port, "Other") && list().size() == 2; }));
    const RunningApplication pair = list()[0];
    const xcb_window_t second = windows[1];

    m_client.windows.iconify(second);
    ASSERT_TRUE(eventually([&] { return m_client.windows.hasState(second, "_NET_WM_STATE_HIDDEN"); }));
    EXPECT_TRUE(m_port.activate(pair));
    EXPECT_TRUE(waitForActive(second)) << "the window that was used last, not the first";

    m_client.connection.askWindowManager(second, "_NET_WM_DESKTOP", {1, 2});
    ASSERT_TRUE(eventually([&] { return m_client.windows.activeWindow() != second; }));
    EXPECT_TRUE(m_port.activate(pair));
    EXPECT_TRUE(waitForActive(second));
}

TEST_F(X11Applications, bearHostileProperties)
{
    const XConnection &connection = m_client.connection;
    const xcb_window_t window = m_client.show({.windowClass = QByteArray(60'000, 'c')});
    connection.setText(window, "WM_NAME", QByteArray(60'000, '\xff'));
    connection.setValues(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, {0xffffffff});
    connection.setText(window, "_NET_WM_WINDOW_TYPE", "text");
    ASSERT_TRUE(waitForCount(1));
    EXPECT_LE(list()[0].localizedName.size(), 4096);
    EXPECT_EQ(list()[0].processIdentifier, 0);
    connection.setValues(window, "_NET_WM_ICON", XCB_ATOM_CARDINAL, {2, 1, 0xffff0000, 0xff00ff00});
    EXPECT_TRUE(eventually([&] { return !list()[0].icon.isNull(); }));
}

TEST_F(X11Applications, areGoneWhenTheServerIs)
{
    m_client.show({.windowClass = "Lost"});
    ASSERT_TRUE(waitForCount(1));
    const RunningApplication lost = list()[0];
    m_desk.display.kill();
    EXPECT_TRUE(waitForCount(0));
    EXPECT_FALSE(m_desk.connection.isAlive());
    EXPECT_FALSE(m_port.frontmostApplication());
    EXPECT_FALSE(m_port.activate(lost));
    EXPECT_EQ(m_desk.connection.serverTime(), xcb_timestamp_t(XCB_CURRENT_TIME));
}

} // namespace
} // namespace Orbita
