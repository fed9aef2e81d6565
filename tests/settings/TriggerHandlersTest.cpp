#include "settings/triggers/TriggerHandlers.h"

#include "platform/memory/MemoryUserDefaults.h"
#include "shortcut/MASShortcut.h"
#include "support/MemoryTriggers.h"

#include <QCoreApplication>
#include <QTimerEvent>

#include <gtest/gtest.h>

#include <cmath>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr KeyCombination controlSpace{49, ControlKey};

Touches threeFingers(double radius, double offset = 0.0)
{
    return {{1, {0.5 + radius + offset, 0.5}}, {2, {0.5 - radius + offset, 0.5}}, {3, {0.5 + offset, 0.5}}};
}

class TriggerHandlersTest : public testing::Test {
protected:
    TriggerHandlersTest()
    {
        m_defaults.setValue(u"GlobalShortcut"_s, MASShortcut(49, ControlModifierFlag).data());
        QObject::connect(&m_handlers, &TriggerHandlers::shouldShow, &m_handlers,
                         [this](ShowEvent event) { m_shown.append(event); });
    }
    void start(GestureTrigger trigger)
    {
        m_trigger = trigger;
        m_handlers.start();
    }
    /// The fingers touch the pad twice in a row, which asks for one check.
    void rest(const Touches &touching)
    {
        m_triggers.taps.touch.touch(touching);
        m_triggers.taps.touch.touch(touching);
    }
    /// Whether the ring was asked for, by anything but the shortcut, since the last time.
    bool hasFired() { return std::exchange(m_shown, {}).contains(ShowEvent::Trackpad); }

    GestureTrigger m_trigger = GestureTriggerNone;
    TriggerHandlers::Time m_now;
    MemoryUserDefaults m_defaults;
    MemoryTriggers m_triggers{m_defaults};
    TriggerHandlers m_handlers{m_triggers.sources, [this] { return m_trigger; }, [this] { return m_now; }};
    QList<ShowEvent> m_shown;
};

TEST_F(TriggerHandlersTest, enableTheTapOfTheirTriggerAndReviveIt)
{
    MemoryEventTaps &taps = m_triggers.taps;
    QTimer &watchdog = *m_handlers.findChild<QTimer *>();
    EXPECT_EQ(watchdog.interval(), 8000);
    int releases = 0;
    QObject::connect(&m_handlers, &TriggerHandlers::shouldHide, &m_handlers, [&] { ++releases; });
    const auto enabled = [&] {
        return QList<bool>{taps.mouseUp.isEnabled(), taps.touch.isEnabled(), taps.otherMouseDown.isEnabled(),
                           taps.mouseMoved.isEnabled()};
    };
    const std::vector<std::pair<GestureTrigger, QList<bool>>> rows{
        {GestureTriggerNone, {true, false, false, false}},
        {GestureTriggerThreeFingerRest, {true, true, false, false}},
        {GestureTriggerFourFingerSpread, {true, true, false, false}},
        {GestureTriggerButton4, {true, false, true, false}},
        {GestureTriggerMouseCircle, {true, false, false, true}}};
    for (const auto &[trigger, expected] : rows) {
        start(trigger);
        EXPECT_EQ(enabled(), expected) << trigger;
        taps.mouseUp.loseSource();
        taps.touch.loseSource();
        taps.otherMouseDown.loseSource();
        taps.mouseMoved.loseSource();
        QTimerEvent look(watchdog.timerId());
        QCoreApplication::sendEvent(&watchdog, &look);
        EXPECT_EQ(enabled(), expected) << trigger << " after the watchdog's look";
    }
    start(GestureTriggerNone);
    taps.mouseUp.release();
    EXPECT_EQ(releases, 1);
    EXPECT_EQ(m_triggers.hotKeys.held.size(), 1U);
    EXPECT_TRUE(m_handlers.isStarted());
    m_handlers.stop();
    EXPECT_EQ(enabled(), QList<bool>(4, false));
    EXPECT_TRUE(m_triggers.hotKeys.held.empty());
    EXPECT_FALSE(m_handlers.isStarted());
}

