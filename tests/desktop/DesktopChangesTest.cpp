// The ring on desktops of several kinds, and on a desktop that changes while it is shown.

#include "desktop/OrbitaSession.h"

#include <QRegularExpression>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

const QRect ringAtTheMiddle(440, 200, 400, 400);

/// A pixel of the bare disc: outside the close button, within the ring of items.
const QPoint onDisc = ringAtTheMiddle.center() + QPoint(0, 60);
/// A pixel of the ring's square that lies outside its disc.
const QPoint inCorner = ringAtTheMiddle.topLeft() + QPoint(12, 12);

/// Waits until the disc is blended: it is white, and what is black beneath it shows through only then.
void waitUntilBlended(Screen &screen)
{
    screen.waitForPixel(
        onDisc, [](QColor color) { return color.lightness() > 100 && color.lightness() < 250; },
        u"the disc is translucent"_s);
    screen.waitForPixel(inCorner, Qt::black);
}

void waitUntilCut(Screen &screen)
{
    screen.waitForPixel(onDisc, Qt::white);
    screen.waitForPixel(inCorner, Qt::black);
}

TEST(DesktopChanges, ringIsAtHomeUnderKWin)
{
    OrbitaSession session({.windowManager = WindowManager::KWin});
    const WindowInfo xterm = session.startTerminal();
    session.startWindow(u"Cover"_s, {u"--color"_s, u"#000000"_s, u"--full-screen"_s});
    const WindowInfo cover = session.windows().waitForWindow(u"Cover"_s);
    session.activate(cover);

    const WindowInfo ring = session.show();
    EXPECT_EQ(ring.geometry, ringAtTheMiddle);
    session.waitUntilActive(ring);
    waitUntilBlended(session.desktop().screen());
    session.dismiss();
    session.waitUntilActive(cover);

    session.show();
    session.clickItem(terminal);
    session.waitUntilHidden();
    session.waitUntilActive(xterm);
}

TEST(DesktopChanges, ringFollowsACompositorThatComesAndGoes)
{
    OrbitaSession session({.background = Qt::black});
    session.show();
    waitUntilCut(session.desktop().screen());
    session.desktop().startCompositor();
    waitUntilBlended(session.desktop().screen());
    session.desktop().stopCompositor();
    waitUntilCut(session.desktop().screen());
}

TEST(DesktopChanges, clicksBesideTheDiscReachTheWindowBeneath)
{
    for (const bool compositor : {false, true}) {
        SCOPED_TRACE(compositor ? "with a compositor" : "without a compositor");
        OrbitaSession session({.compositor = compositor});
        const Program &beneath = session.startWindow(u"beneath"_s, {u"--full-screen"_s});
        session.show();
        session.input().click(onDisc);
        const auto clicks = [&beneath] { return beneath.lines().filter(QRegularExpression(u"^click"_s)); };
        // The window manager takes over the region a moment after it has taken over the window.
        const auto isReached = [&] {
            session.input().click(inCorner);
            return !clicks().isEmpty();
        };
        waitUntil(isReached, u"a click in the corner reaches the window beneath"_s);
        EXPECT_EQ(clicks().first(), u"click %1 %2"_s.arg(inCorner.x()).arg(inCorner.y()))
            << "and not the click on the disc";
    }
}

TEST(DesktopChanges, ringOutlivesTheWindowManager)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    session.show();
    const qint64 pid = session.pid();
    session.desktop().stopWindowManager();
    session.desktop().startWindowManager(WindowManager::Openbox);
    session.waitForRing();
    session.clickItem(terminal);
    session.waitUntilHidden();
    session.waitUntilActive(xterm);

    const WindowInfo ring = session.show();
    EXPECT_EQ(ring.geometry, ringAtTheMiddle);
    session.waitUntilActive(ring);
    session.waitForNames(coreEntries + QStringList(terminal));
    session.dismiss();
    EXPECT_EQ(session.pid(), pid);
}

TEST(DesktopChanges, ringStandsOnThePointersScreenUntilThatIsUnplugged)
{
    OrbitaSession session({.monitors = {QRect(0, 0, 640, 800), QRect(640, 0, 640, 800)}},
                          {{u"menuPositionSettings"_s, 2}});
    EXPECT_EQ(session.show({700, 30}).geometry, QRect(760, 200, 400, 400));
    const qint64 pid = session.pid();
    ASSERT_EQ(session.desktop().start(u"xrandr"_s, {u"--delmonitor"_s, u"monitor-1"_s}).waitForExit(), 0);
    session.waitForGeometry(QRect(120, 200, 400, 400));
    EXPECT_EQ(session.pid(), pid);
}

TEST(DesktopChanges, ringMovesToWhereItIsAskedForNext)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    session.activate(xterm);
    const WindowInfo first = session.show({940, 500});
    session.input().moveTo({300, 300});
    session.orbita(u"show"_s);
    session.waitForGeometry(QRect(100, 100, 400, 400));
    EXPECT_EQ(session.ring()->id, first.id);
    session.dismiss();
    session.waitUntilActive(xterm);
}

} // namespace
} // namespace Orbita
