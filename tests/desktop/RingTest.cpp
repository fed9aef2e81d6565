// The ring on a desktop with a window manager and real applications.

#include "desktop/OrbitaSession.h"

#include <QElapsedTimer>

#include <chrono>
#include <cmath>

namespace Orbita {
namespace {

const QStringList coreEntries{QStringLiteral("Finder"), QStringLiteral("Launchpad"), QStringLiteral("App Store"),
                              QStringLiteral("iTunes"), QStringLiteral("Safari"),    QStringLiteral("Mail")};
const QString terminal = QStringLiteral("XTerm");

/// Hides what a pointer over the ring would magnify: right of the close button, within the dead centre.
QPoint restOf(const WindowInfo &ring)
{
    return ring.geometry.center();
}

TEST(Ring, standsRoundThePointerWithTheCoreEntriesAndWhatRuns)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    session.desktop().start(QStringLiteral("mousepad"));
    session.windows().waitForWindow(QStringLiteral("mousepad"));
    session.windows().activate(xterm.id);
    waitUntil([&] { return session.windows().activeWindow() == xterm.id; }, QStringLiteral("xterm is active"));

    const WindowInfo ring = session.show({640, 400});
    EXPECT_EQ(ring.geometry, QRect(440, 200, 400, 400));
    waitUntil([&] { return session.windows().activeWindow() == ring.id; }, QStringLiteral("the ring has the keyboard"));
    EXPECT_TRUE(session.windows().states(ring.id).contains("_NET_WM_STATE_ABOVE"));
    EXPECT_EQ(session.windows().desktop(ring.id), 0xFFFFFFFF);
    session.waitForNames(coreEntries + QStringList{terminal, QStringLiteral("Mousepad")});
    EXPECT_EQ(session.storedNames(), coreEntries);

    session.input().tap(QStringLiteral("Escape"));
    session.waitUntilHidden();
    waitUntil([&] { return session.windows().activeWindow() == xterm.id; },
              QStringLiteral("xterm has the keyboard again"));
}

TEST(Ring, standsInTheMiddleOfThePointersScreenWhenAskedTo)
{
    SessionOptions twoMonitors;
    twoMonitors.monitors = {QRect(0, 0, 640, 800), QRect(640, 0, 640, 800)};
    OrbitaSession session(twoMonitors, {{QStringLiteral("menuPositionSettings"), 2}});
    EXPECT_EQ(session.show({700, 30}).geometry.center(), QRect(760, 200, 400, 400).center());
    session.input().moveTo({10, 790});
    ASSERT_EQ(session.orbita({QStringLiteral("show")}), 0);
    waitUntil([&] { return session.ring() && session.ring()->geometry == QRect(120, 200, 400, 400); },
              QStringLiteral("the ring moves to the other screen"));
}

TEST(Ring, magnifiesAndNamesTheItemUnderThePointer)
{
    OrbitaSession session;
    const WindowInfo ring = session.show();
    const ShownItem resting = session.item(QStringLiteral("Launchpad"));
    const ShownItem opposite = session.item(QStringLiteral("Safari"));
    session.input().moveTo(resting.rect.center());
    waitUntil([&] { return session.item(QStringLiteral("Launchpad")).rect.width() > resting.rect.width(); },
              QStringLiteral("the item has grown"));
    waitUntil([&] { return session.item(QStringLiteral("Safari")).rect.width() < opposite.rect.width() / 2; },
              QStringLiteral("the item opposite has shrunk"));
    waitUntil(
        [&] {
            return session.windows()
                .find([&](const WindowInfo &window) {
                    return withClass(QStringLiteral("orbita"))(window) && window.overrideRedirect
                        && window.id != ring.id;
                })
                .has_value();
        },
        QStringLiteral("the title bubble is shown"));
    session.input().moveTo(restOf(ring));
    waitUntil([&] { return session.item(QStringLiteral("Launchpad")).rect.size() == resting.rect.size(); },
              QStringLiteral("the items are equal again in the middle"));
}

TEST(Ring, bringsARunningApplicationForwardOnClick)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    session.desktop().start(QStringLiteral("plain-window"), {QStringLiteral("--title"), QStringLiteral("cover")});
    const WindowInfo cover = session.windows().waitFor(withTitle(QStringLiteral("cover")), QStringLiteral("cover"));
    session.windows().activate(cover.id);
    waitUntil([&] { return session.windows().activeWindow() == cover.id; }, QStringLiteral("the cover is active"));
    session.windows().iconify(xterm.id);

