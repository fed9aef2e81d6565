// The ring on a desktop with a window manager and real applications.

#include "desktop/OrbitaSession.h"
#include "platform/ColorArchive.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTransform>

#include <chrono>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

TEST(Ring, standsRoundThePointerWithTheCoreEntriesAndWhatRuns)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    session.desktop().start(u"mousepad"_s);
    session.windows().waitForWindow(u"mousepad"_s);
    session.activate(xterm);
    // However many windows an application has, it has one entry.
    session.desktop().start(u"xterm"_s);
    waitUntil([&] { return session.windows().matching(withClass(terminal)).size() == 2; }, u"two terminals"_s);
    session.activate(xterm);

    const WindowInfo ring = session.show({640, 400});
    EXPECT_EQ(ring.geometry, QRect(440, 200, 400, 400));
    session.waitUntilActive(ring);
    EXPECT_TRUE(session.windows().hasState(ring.id, "_NET_WM_STATE_ABOVE"));
    EXPECT_EQ(session.windows().desktop(ring.id), 0xFFFFFFFF);
    session.waitForNames(coreEntries + QStringList{terminal, u"Mousepad"_s});
    EXPECT_EQ(session.storedNames(), coreEntries);
    session.dismiss();
    session.waitUntilActive(xterm);
}

TEST(Ring, standsInTheMiddleOfThePointersScreenWhenAskedTo)
{
    OrbitaSession session({.monitors = {QRect(0, 0, 640, 800), QRect(640, 0, 640, 800)}},
                          {{u"menuPositionSettings"_s, 2}});
    EXPECT_EQ(session.show({700, 30}).geometry, QRect(760, 200, 400, 400));
    session.input().moveTo({10, 790});
    session.orbita(u"show"_s);
    session.waitForGeometry(QRect(120, 200, 400, 400));
}

TEST(Ring, magnifiesAndNamesTheItemUnderThePointer)
{
    OrbitaSession session;
    const WindowInfo ring = session.show();
    const QRect resting = session.item(u"Launchpad"_s).rect;
    const QRect opposite = session.item(u"Safari"_s).rect;
    session.input().moveTo(resting.center());
    waitUntil([&] { return session.item(u"Launchpad"_s).rect.width() > resting.width(); }, u"the item has grown"_s);
    waitUntil([&] { return session.item(u"Safari"_s).rect.width() < opposite.width() / 2; },
              u"the item opposite has shrunk"_s);
    const auto isBubble = [&](const WindowInfo &window) {
        return withClass(u"orbita"_s)(window) && window.overrideRedirect && window.id != ring.id;
    };
    waitUntil([&] { return session.windows().find(isBubble).has_value(); }, u"the title bubble is shown"_s);
    session.input().moveTo(ring.geometry.center());
    waitUntil([&] { return session.item(u"Launchpad"_s).rect.size() == resting.size(); },
              u"the items are equal again in the middle"_s);
}

TEST(Ring, followsThePointerOnAMainScreenBesideAnother)
{
    OrbitaSession session({.monitors = {QRect(640, 0, 640, 800), QRect(0, 0, 640, 800)}});
    const WindowInfo ring = session.show({960, 400});
    EXPECT_EQ(ring.geometry, QRect(760, 200, 400, 400));
    const QRect resting = session.item(u"Launchpad"_s).rect;
    session.input().moveTo(resting.center());
    std::optional<WindowInfo> bubble;
    const auto isBubble = [&](const WindowInfo &window) {
        return withClass(u"orbita"_s)(window) && window.overrideRedirect && window.id != ring.id;
    };
    waitUntil([&] { return (bubble = session.windows().find(isBubble)).has_value(); }, u"the bubble is shown"_s);
    EXPECT_LT(std::abs(bubble->geometry.center().x() - session.item(u"Launchpad"_s).rect.center().x()), 20);
    // Out by a corner of the window's square, beyond the disc.
    session.input().glide({1105, 255}, 20);
    session.input().glide({1250, 110}, 20);
    waitUntil([&] { return session.item(u"Launchpad"_s).rect == resting; }, u"the ring lies as if untouched"_s);
    waitUntil([&] { return !session.windows().find(isBubble); }, u"the bubble is gone"_s);
}

