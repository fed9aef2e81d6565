// The ring on desktops of several kinds, and on a desktop that changes while it is shown.

#include "desktop/OrbitaSession.h"

#include <QRegularExpression>

#include <xcb/xcb.h>

namespace Orbita {
namespace {

const QStringList coreEntries{QStringLiteral("Finder"), QStringLiteral("Launchpad"), QStringLiteral("App Store"),
                              QStringLiteral("iTunes"), QStringLiteral("Safari"),    QStringLiteral("Mail")};
const QString terminal = QStringLiteral("XTerm");
const QRect ringAtTheMiddle(440, 200, 400, 400);

/// A pixel of the bare disc: outside the close button, within the ring of items.
QPoint onDisc(const WindowInfo &ring)
{
    return ring.geometry.center() + QPoint(0, 60);
}

/// A pixel of the ring's square that lies outside its disc.
QPoint inCorner(const WindowInfo &ring)
{
    return ring.geometry.topLeft() + QPoint(12, 12);
}

/// The disc is white; what is black beneath it shows through only where it is blended.
bool isBlendedWhite(QColor color)
{
    return color.lightness() > 100 && color.lightness() < 250;
}

/// Starts an application of one window, called and titled \a name, that fills the screen, and gives it the keyboard.
WindowInfo startFullScreen(OrbitaSession &session, const QString &name)
{
    session.desktop()
        .start(QStringLiteral("plain-window"),
               {QStringLiteral("--class"), name, QStringLiteral("--title"), name, QStringLiteral("--color"),
                QStringLiteral("#000000"), QStringLiteral("--full-screen")})
        .waitForOutput(QStringLiteral("^ready$"));
    const WindowInfo window = session.windows().waitFor(withTitle(name), name);
    session.activate(window);
    return window;
}

TEST(DesktopChanges, ringIsAtHomeUnderKWin)
{
    SessionOptions options;
    options.windowManager = WindowManager::KWin;
    OrbitaSession session(options);
    const WindowInfo xterm = session.startTerminal();
    const WindowInfo cover = startFullScreen(session, QStringLiteral("Cover"));

    const WindowInfo ring = session.show();
    EXPECT_EQ(ring.geometry, ringAtTheMiddle);
    session.waitUntilActive(ring);
    session.desktop().screen().waitForPixel(onDisc(ring), isBlendedWhite, QStringLiteral("the disc is translucent"));
    session.desktop().screen().waitForPixel(inCorner(ring), Qt::black);
    session.dismiss();
    session.waitUntilActive(cover);

    session.show();
    session.input().click(session.item(terminal).rect.center());
    session.waitUntilHidden();
    session.waitUntilActive(xterm);
}

TEST(DesktopChanges, ringFollowsACompositorThatComesAndGoes)
{
    SessionOptions options;
    options.background = Qt::black;
    OrbitaSession session(options);
    Screen &screen = session.desktop().screen();
    const WindowInfo ring = session.show();
    screen.waitForPixel(onDisc(ring), Qt::white);
    screen.waitForPixel(inCorner(ring), Qt::black);

    session.desktop().startCompositor();
    screen.waitForPixel(onDisc(ring), isBlendedWhite, QStringLiteral("the disc is translucent"));
    screen.waitForPixel(inCorner(ring), Qt::black);

    session.desktop().stopCompositor();
    screen.waitForPixel(onDisc(ring), Qt::white);
    screen.waitForPixel(inCorner(ring), Qt::black);
}

TEST(DesktopChanges, clicksBesideTheDiscReachTheWindowBeneath)
{
    for (const bool compositor : {false, true}) {
        SCOPED_TRACE(compositor ? "with a compositor" : "without a compositor");
        SessionOptions options;
        options.compositor = compositor;
        OrbitaSession session(options);
        Program &beneath = session.desktop().start(QStringLiteral("plain-window"), {QStringLiteral("--full-screen")});
        beneath.waitForOutput(QStringLiteral("^ready$"));
        const WindowInfo ring = session.show();
        session.input().click(onDisc(ring));
        const auto clicks = [&beneath] { return beneath.lines().filter(QRegularExpression(QStringLiteral("^click"))); };
        // The window manager takes over the region a moment after it has taken over the window.
        waitUntil(
            [&] {
                session.input().click(inCorner(ring));
                return !clicks().isEmpty();
            },
            QStringLiteral("a click in the corner reaches the window beneath"));
        const QPoint expected = inCorner(ring);
        EXPECT_EQ(clicks().first(), QStringLiteral("click %1 %2").arg(expected.x()).arg(expected.y()))
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
    session.input().click(session.item(terminal).rect.center());
    session.waitUntilHidden();
    session.waitUntilActive(xterm);

    const WindowInfo ring = session.show();
    EXPECT_EQ(ring.geometry, ringAtTheMiddle);
    session.waitUntilActive(ring);
    session.waitForNames(coreEntries + QStringList(terminal));
    session.dismiss();
    EXPECT_EQ(session.pid(), pid);
}

TEST(DesktopChanges, ringOnAScreenThatIsUnpluggedComesBackOrHides)
{
    SessionOptions twoMonitors;
    twoMonitors.monitors = {QRect(0, 0, 640, 800), QRect(640, 0, 640, 800)};
    OrbitaSession session(twoMonitors);
    session.show({960, 400});
    const qint64 pid = session.pid();
    Program &unplug = session.desktop().start(QStringLiteral("xrandr"),
                                              {QStringLiteral("--delmonitor"), QStringLiteral("monitor-1")});
    ASSERT_EQ(unplug.waitForExit(), 0);
    const QRect remaining = twoMonitors.monitors.first();
    waitUntil([&] { return !session.ring() || remaining.contains(session.ring()->geometry); },
              QStringLiteral("the ring is on the remaining screen or hidden"));
    EXPECT_EQ(session.pid(), pid);
}

TEST(DesktopChanges, ringMovesToWhereItIsAskedForNext)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    session.activate(xterm);
    const WindowInfo first = session.show({940, 500});
    session.input().moveTo({300, 300});
    ASSERT_EQ(session.orbita({QStringLiteral("show")}), 0);
    waitUntil([&] { return session.ring() && session.ring()->geometry == QRect(100, 100, 400, 400); },
              QStringLiteral("the ring moves to the pointer"));
    EXPECT_EQ(session.ring()->id, first.id);
    session.dismiss();
    session.waitUntilActive(xterm);
}

TEST(DesktopChanges, everyEntryOpensOnHoverInFullSwiftMode)
{
    OrbitaSession session({}, {{QStringLiteral("swiftMode"), 1}});
    session.installBrowser();
    session.show();
    session.input().moveTo(session.item(QStringLiteral("Safari")).rect.center());
    session.windows().waitFor(withTitle(QStringLiteral("browser")), QStringLiteral("the browser's window"));
    session.waitUntilHidden();
}

TEST(DesktopChanges, blacklistedApplicationsNeverAppear)
{
    const QString blacklist = QStringLiteral("blacklistedApps");
    const QString name = QStringLiteral("Unwanted");
    OrbitaSession session;
    const QString path
        = session.install(QStringLiteral("unwanted"), name, QStringLiteral("plain-window --class unwanted"), name);
    session.setDefault(blacklist, QStringList(path));
    session.startTerminal();
    const auto startUnwanted = [&] {
        session.desktop().start(QStringLiteral("plain-window"), {QStringLiteral("--class"), name});
        session.windows().waitForWindow(name);
    };
    startUnwanted();
    session.show();
    session.waitForNames(coreEntries + QStringList(terminal));
    startUnwanted();
    // What has started later and is in the ring was seen after the unwanted one.
    session.desktop().start(QStringLiteral("mousepad"));
    session.waitForNames(coreEntries + QStringList{terminal, QStringLiteral("Mousepad")});
    session.orbita({QStringLiteral("hide")});
    session.waitUntilHidden();

    session.setDefault(blacklist, QStringList());
    session.show();
    session.item(name);
}

/// A window of the test's own that says nothing of itself.
xcb_window_t mapBareWindow(const XConnection &connection)
{
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, connection.root(), 50, 50, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(connection, window);
    connection.sync();
    return window;
}

TEST(DesktopChanges, windowsThatSayNothingOfThemselvesDoNotDisturb)
{
    OrbitaSession session;
    const XConnection &connection = session.desktop().connection();
    const auto waitForBare = [&](xcb_window_t window) {
        session.windows().waitFor([window](const WindowInfo &info) { return info.id == window; },
                                  QStringLiteral("the bare window"));
    };
    const xcb_window_t before = mapBareWindow(connection);
    waitForBare(before);
    session.show();
    const xcb_window_t after = mapBareWindow(connection);
    waitForBare(after);
    session.startTerminal();
    session.item(terminal);
    EXPECT_EQ(session.names().first(coreEntries.size()), coreEntries);
    xcb_destroy_window(connection, before);
    xcb_destroy_window(connection, after);
    connection.sync();
    session.waitForNames(coreEntries + QStringList(terminal));
}

/// Counts the changes of one property of a window, of which the server tells every single one.
class PropertyChanges {
public:
    PropertyChanges(const QByteArray &display, xcb_window_t window, const QByteArray &property)
        : m_connection(display), m_property(m_connection.atom(property))
    {
        const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection, window, XCB_CW_EVENT_MASK, &events);
        m_connection.sync();
    }