    session.show();
    session.input().click(session.item(terminal).rect.center());
    session.waitUntilHidden();
    waitUntil([&] { return session.windows().activeWindow() == xterm.id; }, QStringLiteral("xterm has come forward"));
}

TEST(Ring, launchesAnEntryOnClick)
{
    OrbitaSession session;
    session.installBrowser();
    session.show();
    session.input().click(session.item(QStringLiteral("Safari")).rect.center());
    session.windows().waitFor(withTitle(QStringLiteral("browser")), QStringLiteral("the browser's window"));
    session.waitUntilHidden();
}

TEST(Ring, opensOnHoverInSwiftMode)
{
    OrbitaSession session({}, {{QStringLiteral("swiftMode"), 2}});
    const WindowInfo xterm = session.startTerminal();
    session.show();
    session.input().moveTo(session.item(QStringLiteral("Finder")).rect.center());
    session.waitUntilStill();
    EXPECT_TRUE(session.ring()) << "what does not run waits for a click";
    session.windows().iconify(xterm.id);
    session.input().moveTo(session.item(terminal).rect.center());
    session.waitUntilHidden();
    waitUntil([&] { return session.windows().activeWindow() == xterm.id; }, QStringLiteral("xterm has come forward"));
}

TEST(Ring, isChosenFromByKeyboard)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    const WindowInfo ring = session.show();
    waitUntil([&] { return session.windows().inputFocus() == ring.id; }, QStringLiteral("the ring has the keyboard"));
    session.item(terminal);

    session.input().tap(QStringLiteral("Return"));
    waitUntil([&] { return session.focusedItem() == QStringLiteral("Finder"); },
              QStringLiteral("the first key only highlights the first item"));
    // Within the guard a key is swallowed, so each is pressed until it has had its effect.
    session.pressUntil(QStringLiteral("Left"), [&] { return session.focusedItem() == terminal; });
    session.pressUntil(QStringLiteral("Return"), [&] { return session.windows().activeWindow() == xterm.id; });
    session.waitUntilHidden();
}

/// Presses the right arrow \a times in one go and returns how long it took until the ring had taken them all.
std::chrono::milliseconds pressRightInOneGo(OrbitaSession &session, const WindowInfo &ring, int times)
{
    const QList<quint8> right = session.input().keyCodes(QStringLiteral("Right"));
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < times; ++i) {
        session.input().pressKeys(right);
        session.input().releaseKeys(right);
    }
    session.windows().waitUntilHandled(ring.id);
    return std::chrono::milliseconds(time.elapsed());
}

TEST(Ring, ignoresKeysThatFollowAtOnceButNeverEscape)
{
    // The first key highlights the first entry. If all were accepted, the others would go round the six entries, four
    // times and on to the fifth entry; in less than four times the guard they can reach the fourth at most.
    constexpr int presses = 29;
    constexpr std::chrono::milliseconds guard(200);
    OrbitaSession session;
    std::chrono::milliseconds taken{};
    const auto isQuickEnough = [&] {
        const WindowInfo ring = session.show();
        session.waitForNames(coreEntries);
        waitUntil([&] { return session.windows().inputFocus() == ring.id; },
                  QStringLiteral("the ring has the keyboard"));
        taken = pressRightInOneGo(session, ring, presses);
        if (taken < 4 * guard)
            return true;
        session.dismiss();
        return false;
    };
    waitUntil(isQuickEnough, QStringLiteral("the keys are taken in less than four times the guard"));
    const auto reached = coreEntries.indexOf(session.focusedItem());
    EXPECT_GE(reached, 0);
    EXPECT_LE(reached, taken / guard) << "of " << presses << " keys within " << taken.count() << " ms";

    session.input().tap(QStringLiteral("Right"));
    session.input().tap(QStringLiteral("Escape"));
    session.waitUntilHidden();
    EXPECT_EQ(session.storedNames(), coreEntries);
}

TEST(Ring, ignoresItsCloseButtonJustAfterItHasAppeared)
{
    OrbitaSession session;
    session.input().moveTo({640, 400});
    ASSERT_EQ(session.orbita({QStringLiteral("show")}), 0);
    const WindowInfo ring = session.waitForRing();
    session.input().click(ring.geometry.center());
    session.windows().waitUntilHandled(ring.id);
    session.waitUntilStill();
    EXPECT_TRUE(session.ring()) << "a click while the ring appears does not close it";
    waitUntil(
        [&] {
            if (session.ring())
                session.input().click(ring.geometry.center());
            return !session.ring();
        },
        QStringLiteral("a later click closes the ring"));
}