TEST(Ring, fadesInStepByStep)
{
    OrbitaSession session;
    QSet<quint32> opacities;
    const auto hasFaded = [&] {
        if (const auto ring = session.ring()) {
            const auto values = session.desktop().connection().values(ring->id, "_NET_WM_WINDOW_OPACITY");
            opacities.unite(QSet<quint32>(values.begin(), values.end()));
        } else {
            session.orbita(u"show"_s);
        }
        if (opacities.contains(0xFFFFFFFF) && opacities.size() < 4) { // this machine was busy, or the fade is none
            opacities.clear();
            session.orbita(u"hide"_s);
        }
        return opacities.size() >= 4;
    };
    waitUntil(hasFaded, u"the ring was seen half transparent"_s);
}

TEST(Ring, isTwiceAsLargeOnADenseScreen)
{
    OrbitaSession session({.background = Qt::black});
    session.installBrowser();
    QProcessEnvironment dense;
    dense.insert(u"QT_SCALE_FACTOR"_s, u"2"_s);
    session.input().moveTo({640, 400});
    session.orbita(u"show"_s, dense);
    session.waitForGeometry(QRect(240, 0, 800, 800));
    session.waitUntilStill();
    session.desktop().screen().waitForPixel({640, 20}, Qt::white);
    session.desktop().screen().waitForPixel({260, 20}, Qt::black);
    session.input().click(session.item(u"Safari"_s).rect.center() * 2); // assistive technology is told points
    session.waitForBrowser();
}

TEST(Ring, bringsARunningApplicationForwardOnClick)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    session.startWindow(u"cover"_s);
    session.activate(session.windows().waitForWindow(u"cover"_s));
    session.windows().iconify(xterm.id);
    session.show();
    session.clickItem(terminal);
    session.waitUntilHidden();
    session.waitUntilActive(xterm);
}

TEST(Ring, launchesAnEntryOnClick)
{
    OrbitaSession session;
    session.installBrowser();
    session.show();
    session.clickItem(u"Safari"_s);
    session.waitForBrowser();
    session.waitUntilHidden();
}

TEST(Ring, launchesAnEntryForAssistiveTechnology)
{
    OrbitaSession session;
    session.installBrowser();
    session.show();
    const Accessibility &technology = session.desktop().accessibility();
    technology.press(technology.waitFor(u"orbita"_s, u"menu item"_s, u"Safari"_s));
    session.waitForBrowser();
    session.waitUntilHidden();
}

TEST(Ring, opensEveryEntryOnHoverInFullSwiftMode)
{
    OrbitaSession session({}, {{u"swiftMode"_s, 1}});
    session.installBrowser();
    session.show();
    session.input().moveTo(session.item(u"Safari"_s).rect.center());
    session.waitForBrowser();
    session.waitUntilHidden();
}

TEST(Ring, opensWhatRunsOnHoverInTheOtherSwiftMode)
{
    OrbitaSession session({}, {{u"swiftMode"_s, 2}});
    session.installBrowser();
    const WindowInfo xterm = session.startTerminal();
    session.show();
    session.input().moveTo(session.item(u"Safari"_s).rect.center());
    session.waitUntilStill();
    EXPECT_TRUE(session.ring()) << "what does not run waits for a click";
    session.windows().iconify(xterm.id);
    session.input().moveTo(session.item(terminal).rect.center());
    session.waitUntilHidden();
    session.waitUntilActive(xterm);
}

TEST(Ring, isChosenFromByKeyboard)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    session.show();
    session.waitForKeyboard();
    session.item(terminal);
    session.input().tap(u"Return"_s);
    waitUntil([&] { return session.focusedItem() == u"Finder"_s; }, u"the first key only highlights the first item"_s);
    // Within the guard a key is swallowed, so each is pressed until it has had its effect.
    session.pressUntil(u"Left"_s, [&] { return session.focusedItem() == terminal; });
    session.pressUntil(u"Return"_s, [&] { return session.windows().activeWindow() == xterm.id; });
    session.waitUntilHidden();
}

/// Presses the right arrow \a times in one go and returns how long it took until the ring had taken them all.
std::chrono::milliseconds pressRightInOneGo(OrbitaSession &session, const WindowInfo &ring, int times)
{
    const QList<quint8> right = session.input().keyCodes(u"Right"_s);
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
        session.waitForKeyboard();
        taken = pressRightInOneGo(session, ring, presses);
        if (taken < 4 * guard)
            return true;
        session.dismiss();
        return false;
    };
    waitUntil(isQuickEnough, u"the keys are taken in less than four times the guard"_s);
    const auto reached = coreEntries.indexOf(session.focusedItem());
    EXPECT_GE(reached, 0);
    EXPECT_LE(reached, taken / guard) << "of " << presses << " keys within " << taken.count() << " ms";

    session.input().tap(u"Right"_s);
    session.input().tap(u"Escape"_s);
    session.waitUntilHidden();
    EXPECT_EQ(session.storedNames(), coreEntries);
}

