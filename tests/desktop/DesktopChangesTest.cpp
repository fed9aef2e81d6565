// The ring on desktops of several kinds, and on a desktop that changes while it is shown.

#include "desktop/OrbitaSession.h"

#include <QRegularExpression>

#include <xcb/xcb.h>

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

TEST(DesktopChanges, ringOnAScreenThatIsUnpluggedComesBack)
{
    OrbitaSession session({.monitors = {QRect(0, 0, 640, 800), QRect(640, 0, 640, 800)}});
    session.show({960, 400});
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

TEST(DesktopChanges, blacklistedApplicationsNeverAppear)
{
    const QString blacklist = u"blacklistedApps"_s;
    const QString name = u"Unwanted"_s;
    OrbitaSession session;
    session.setDefault(blacklist, QStringList(session.install(name, name)));
    session.startTerminal();
    session.startWindow(name);
    session.show();
    session.waitForNames(coreEntries + QStringList(terminal));
    session.startWindow(name);
    // What has started later and is in the ring was seen after the unwanted one.
    session.desktop().start(u"mousepad"_s);
    session.waitForNames(coreEntries + QStringList{terminal, u"Mousepad"_s});

    session.setDefault(blacklist, QStringList());
    session.item(name);
}

/// A window of the test's own that says nothing of itself.
xcb_window_t mapBareWindow(OrbitaSession &session)
{
    const XConnection &connection = session.desktop().connection();
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, connection.root(), 50, 50, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(connection, window);
    connection.sync();
    session.windows().waitFor([window](const WindowInfo &info) { return info.id == window; }, u"the bare window"_s);
    return window;
}

TEST(DesktopChanges, windowsThatSayNothingOfThemselvesDoNotDisturb)
{
    OrbitaSession session;
    const XConnection &connection = session.desktop().connection();
    const xcb_window_t before = mapBareWindow(session);
    session.show();
    const xcb_window_t after = mapBareWindow(session);
    session.startTerminal();
    session.item(terminal);
    EXPECT_EQ(session.names().first(coreEntries.size()), coreEntries);
    xcb_destroy_window(connection, before);
    xcb_destroy_window(connection, after);
    connection.sync();
    session.waitForNames(coreEntries + QStringList(terminal));
}

/// The changes of opacity that \a connection was told of, which is every single one, since the last call.
int takeOpacityChanges(const XConnection &connection)
{
    const xcb_atom_t opacity = connection.atom("_NET_WM_WINDOW_OPACITY");
    connection.sync();
    int changes = 0;
    for (;;) {
        const XReply<xcb_generic_event_t> event(xcb_poll_for_event(connection));
        if (!event)
            return changes;
        const auto *change = reinterpret_cast<const xcb_property_notify_event_t *>(event.get());
        if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && change->atom == opacity)
            ++changes;
    }
}

TEST(DesktopChanges, ringAppearsAndGoesAtOnceWhereMotionIsReduced)
{
    OrbitaSession session;
    session.desktop().folders().write(u".config/kdeglobals"_s, "[KDE]\nAnimationDurationFactor=0\n");
    QProcessEnvironment kde;
    kde.insert(u"XDG_CURRENT_DESKTOP"_s, u"KDE"_s);
    session.input().moveTo({640, 400});
    session.orbita(u"show"_s, kde);
    const WindowInfo ring = session.waitForRing();
    session.dismiss();

    // A fade sets the opacity with every frame.
    const XConnection connection(session.desktop().connection().display());
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection, ring.id, XCB_CW_EVENT_MASK, &events);
    connection.sync();
    session.show();
    EXPECT_EQ(takeOpacityChanges(connection), 1);
    session.dismiss();
    EXPECT_EQ(takeOpacityChanges(connection), 1);
}

} // namespace
} // namespace Orbita
