#include "Eventually.h"
#include "ForeignClient.h"
#include "XServer.h"

#include "platform/desktop/ApplicationIndex.h"
#include "platform/memory/MemoryRunningApplications.h"
#include "platform/x11/X11RunningApplications.h"
#include "platform/x11/X11WindowManager.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <algorithm>

namespace Orbita {
namespace {

/// Programs that a test runs, whichever back end hears of them.
class Desk {
public:
    virtual ~Desk() = default;
    [[nodiscard]] virtual RunningApplications &port() = 0;
    /// Starts an application with one window, which gets the keyboard.
    virtual void start(const QByteArray &name) = 0;
    virtual void end(const QByteArray &name) = 0;

    [[nodiscard]] std::optional<RunningApplication> named(const QByteArray &name)
    {
        const auto all = port().runningApplications();
        const auto found = std::ranges::find(all, QString::fromUtf8(name), &RunningApplication::localizedName);
        return found != all.end() ? std::optional(*found) : std::nullopt;
    }
    [[nodiscard]] bool isFrontmost(const QByteArray &name)
    {
        const auto frontmost = port().frontmostApplication();
        return frontmost && frontmost->localizedName == QString::fromUtf8(name);
    }
};

class MemoryDesk final : public Desk {
public:
    RunningApplications &port() override { return m_port; }
    void start(const QByteArray &name) override
    {
        m_port.bringToFront(
            m_port.start(QStringLiteral("/a/%1.desktop").arg(QString::fromUtf8(name)), QString::fromUtf8(name)));
    }
    void end(const QByteArray &name) override { m_port.terminate(*named(name)); }

private:
    MemoryRunningApplications m_port;
};

class X11Desk final : public Desk {
public:
    X11Desk()
    {
        server.startWindowManager();
        if (!eventually([this] { return windowManager.isPresent() && index.isLoaded(); }))
            qFatal("the desk is not ready");
    }
    RunningApplications &port() override { return applications; }
    void start(const QByteArray &name) override { windows[name] = client.show({.windowClass = name}); }
    void end(const QByteArray &name) override { client.destroy(windows[name]); }
    xcb_window_t show(const ForeignWindow &window) { return client.show(window); }

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

    XServer server;
    X11Connection connection{server.display()};
    X11WindowManager windowManager{connection};
    ApplicationIndex index{catalog};
    X11RunningApplications applications{connection, windowManager, index, {}};
    ForeignClient client{server.display()};
    Nudge nudge{client};
    std::map<QByteArray, xcb_window_t> windows;
};

using DeskFactory = std::unique_ptr<Desk> (*)();
class RunningApplicationsContract : public testing::TestWithParam<DeskFactory> {
protected:
    std::unique_ptr<Desk> m_desk{GetParam()()};
};

TEST_P(RunningApplicationsContract, followsStartsFocusAndEnds)
{
    int changes = 0;
    int frontChanges = 0;
    QObject context;
    RunningApplications &port = m_desk->port();
    QObject::connect(&port, &RunningApplications::runningApplicationsChanged, &context, [&] { ++changes; });
    QObject::connect(&port, &RunningApplications::frontmostApplicationChanged, &context, [&] { ++frontChanges; });

    m_desk->start("Zebra");
    ASSERT_TRUE(eventually([&] { return m_desk->isFrontmost("Zebra"); }));
    m_desk->start("Ant");
    ASSERT_TRUE(eventually([&] { return m_desk->isFrontmost("Ant"); }));
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
    EXPECT_TRUE(eventually([&] { return m_desk->isFrontmost("Zebra"); }));

    m_desk->end("Zebra");
    EXPECT_TRUE(eventually([&] { return port.isTerminated(all[0]); }));
    EXPECT_FALSE(m_desk->named("Zebra"));
    EXPECT_FALSE(port.activate(all[0]));
    EXPECT_FALSE(port.isTerminated(all[1]));

    m_desk->start("Zebra");
    ASSERT_TRUE(eventually([&] { return m_desk->named("Zebra").has_value(); }));
    EXPECT_FALSE(*m_desk->named("Zebra") == all[0]) << "another run";
}

INSTANTIATE_TEST_SUITE_P(BackEnds, RunningApplicationsContract,
                         testing::Values(
                             +[]() -> std::unique_ptr<Desk> { return std::make_unique<MemoryDesk>(); },
                             +[]() -> std::unique_ptr<Desk> { return std::make_unique<X11Desk>(); }),
                         [](const auto &backEnd) { return backEnd.index == 0 ? "Memory" : "X11"; });

class X11Applications : public testing::Test {
protected:
    [[nodiscard]] std::vector<RunningApplication> list() { return m_desk.applications.runningApplications(); }
    [[nodiscard]] bool waitForCount(std::size_t count)
    {
        return eventually([&] { return list().size() == count; });
    }
    [[nodiscard]] bool waitForActive(xcb_window_t window)
    {
        return eventually(
            [&] { return m_desk.client.value(m_desk.client.connection().root(), X11Atom::NetActiveWindow) == window; });
    }
    /// A process that runs until the test ends it.
    struct Sleeper {
        QProcess process;
        Sleeper()
        {
            process.start(QStringLiteral("sleep"), {QStringLiteral("infinity")});
            process.waitForStarted();
        }
        ~Sleeper() { end(); }
        void end()
        {
            process.kill();
            process.waitForFinished();
        }
    };