TEST_F(TriggerHandlersTest, enableNoTapWhileSuspendedAndAllAnewAfterwards)
{
    MemoryEventTaps &taps = m_triggers.taps;
    const auto areEnabled = [&] { return taps.mouseUp.isEnabled() || taps.touch.isEnabled(); };
    m_handlers.setSuspended(true);
    m_handlers.setSuspended(false);
    EXPECT_FALSE(areEnabled()) << "they are not started";
    start(GestureTriggerThreeFingerRest);
    m_handlers.setSuspended(true);
    m_handlers.check();
    EXPECT_FALSE(areEnabled());
    start(GestureTriggerThreeFingerRest);
    EXPECT_FALSE(areEnabled());
    EXPECT_EQ(m_triggers.hotKeys.held.size(), 1U) << "another program could take the shortcut";
    m_handlers.setSuspended(false);
    EXPECT_TRUE(taps.mouseUp.isEnabled() && taps.touch.isEnabled());
}

TEST_F(TriggerHandlersTest, hearTheShortcutAndEachButtonOfTheirTrigger)
{
    start(GestureTriggerNone);
    m_triggers.hotKeys.press(controlSpace);
    EXPECT_EQ(std::exchange(m_shown, {}), QList<ShowEvent>{ShowEvent::Shortcut});
    for (const auto &[trigger, wanted] :
         {std::pair(GestureTriggerMiddleButton, 2), {GestureTriggerButton4, 3}, {GestureTriggerButton5, 4}}) {
        start(trigger);
        for (int button = 2; button <= 5; ++button) {
            testing::internal::CaptureStderr();
            m_triggers.taps.otherMouseDown.press(button);
            EXPECT_EQ(testing::internal::GetCapturedStderr(), "orbita.settings: " + std::to_string(button) + '\n');
            EXPECT_EQ(hasFired(), button == wanted) << "button " << button << " with trigger " << trigger;
        }
    }
}

TEST_F(TriggerHandlersTest, waitUntilFingersHaveRestedUnlessTheyPinch)
{
    start(GestureTriggerThreeFingerRest);
    rest(threeFingers(0.2));
    m_now += 299ms;
    m_handlers.makeRestChecks();
    EXPECT_FALSE(hasFired());
    m_now += 1ms;
    m_handlers.makeRestChecks();
    EXPECT_TRUE(hasFired());
    rest(threeFingers(0.2));
    m_triggers.taps.touch.pinch();
    m_now += 300ms;
    m_handlers.makeRestChecks();
    EXPECT_FALSE(hasFired());
    m_triggers.taps.touch.touch(threeFingers(0.2));
    m_triggers.taps.touch.touch(threeFingers(0.4));
    EXPECT_FALSE(hasFired()) << "spreading is another trigger's";
    rest(threeFingers(0.2));
    start(GestureTriggerNone);
    m_now += 300ms;
    m_handlers.makeRestChecks();
    EXPECT_FALSE(hasFired()) << "another trigger was chosen meanwhile";
}

TEST_F(TriggerHandlersTest, makeTheChecksByThemselves)
{
    start(GestureTriggerThreeFingerRest);
    rest(threeFingers(0.2));
    m_now += 1s;
    QEventLoop loop;
    QObject::connect(&m_handlers, &TriggerHandlers::shouldShow, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_TRUE(hasFired());
}

TEST_F(TriggerHandlersTest, seeFingersSpread)
{
    start(GestureTriggerThreeFingerSpread);
    m_triggers.taps.touch.touch(threeFingers(0.2));
    EXPECT_FALSE(hasFired());
    m_triggers.taps.touch.touch(threeFingers(0.31));
    EXPECT_TRUE(hasFired());
}

TEST_F(TriggerHandlersTest, seeThePointerGoRoundAndLookNoOftenerThanNeeded)
{
    start(GestureTriggerMouseCircle);
    MemoryMouseMovedEventTap &tap = m_triggers.taps.mouseMoved;
    bool fired = false;
    for (int step = 0; step < 16 && !fired; ++step) {
        m_now += 60ms;
        m_triggers.stage.pointer = {400 + 100 * std::sin(step * 0.5), 400 + 100 * std::cos(step * 0.5)};
        tap.move();
        EXPECT_EQ(tap.paused, 50ms);
        fired = hasFired();
        m_now += 1ms;
        tap.move();
        EXPECT_EQ(tap.paused > 0ms, fired) << "too soon to look again, unless for the next circle";
    }
    EXPECT_TRUE(fired);
}

} // namespace
} // namespace Orbita
