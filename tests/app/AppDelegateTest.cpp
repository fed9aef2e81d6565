#include "app/AppDelegate.h"

#include "app/OrbitaApplication.h"
#include "app/RingDesktop.h"

#include <QLineEdit>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

struct AppDelegateTest : testing::Test {
    RingDesktop desktop;
    AppDelegate delegate{desktop.window, desktop.controllerServices, desktop.clock.appearance};

    AppDelegateTest()
    {
        desktop.settings.setLaunchedBefore(true);
        delegate.applicationDidFinishLaunching();
    }
    void trigger(ShowEvent event)
    {
        Q_EMIT desktop.settings.shouldShow(event);
        desktop.settle();
    }
    [[nodiscard]] bool isShown() const { return desktop.window.isVisible(); }
};

TEST_F(AppDelegateTest, togglesByTheShortcutOverTheRingOnly)
{
    trigger(ShowEvent::Shortcut);
    EXPECT_TRUE(isShown());
    trigger(ShowEvent::Trackpad);
    EXPECT_TRUE(isShown()) << "a gesture over the ring leaves it";
    trigger(ShowEvent::Shortcut);
    EXPECT_FALSE(isShown());
}

TEST_F(AppDelegateTest, movesAShownRingToThePointer)
{
    trigger(ShowEvent::Trackpad);
    desktop.stage.pointer = {1000, 500};
    trigger(ShowEvent::Shortcut);
    EXPECT_TRUE(isShown());
    EXPECT_EQ(desktop.stage.lastFrame.center(), QPointF(1000, 500));
}

TEST_F(AppDelegateTest, hidesForAReleaseOutsideTheRing)
{
    trigger(ShowEvent::Trackpad);
    desktop.stage.pointer = {441, 599};
    desktop.mouseUpTap.release();
    desktop.settle();
    EXPECT_TRUE(isShown()) << "within the window's square";
    desktop.stage.pointer = {439, 400};
    desktop.mouseUpTap.release();
    desktop.settle();
    EXPECT_FALSE(isShown());
}

TEST_F(AppDelegateTest, keepsARingThatIsShownAgainWhileTheFormerOneGoes)
{
    trigger(ShowEvent::Trackpad);
    desktop.stage.pointer = {0, 0};
    desktop.mouseUpTap.release();
    desktop.clock.advance(AnimationClock::defaultDuration);
    desktop.stage.pointer = {640, 400};
    // The end of the fade is on its way when the next trigger comes.
    Q_EMIT desktop.settings.shouldShow(ShowEvent::Trackpad);
    desktop.settle();
    EXPECT_TRUE(isShown());
    EXPECT_NE(desktop.window.findChild<RingView *>(), nullptr);
}

TEST_F(AppDelegateTest, startsEveryShowingFromWhatIsStored)
{
    trigger(ShowEvent::Trackpad);
    EXPECT_EQ(desktop.view().numberOfItemsInSection(0), 6);
    trigger(ShowEvent::Shortcut);
    desktop.settings.setShowFinder(false);
    trigger(ShowEvent::Trackpad);
    EXPECT_EQ(desktop.view().numberOfItemsInSection(0), 5);
}

TEST(EditingShortcuts, reachAFieldThroughItsParentsUnlessCapsLockIsOn)
{
    const auto event = [](int key, Qt::KeyboardModifiers modifiers, quint32 native = 0) {
        return QKeyEvent(QEvent::KeyPress, key, modifiers, 0, 0, native);
    };
    EXPECT_STREQ(editingOperation(event(Qt::Key_X, Qt::ControlModifier)), "cut");
    EXPECT_STREQ(editingOperation(event(Qt::Key_C, Qt::ControlModifier)), "copy");
    EXPECT_STREQ(editingOperation(event(Qt::Key_V, Qt::ControlModifier)), "paste");
    EXPECT_STREQ(editingOperation(event(Qt::Key_A, Qt::ControlModifier)), "selectAll");
    EXPECT_EQ(editingOperation(event(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier)), nullptr);
    EXPECT_EQ(editingOperation(event(Qt::Key_V, Qt::NoModifier)), nullptr);
    EXPECT_EQ(editingOperation(event(Qt::Key_V, Qt::ControlModifier, 2)), nullptr);
    EXPECT_EQ(editingOperation(event(Qt::Key_B, Qt::ControlModifier)), nullptr);
}

} // namespace
} // namespace Orbita