    X11Desk m_desk;
    ForeignClient &m_client = m_desk.client;
};

TEST_F(X11Applications, areTheInstalledOnesWhereTheDesktopFileIsFound)
{
    Sleeper older;
    Sleeper younger;
    m_client.show({.windowClass = "Editor", .process = younger.process.processId()});
    m_client.show({.windowClass = "Editor", .process = older.process.processId()});
    ASSERT_TRUE(eventually([&] {
        return list().size() == 1 && list()[0].processIdentifier == older.process.processId();
    })) << "the oldest of two processes stands for the one application";
    const RunningApplication editor = list()[0];
    EXPECT_EQ(editor.localizedName, QStringLiteral("Text Editor"));
    EXPECT_EQ(editor.bundleIdentifier, QStringLiteral("org.test.Editor"));
    EXPECT_EQ(editor.bundlePath, QStringLiteral("/a/org.test.Editor.desktop"));
    EXPECT_TRUE(editor.executablePath.endsWith(QStringLiteral("/sleep")));

    older.end();
    EXPECT_TRUE(eventually([&] { return list()[0].processIdentifier == younger.process.processId(); }));
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
        {{.windowClass = "Dialog", .type = X11Atom::NetWmWindowTypeDialog}, ActivationPolicy::Regular},
        {{.windowClass = "Skipping", .state = X11Atom::NetWmStateSkipTaskbar}, ActivationPolicy::Accessory},
        {{.windowClass = "Dock", .type = X11Atom::NetWmWindowTypeDock}, ActivationPolicy::Accessory},
        {{.windowClass = "Splash", .type = X11Atom::NetWmWindowTypeSplash}, ActivationPolicy::Accessory},
        {{.windowClass = "Child", .parent = parent}, ActivationPolicy::Accessory},
        {{.windowClass = "Own", .process = QCoreApplication::applicationPid()}, ActivationPolicy::Accessory},
    };
    for (const Row &row : rows)
        m_client.show(row.window);
    for (const Row &row : rows) {
        const QByteArray &name = row.window.windowClass;
        EXPECT_TRUE(eventually([&] {
            const auto record = m_desk.named(name);
            return record && record->activationPolicy == row.policy;
        })) << name.constData();
    }
    EXPECT_TRUE(waitForCount(std::size(rows) + 1));
}

TEST_F(X11Applications, ownWindowsAreNeverFrontmost)
{
    const xcb_window_t foreign = m_client.show({.windowClass = "Foreign"});
    ASSERT_TRUE(waitForActive(foreign));
    ASSERT_TRUE(eventually([&] { return m_desk.isFrontmost("Foreign"); }));
    const xcb_window_t own = m_client.show({.windowClass = "Own", .process = QCoreApplication::applicationPid()});
    ASSERT_TRUE(waitForActive(own));
    EXPECT_TRUE(eventually([&] { return !m_desk.applications.frontmostApplication(); }));
}

TEST_F(X11Applications, hearOfOwnWindowsOnlyThatTheyComeAndGo)
{
    const xcb_window_t foreign = m_client.show({.windowClass = "Foreign"});
    const xcb_window_t own = m_client.show({.windowClass = "Own", .process = QCoreApplication::applicationPid()});
    ASSERT_TRUE(eventually([&] { return m_desk.named("Own") && m_desk.named("Foreign"); }));
    std::set<xcb_window_t> retitled;
    QObject context;
    QObject::connect(&m_desk.connection, &X11Connection::propertyChanged, &context,
                     [&](xcb_window_t window, xcb_atom_t property) {
                         if (property == XCB_ATOM_WM_NAME)
                             retitled.insert(window);
                     });
    m_client.setText(own, XCB_ATOM_WM_NAME, "A frame of a fade");
    m_client.setText(foreign, XCB_ATOM_WM_NAME, "A title");
    ASSERT_TRUE(eventually([&] { return retitled.contains(foreign); }));
    EXPECT_FALSE(retitled.contains(own));

    const RunningApplication record = *m_desk.named("Own");
    m_client.withdraw(own);
    EXPECT_TRUE(eventually([&] { return !m_desk.applications.activate(record); })) << "there is no window";
}

TEST_F(X11Applications, haveANameWhateverTheirWindowsSay)
{
    Sleeper sleeper;
    m_client.show({.title = "  A\ntitle "});
    ASSERT_TRUE(waitForCount(1));
    m_client.show({.process = sleeper.process.processId()});
    ASSERT_TRUE(waitForCount(2));
    m_client.show({});
    ASSERT_TRUE(waitForCount(3));
    EXPECT_EQ(list()[0].localizedName, QStringLiteral("A title"));
    EXPECT_EQ(list()[1].localizedName, QStringLiteral("sleep"));
    EXPECT_FALSE(list()[2].localizedName.isEmpty());
}

TEST_F(X11Applications, followWhatAWindowSaysLater)
{
    const xcb_window_t window = m_client.show({.windowClass = "Blank"});
    ASSERT_TRUE(waitForCount(1));
    const RunningApplication before = list()[0];
    m_client.setText(window, XCB_ATOM_WM_CLASS, QByteArray("editor\0Editor\0", 14));
    EXPECT_TRUE(eventually([&] { return m_desk.named("Text Editor").has_value(); }));
    EXPECT_TRUE(list()[0] == before);
    m_client.setAtom(window, X11Atom::NetWmWindowType, X11Atom::NetWmWindowTypeDock);
    EXPECT_TRUE(eventually([&] { return list()[0].activationPolicy == ActivationPolicy::Accessory; }));
}

TEST_F(X11Applications, outliveTheirWindowsAsLongAsTheirProcess)
{
    Sleeper sleeper;
    const xcb_window_t window = m_client.show({.windowClass = "Daemon", .process = sleeper.process.processId()});
    ASSERT_TRUE(waitForCount(1));
    const RunningApplication daemon = list()[0];
    m_client.withdraw(window);
    EXPECT_TRUE(eventually([&] { return list()[0].activationPolicy == ActivationPolicy::Accessory; }));
    EXPECT_FALSE(m_desk.applications.activate(daemon)) << "there is no window";
    m_client.show({.windowClass = "Daemon", .process = sleeper.process.processId()});
    EXPECT_TRUE(eventually([&] { return list()[0].activationPolicy == ActivationPolicy::Regular; }));
    EXPECT_TRUE(list()[0] == daemon);
    m_client.withdraw(window);
    sleeper.end();
    EXPECT_TRUE(eventually([&] { return list()[0].processIdentifier == 0; }));
}

TEST_F(X11Applications, endWithTheirWindowsWhereTheProcessIsUnknown)
{
    Sleeper sleeper;
    const xcb_window_t window = m_client.show(
        {.windowClass = "Remote", .process = sleeper.process.processId(), .machine = "elsewhere.example"});
    ASSERT_TRUE(waitForCount(1));
    EXPECT_EQ(list()[0].processIdentifier, 0);
    m_client.destroy(window);
    EXPECT_TRUE(waitForCount(0));
}

TEST_F(X11Applications, surviveTheirWindowManager)
{
    const xcb_window_t window = m_client.show({.windowClass = "Lasting"});
    const xcb_window_t doomed = m_client.show({.windowClass = "Doomed"});
    ASSERT_TRUE(waitForCount(2));
    const RunningApplication lasting = list()[0];
    m_desk.server.killWindowManager();
    ASSERT_TRUE(eventually([&] { return !m_desk.windowManager.isPresent(); }));
    m_client.removeProperty(m_client.connection().root(), X11Atom::NetClientList);
    m_client.destroy(doomed);
    ASSERT_TRUE(waitForCount(1));
    EXPECT_TRUE(m_desk.applications.activate(lasting));
    EXPECT_TRUE(eventually([&] { return m_client.focus() == window; }));

    m_desk.server.startWindowManager();
    ASSERT_TRUE(eventually([&] { return m_desk.windowManager.isPresent(); }));
    m_client.show({.windowClass = "Later"});
    EXPECT_TRUE(waitForCount(2));
    EXPECT_FALSE(m_desk.applications.isTerminated(lasting));
}

TEST_F(X11Applications, comeBackFromMinimisedAndFromAnotherWorkspace)
{
    const xcb_window_t first = m_client.show({.windowClass = "Pair"});
    ASSERT_TRUE(waitForActive(first));
    const xcb_window_t second = m_client.show({.windowClass = "Pair"});
    ASSERT_TRUE(waitForActive(second));
    const xcb_window_t other = m_client.show({.windowClass = "Other"});
    ASSERT_TRUE(waitForActive(other));
    ASSERT_TRUE(eventually([&] { return m_desk.isFrontmost("Other") && list().size() == 2; }));
    const RunningApplication pair = list()[0];

    m_client.minimise(second);
    ASSERT_TRUE(eventually([&] { return m_client.value(second, X11Atom::WmState) == 3; }));
    EXPECT_TRUE(m_desk.applications.activate(pair));
    EXPECT_TRUE(waitForActive(second)) << "the window that was used last, not the first";

    m_client.sendToWorkspace(second, 1);
    ASSERT_TRUE(waitForActive(other) || waitForActive(first));
    EXPECT_TRUE(m_desk.applications.activate(pair));
    EXPECT_TRUE(waitForActive(second));
}

TEST_F(X11Applications, bearHostileProperties)
{
    const xcb_window_t window = m_client.show({.windowClass = QByteArray(60'000, 'c')});
    m_client.setText(window, XCB_ATOM_WM_NAME, QByteArray(60'000, '\xff'));
    auto &connection = m_client.connection();
    m_client.setCardinals(window, connection.atom(X11Atom::NetWmPid), {0xffffffff});
    m_client.setText(window, connection.atom(X11Atom::NetWmWindowType), "text");
    ASSERT_TRUE(waitForCount(1));
    EXPECT_LE(list()[0].localizedName.size(), 4096);
    EXPECT_EQ(list()[0].processIdentifier, 0);
    m_client.setCardinals(window, connection.atom(X11Atom::NetWmIcon), {2, 1, 0xffff0000, 0xff00ff00});
    EXPECT_TRUE(eventually([&] { return !list()[0].icon.isNull(); }));
}

TEST_F(X11Applications, knowARealTerminal)
{
    ApplicationIndex installed;
    X11RunningApplications applications(m_desk.connection, m_desk.windowManager, installed, {});
    QProcess terminal;
    m_desk.server.start(terminal, {QStringLiteral("xterm")});
    const auto record = [&] {
        const auto all = applications.runningApplications();
        return all.empty() ? RunningApplication() : all.front();
    };
    EXPECT_TRUE(eventually([&] { return record().processIdentifier == terminal.processId(); }));
    EXPECT_TRUE(record().bundlePath.endsWith(QStringLiteral("xterm.desktop"))) << qPrintable(record().bundlePath);
    EXPECT_TRUE(record().executablePath.endsWith(QStringLiteral("/xterm")));
    terminal.terminate();
    EXPECT_TRUE(eventually([&] { return applications.runningApplications().empty(); }));
    terminal.waitForFinished();
}

TEST_F(X11Applications, areGoneWhenTheServerIs)
{
    m_client.show({.windowClass = "Lost"});
    ASSERT_TRUE(waitForCount(1));
    const RunningApplication lost = list()[0];
    m_desk.server.kill();
    EXPECT_TRUE(waitForCount(0));
    EXPECT_FALSE(m_desk.connection.isAlive());
    EXPECT_FALSE(m_desk.applications.frontmostApplication());
    EXPECT_FALSE(m_desk.applications.activate(lost));
    EXPECT_EQ(m_desk.connection.serverTime(), xcb_timestamp_t(XCB_CURRENT_TIME));
}

} // namespace
} // namespace Orbita