TEST(Ring, staysForAReleaseOverItAndGoesForOneOutside)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    waitUntil([&] { return session.windows().activeWindow() == xterm.id; }, QStringLiteral("xterm is active"));
    const WindowInfo ring = session.show();
    session.input().click(ring.geometry.center() + QPoint(60, 0));
    session.windows().waitUntilHandled(ring.id);
    session.waitUntilStill();
    EXPECT_TRUE(session.ring());
    session.input().click({1270, 790});
    session.waitUntilHidden();
    waitUntil([&] { return session.windows().activeWindow() == xterm.id; },
              QStringLiteral("xterm has the keyboard again"));
}

TEST(Ring, followsApplicationsThatStartAndEnd)
{
    OrbitaSession session;
    session.show();
    session.waitForNames(coreEntries);
    Program &xterm = session.desktop().start(QStringLiteral("xterm"));
    session.waitForNames(coreEntries + QStringList(terminal));
    xterm.terminate();
    session.waitForNames(coreEntries);
}

TEST(Ring, showsAnApplicationOnceHoweverManyWindowsItHas)
{
    OrbitaSession session;
    session.startTerminal();
    session.desktop().start(QStringLiteral("xterm"));
    waitUntil([&] { return session.windows().matching(withClass(terminal)).size() == 2; },
              QStringLiteral("two terminals"));
    session.show();
    session.waitForNames(coreEntries + QStringList(terminal));
}

TEST(Ring, followsItsSettingsWhileItIsShown)
{
    OrbitaSession session;
    session.startTerminal();
    session.show();
    session.item(terminal);
    session.setDefault(QStringLiteral("runningAppsStyle"), 1);
    session.waitForNames(coreEntries);
    session.setDefault(QStringLiteral("showFinder"), false);
    session.waitForNames(coreEntries.mid(1));
    session.setDefault(QStringLiteral("menuSizeSettings"), 2);
    waitUntil([&] { return session.ring() && session.ring()->geometry == QRect(390, 150, 500, 500); },
              QStringLiteral("the ring grows round its centre"));

    const QPoint disc = session.ring()->geometry.center() + QPoint(0, 60);
    session.waitUntilStill();
    EXPECT_GT(session.desktop().screen().pixel(disc).lightness(), 200);
    session.setDefault(
        QStringLiteral("windowTintColor"), // black
        QByteArray::fromBase64("BAtzdHJlYW10eXBlZIHoA4QBQISEhAdOU0NvbG9yAISECE5TT2JqZWN0AIWEAWMDhAJmZgABhg=="));
    session.desktop().screen().waitForPixel(
        disc, [](QColor color) { return color.lightness() < 60; }, QStringLiteral("the disc is black"));

    session.setDefault(QStringLiteral("magnifySettings"), false);
    const ShownItem resting = session.item(QStringLiteral("Mail"));
    session.input().moveTo(resting.rect.center());
    session.waitUntilStill();
    EXPECT_EQ(session.item(QStringLiteral("Mail")).rect.size(), resting.rect.size());
}

TEST(Ring, isRearrangedByDragging)
{
    OrbitaSession session;
    const WindowInfo ring = session.show();
    session.waitForNames(coreEntries);
    const QPoint centre = ring.geometry.center();
    const QPoint from = session.item(QStringLiteral("Finder")).rect.center();
    const QPointF arm = from - centre;
    session.input().moveTo(from);
    session.input().press();
    // Clockwise along the ring by half a sector and more: past the middle of the entry that follows.
    for (int degrees = 5; degrees <= 40; degrees += 5) {
        const double angle = degrees * M_PI / 180.0;
        session.input().moveTo(centre
                               + QPoint(int(std::lround(arm.x() * std::cos(angle) - arm.y() * std::sin(angle))),
                                        int(std::lround(arm.x() * std::sin(angle) + arm.y() * std::cos(angle)))));
        session.windows().waitUntilHandled(ring.id);
    }
    session.input().release();
    const QStringList moved{QStringLiteral("Launchpad"), QStringLiteral("Finder"), QStringLiteral("App Store"),
                            QStringLiteral("iTunes"),    QStringLiteral("Safari"), QStringLiteral("Mail")};
    session.waitForNames(moved);
    EXPECT_TRUE(session.ring()) << "the release over the ring leaves it open";
    waitUntil([&] { return session.storedNames() == moved; }, QStringLiteral("the new order is in the file"));
}

} // namespace
} // namespace Orbita