TEST(Ring, ignoresItsCloseButtonJustAfterItHasAppeared)
{
    OrbitaSession session;
    session.input().moveTo({640, 400});
    session.orbita(u"show"_s);
    const WindowInfo ring = session.waitForRing();
    session.input().click(ring.geometry.center());
    session.windows().waitUntilHandled(ring.id);
    session.waitUntilStill();
    EXPECT_TRUE(session.ring()) << "a click while the ring appears does not close it";
    const auto isClosed = [&] {
        if (session.ring())
            session.input().click(ring.geometry.center());
        return !session.ring();
    };
    waitUntil(isClosed, u"a later click closes the ring"_s);
}

TEST(Ring, staysForAReleaseOverItAndGoesForOneOutside)
{
    OrbitaSession session;
    const WindowInfo xterm = session.startTerminal();
    session.waitUntilActive(xterm);
    const WindowInfo ring = session.show();
    for (const QPoint &within : {ring.geometry.center() + QPoint(60, 0), ring.geometry.topLeft() + QPoint(1, 1)}) {
        session.input().click(within);
        session.windows().waitUntilHandled(ring.id);
        session.waitUntilStill();
        EXPECT_TRUE(session.ring());
    }
    session.input().click({1270, 790});
    session.waitUntilHidden();
    session.waitUntilActive(xterm);
}

TEST(Ring, followsApplicationsThatStartAndEnd)
{
    OrbitaSession session;
    session.show();
    session.waitForNames(coreEntries);
    Program &xterm = session.desktop().start(u"xterm"_s);
    session.waitForNames(coreEntries + QStringList(terminal));
    xterm.terminate();
    session.waitForNames(coreEntries);
}

TEST(Ring, followsItsSettingsWhileItIsShown)
{
    OrbitaSession session;
    session.startTerminal();
    session.show();
    session.item(terminal);
    session.setDefault(u"runningAppsStyle"_s, 1);
    session.waitForNames(coreEntries);
    session.setDefault(u"showFinder"_s, false);
    session.waitForNames(coreEntries.mid(1));
    session.setDefault(u"menuSizeSettings"_s, 2);
    session.waitForGeometry(QRect(390, 150, 500, 500));

    const QPoint disc = session.ring()->geometry.center() + QPoint(0, 60);
    session.waitUntilStill();
    EXPECT_GT(session.desktop().screen().pixel(disc).lightness(), 200);
    session.setDefault(u"windowTintColor"_s, ColorArchive::encode(Qt::black));
    session.desktop().screen().waitForPixel(
        disc, [](QColor color) { return color.lightness() < 60; }, u"the disc is black"_s);

    session.setDefault(u"magnifySettings"_s, false);
    const QPoint mail = session.item(u"Mail"_s).rect.center();
    const QSize opposite = session.item(u"iTunes"_s).rect.size();
    const auto staysEven = [&] {
        for (const QPoint &place : {session.ring()->geometry.center(), mail}) {
            session.input().moveTo(place);
            session.waitUntilStill();
        }
        return session.item(u"iTunes"_s).rect.size() == opposite;
    };
    waitUntil(staysEven, u"the item opposite keeps its size"_s);
}

class RearrangedRing : public testing::TestWithParam<bool> {};

TEST_P(RearrangedRing, isStored)
{
    const bool releasesOutside = GetParam();
    OrbitaSession session;
    const WindowInfo ring = session.show();
    session.waitForNames(coreEntries);
    const QPoint centre = ring.geometry.center();
    const QPoint from = session.item(u"Finder"_s).rect.center();
    const QPointF arm = from - centre;
    session.input().moveTo(from);
    session.input().press();
    // Clockwise along the ring by half a sector and more: past the middle of the entry that follows.
    for (int degrees = 5; degrees <= 40; degrees += 5) {
        session.input().moveTo(centre + QTransform().rotate(degrees).map(arm).toPoint());
        session.windows().waitUntilHandled(ring.id);
    }
    if (releasesOutside)
        session.input().moveTo(centre + QTransform().rotate(40).map(arm * 5).toPoint());
    session.input().release();
    QStringList moved = coreEntries;
    moved.swapItemsAt(0, 1);
    session.waitUntilStored(moved);
    if (releasesOutside)
        session.waitUntilHidden();
    else
        session.waitForNames(moved);
}

INSTANTIATE_TEST_SUITE_P(Ring, RearrangedRing, testing::Bool(),
                         [](const auto &row) { return row.param ? "releasedOutside" : "releasedOverIt"; });

} // namespace
} // namespace Orbita
