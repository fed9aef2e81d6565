// What tests of the whole program rely on: that the desktop they run on is real, and that it is gone afterwards.

#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"

#include <gtest/gtest.h>

#include <QFile>

#include <csignal>

namespace Orbita {
namespace {

QString fileText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

TEST(DesktopSessionTest, typesIntoARealTerminal)
{
    DesktopSession session;
    const QString typed = session.folders().home() + QStringLiteral("/typed");
    Program &xterm = session.start(QStringLiteral("xterm"),
                                   {QStringLiteral("-class"), QStringLiteral("Terminal"), QStringLiteral("-bg"),
                                    QStringLiteral("#204060"), QStringLiteral("-e"), QStringLiteral("cat > ") + typed});
    const WindowInfo window = session.windows().waitForWindow(QStringLiteral("terminal"));
    EXPECT_EQ(window.pid, xterm.pid());
    EXPECT_TRUE(window.managed);
    const QPoint inside = window.geometry.bottomRight() - QPoint(8, 8);
    session.screen().waitForPixel(inside, QColor(0x20, 0x40, 0x60));

    session.windows().activate(window.id);
    waitUntil([&] { return session.windows().activeWindow() == window.id; }, QStringLiteral("xterm was active"));
    session.input().type(QStringLiteral("Hello, World!\n"));
    session.input().tap(QStringLiteral("Control+d"));
    EXPECT_EQ(xterm.waitForExit(), 0);
    EXPECT_EQ(fileText(typed).toStdString(), "Hello, World!\n");
}

TEST(DesktopSessionTest, seesAndChangesTheOrderOfWindows)
{
    for (const WindowManager manager : {WindowManager::None, WindowManager::Openbox}) {
        SessionOptions options;
        options.windowManager = manager;
        DesktopSession session(options);
        const auto start = [&](const char *name, const char *color) {
            session
                .start(QStringLiteral("plain-window"),
                       {QStringLiteral("--class"), QLatin1String(name), QStringLiteral("--color"), QLatin1String(color),
                        QStringLiteral("--at"), QStringLiteral("100,100,300,200")})
                .waitForOutput(QStringLiteral("^ready$"));
            return session.windows().waitForWindow(QLatin1String(name)).id;
        };
        const xcb_window_t red = start("Red", "#ff0000");
        const xcb_window_t blue = start("Blue", "#0000ff");
        session.windows().moveTo(blue, QPoint(100, 100));
        session.windows().moveTo(red, QPoint(100, 100));
        session.windows().raise(blue);
        session.screen().waitForPixel(QPoint(250, 200), Qt::blue);
        EXPECT_EQ(session.windows().all().last().id, blue);
        session.windows().raise(red);
        session.screen().waitForPixel(QPoint(250, 200), Qt::red);
        EXPECT_EQ(session.windows().all().last().id, red);

        session.windows().close(red);
        session.windows().waitUntilGone(withClass(QStringLiteral("red")), QStringLiteral("the window closed"));
        EXPECT_EQ(session.windows().all().size(), 1);
    }
}

TEST(DesktopSessionTest, iconifiedWindowsAreStillListed)
{
    DesktopSession session;
    session.start(QStringLiteral("plain-window")).waitForOutput(QStringLiteral("^ready$"));
    const WindowInfo window = session.windows().waitForWindow(QStringLiteral("plain-window"));
    session.windows().iconify(window.id);
    session.windows().waitUntilGone(withClass(QStringLiteral("plain-window")), QStringLiteral("it was iconified"));
    const QList<WindowInfo> listed = session.windows().all();
    ASSERT_EQ(listed.size(), 1);
    EXPECT_EQ(listed.first().id, window.id);
    EXPECT_TRUE(session.windows().states(window.id).contains("_NET_WM_STATE_HIDDEN"));
}

TEST(DesktopSessionTest, compositorBlendsWhileItRuns)
{
    SessionOptions options;
    options.background = Qt::white;
    options.windowManager = WindowManager::None;
    DesktopSession session(options);
    session.start(QStringLiteral("plain-window"), {QStringLiteral("--color"), QStringLiteral("#80ff0000")})
        .waitForOutput(QStringLiteral("^ready$"));
    const WindowInfo window = session.windows().waitForWindow(QStringLiteral("plain-window"));
    const QPoint inside = window.geometry.center();
    // Without a compositor the alpha channel is ignored, and what is shown is colour times alpha.
    const auto plain = [](QColor color) { return qAbs(color.red() - 128) < 3 && color.green() < 3; };
    const auto blended = [](QColor color) { return color.red() > 252 && qAbs(color.green() - 127) < 3; };

    session.screen().waitForPixel(inside, plain, QStringLiteral("the window was not blended"));
    session.startCompositor();
    session.screen().waitForPixel(inside, blended, QStringLiteral("the window was blended"));
    session.screen().waitForPixel(QPoint(5, 5), Qt::white);
    session.stopCompositor();
    session.screen().waitForPixel(inside, plain, QStringLiteral("the window was not blended any more"));
}

TEST(DesktopSessionTest, kwinManagesAndBlends)
{
    SessionOptions options;
    options.windowManager = WindowManager::KWin;
    DesktopSession session(options);
    session.start(QStringLiteral("plain-window"), {QStringLiteral("--color"), QStringLiteral("#00ff00")})
        .waitForOutput(QStringLiteral("^ready$"));
    const WindowInfo window = session.windows().waitForWindow(QStringLiteral("plain-window"));
    EXPECT_TRUE(window.managed);
    // It is placed some time after it is managed.
    waitUntil(
        [&] {
            const auto now = session.windows().info(window.id);
            return now && session.screen().pixel(now->geometry.center()) == QColor(Qt::green);
        },
        QStringLiteral("the window was on the screen"));

    session.stopWindowManager();
    session.startWindowManager(WindowManager::Openbox);
    waitUntil(
        [&] {
            const auto now = session.windows().info(window.id);
            return now && now->managed && now->viewable;
        },
        QStringLiteral("the next manager took over the window"));
}

TEST(DesktopSessionTest, dragsFilesBetweenPrograms)
{
    DesktopSession session;
    Program &source = session.start(QStringLiteral("plain-window"),
                                    {QStringLiteral("--class"), QStringLiteral("Source"), QStringLiteral("--drag"),
                                     QStringLiteral("file:///tmp/a%20file")});
    Program &target
        = session.start(QStringLiteral("plain-window"), {QStringLiteral("--class"), QStringLiteral("Target")});
    source.waitForOutput(QStringLiteral("^ready$"));
    target.waitForOutput(QStringLiteral("^ready$"));
    const xcb_window_t from = session.windows().waitForWindow(QStringLiteral("source")).id;
    const xcb_window_t to = session.windows().waitForWindow(QStringLiteral("target")).id;
    session.windows().moveTo(from, QPoint(50, 50));
    session.windows().moveTo(to, QPoint(600, 300));
    waitUntil(
        [&] {
            return session.windows().info(from)->geometry.x() < 60 && session.windows().info(to)->geometry.x() >= 600;
        },
        QStringLiteral("the windows stood apart"));

    const Input &input = session.input();
    input.moveTo(session.windows().info(from)->geometry.center());
    input.press();
    source.waitForOutput(QStringLiteral("^click"));
    input.moveBy(QPoint(20, 0));
    source.waitForOutput(QStringLiteral("^drag$"));
    input.glide(session.windows().info(to)->geometry.center(), 10);
    target.waitForOutput(QStringLiteral("^enter$"));
    session.windows().waitUntilDragHandled(from, to);
    input.release();
    EXPECT_EQ(target.waitForOutput(QStringLiteral("^drop")).toStdString(), "drop file:///tmp/a%20file");
    source.waitForOutput(QStringLiteral("^dragged 1$"));
}

TEST(DesktopSessionTest, keysReachTheFocusedWindowInOrder)
{
    DesktopSession session;
    Program &program = session.start(QStringLiteral("plain-window"));
    program.waitForOutput(QStringLiteral("^active$"));
    const WindowInfo window = session.windows().waitForWindow(QStringLiteral("plain-window"));
    EXPECT_EQ(session.windows().inputFocus(), window.id);
    session.input().tap(QStringLiteral("Control+Shift+space"));
    session.input().tap(QStringLiteral("Escape"));
    session.windows().waitUntilHandled(window.id);
    program.waitForOutput(QStringLiteral("^key Ctrl\\+Shift\\+Space$"));
    program.waitForOutput(QStringLiteral("^key Esc$"));
}

TEST(DesktopSessionTest, assistiveTechnologyFindsAndPressesAButton)
{
    SessionOptions options;
    options.accessibility = true;
    DesktopSession session(options);
    Program &program = session.start(
        QStringLiteral("plain-window"),
        {QStringLiteral("--class"), QStringLiteral("Shop"), QStringLiteral("--button"), QStringLiteral("Größe")});
    const Accessibility &accessibility = session.accessibility();
    const AccessibleItem button
        = accessibility.waitFor(QStringLiteral("Shop"), QStringLiteral("push button"), QStringLiteral("Größe"));
    const WindowInfo window = session.windows().waitForWindow(QStringLiteral("shop"));
    EXPECT_TRUE(window.geometry.contains(accessibility.refreshed(button).extents));
    EXPECT_TRUE(button.has(AccessibleState::Enabled));
    accessibility.press(button);
    program.waitForOutput(QStringLiteral("^pressed$"));
    EXPECT_THROW(accessibility.doAction(button, QStringLiteral("Fold")), DesktopFailure);
}

TEST(DesktopSessionTest, monitorsDivideTheScreen)
{
    SessionOptions options;
    options.screen = QSize(1000, 600);
    options.monitors = {QRect(0, 0, 600, 600), QRect(600, 0, 400, 600)};
    DesktopSession session(options);
    Program &program
        = session.start(QStringLiteral("plain-window"),
                        {QStringLiteral("--full-screen"), QStringLiteral("--color"), QStringLiteral("#102030")});
    program.waitForOutput(QStringLiteral("^ready$"));
    const xcb_window_t id = session.windows().waitForWindow(QStringLiteral("plain-window")).id;
    waitUntil([&] { return options.monitors.contains(session.windows().info(id)->geometry); },
              QStringLiteral("the full-screen window filled one monitor"));
}

TEST(DesktopSessionTest, programsAreMeasured)
{
    DesktopSession session;
    Program &busy = session.start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("while :; do :; done")});
    waitUntil([&] { return processorTime(busy.pid()) >= std::chrono::milliseconds(50); },
              QStringLiteral("the busy program had used processor time"));
    EXPECT_GT(proportionalMemory(busy.pid()), 50 * 1024);
    busy.kill();
    EXPECT_EQ(busy.waitForExit(), 128 + SIGKILL);
    EXPECT_THROW(busy.waitForOutput(QStringLiteral("anything")), DesktopFailure);
}

TEST(DesktopSessionTest, nothingOutlivesTheSession)
{
    QList<qint64> pids;
    QString home;
    {
        SessionOptions options;
        options.accessibility = true;
        DesktopSession session(options);
        home = session.folders().home();
        // A daemon that leaves its parent and its session, as those do which the bus starts.
        Program &daemon = session.start(QStringLiteral("sh"),
                                        {QStringLiteral("-c"), QStringLiteral("setsid sleep 1000 >/dev/null 2>&1 &")});
        EXPECT_EQ(daemon.waitForExit(), 0);
        pids = session.processes().all();
        // The server, the window manager, two buses, the launcher of one, the registry and the sleeper.
        EXPECT_GE(pids.size(), 7);
    }
    // Those that had begun to end by themselves may take a moment more.
    for (const qint64 pid : pids)
        waitUntil([&] { return hasEnded(pid); }, QStringLiteral("process %1 had ended").arg(pid));
    EXPECT_FALSE(QFile::exists(home));
}

} // namespace
} // namespace Orbita
