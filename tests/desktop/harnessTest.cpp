// What tests of the whole program rely on: that the desktop they run on is real, and that it is gone afterwards.

#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"

#include <gtest/gtest.h>

#include <QFile>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

TEST(DesktopSessionTest, dragsFilesBetweenPrograms)
{
    DesktopSession session;
    Program &source
        = session.start(u"plain-window"_s, {u"--class"_s, u"Source"_s, u"--drag"_s, u"file:///tmp/a%20file"_s});
    Program &target = session.start(u"plain-window"_s, {u"--class"_s, u"Target"_s});
    source.waitForOutput(u"^ready$"_s);
    target.waitForOutput(u"^ready$"_s);
    const xcb_window_t from = session.windows().waitForWindow(u"source"_s).id;
    const xcb_window_t to = session.windows().waitForWindow(u"target"_s).id;
    const auto middleOf = [&](xcb_window_t window) { return session.windows().info(window)->geometry.center(); };
    session.windows().moveTo(from, QPoint(50, 50));
    session.windows().moveTo(to, QPoint(600, 300));
    waitUntil([&] { return middleOf(from).x() < 220 && middleOf(to).x() > 700; }, u"the windows stood apart"_s);

    const Input &input = session.input();
    input.moveTo(middleOf(from));
    input.press();
    source.waitForOutput(u"^click"_s);
    input.moveBy(QPoint(20, 0));
    source.waitForOutput(u"^drag$"_s);
    input.glide(middleOf(to), 10);
    target.waitForOutput(u"^enter$"_s);
    session.windows().waitUntilDragHandled(from, to);
    input.release();
    EXPECT_EQ(target.waitForOutput(u"^drop"_s).toStdString(), "drop file:///tmp/a%20file");
    source.waitForOutput(u"^dragged 1$"_s);
}

TEST(DesktopSessionTest, nothingOutlivesTheSession)
{
    QList<qint64> pids;
    QString home;
    {
        DesktopSession session({.accessibility = true});
        home = session.folders().home();
        // A daemon that leaves its parent and its session, as those do which the bus starts.
        Program &daemon = session.start(u"sh"_s, {u"-c"_s, u"setsid sleep 1000 >/dev/null 2>&1 &"_s});
        EXPECT_EQ(daemon.waitForExit(), 0);
        pids = session.processes().all();
        // The server, the window manager, two buses, the launcher of one, the registry and the sleeper.
        EXPECT_GE(pids.size(), 7);
    }
    // Those that had begun to end by themselves may take a moment more.
    for (const qint64 pid : pids)
        waitUntil([&] { return hasEnded(pid); }, u"process %1 had ended"_s.arg(pid));
    EXPECT_FALSE(QFile::exists(home));
}

} // namespace
} // namespace Orbita
