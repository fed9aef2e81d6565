#include "platform/memory/MemoryStage.h"
#include "ring/ManualAnimationClock.h"
#include "ring/WindowFade.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using Seconds = AnimationClock::Time;

TEST(Eased, leavesQuicklyAndArrivesGently)
{
    EXPECT_NEAR(eased(0.0), 0.0, 1e-6);
    EXPECT_NEAR(eased(1.0), 1.0, 1e-6);
    EXPECT_NEAR(eased(0.5), 0.8024, 1e-3); // the cubic curve with the handles (0.25, 0.1) and (0.25, 1)
    for (double progress = 0.05; progress <= 1.0; progress += 0.05)
        EXPECT_GE(eased(progress), eased(progress - 0.05));
}

TEST(AnimationClock, ticksWhileSomethingMovesAlsoWhatCameDuringAFrame)
{
    ManualAnimationClock clock;
    QObject context;
    int frames = 0;
    EXPECT_FALSE(clock.ticks());
    clock.animate(&context, [&](Seconds) {
        clock.animate(&context, [&](Seconds) { return ++frames < 2; });
        return false;
    });
    EXPECT_TRUE(clock.ticks());
    for (int i = 0; i < 5; ++i)
        clock.advance(Seconds(0.016));
    EXPECT_EQ(frames, 2);
    EXPECT_FALSE(clock.ticks());
}

TEST(AnimationClock, forgetsAnimationsWhoseOwnerIsGone)
{
    ManualAnimationClock clock;
    {
        QObject context;
        clock.animate(&context, [](Seconds) {
            ADD_FAILURE() << "stepped for a dead owner";
            return true;
        });
    }
    clock.advance(Seconds(0.016));
    EXPECT_FALSE(clock.ticks());
}

class WindowFadeTest : public testing::Test {
protected:
    ManualAnimationClock clock;
    QWidget window;
    MemoryStage stage;
    WindowFade fade{window, stage, clock};
    int finished = 0;
    std::function<void()> count = [this] { ++finished; };
};

TEST_F(WindowFadeTest, turnsRoundWhereItStands)
{
    fade.setValue(1.0);
    fade.fadeTo(0.0, count);
    clock.advance(Seconds(0.1));
    const double middle = fade.value();
    fade.fadeTo(1.0);
    EXPECT_EQ(fade.value(), middle);
    EXPECT_NEAR(window.windowOpacity(), 1.0 - eased(0.4), 1.0 / 255) << "a quarter of a second in all";
    const int shown = stage.flushed;
    clock.advance(Seconds(0.01));
    EXPECT_GT(fade.value(), middle);
    EXPECT_GT(stage.flushed, shown) << "nothing is painted that would show it";
    clock.advance(Seconds(0.3));
    QCoreApplication::processEvents();
    EXPECT_EQ(finished, 0) << "a replaced fade never finishes";
}

TEST_F(WindowFadeTest, isInstantWhenMotionIsReduced)
{
    clock.appearance.setMotionReduced(true);
    fade.setValue(1.0);
    fade.fadeTo(0.0, count);
    fade.setValue(0.0); // replaces it before its end is told
    QCoreApplication::processEvents();
    EXPECT_EQ(finished, 0);
    fade.fadeTo(1.0, count);
    EXPECT_EQ(fade.value(), 1.0);
    EXPECT_EQ(finished, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(finished, 1);
    EXPECT_FALSE(clock.ticks());
}

} // namespace
} // namespace Orbita