    /// Those since the last call.
    int take()
    {
        m_connection.sync();
        int changes = 0;
        for (;;) {
            const XReply<xcb_generic_event_t> event(xcb_poll_for_event(m_connection));
            if (!event)
                return changes;
            const auto *change = reinterpret_cast<const xcb_property_notify_event_t *>(event.get());
            if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && change->atom == m_property)
                ++changes;
        }
    }

private:
    XConnection m_connection;
    xcb_atom_t m_property;
};

TEST(DesktopChanges, ringAppearsAndGoesAtOnceWhereMotionIsReduced)
{
    OrbitaSession session;
    session.desktop().folders().write(QStringLiteral(".config/kdeglobals"), "[KDE]\nAnimationDurationFactor=0\n");
    QProcessEnvironment kde;
    kde.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("KDE"));
    session.input().moveTo({640, 400});
    ASSERT_EQ(session.orbita({QStringLiteral("show")}, kde), 0);
    const WindowInfo ring = session.waitForRing();
    session.dismiss();

    // A fade sets the opacity with every frame.
    PropertyChanges opacity(session.desktop().connection().display(), ring.id, "_NET_WM_WINDOW_OPACITY");
    session.show();
    EXPECT_EQ(opacity.take(), 1);
    session.dismiss();
    EXPECT_EQ(opacity.take(), 1);
}

} // namespace
} // namespace Orbita
