#include "ring/RingViewFixture.h"

namespace Orbita {
namespace {

using RingViewMotion = RingViewFixture;
using Seconds = AnimationClock::Time;

TEST_F(RingViewMotion, glidesToTheNewPlacesInAQuarterOfASecond)
{
    const QRectF start = item(0).frame();
    EXPECT_EQ(item(0).shownFrame(), start) << "loaded at once";
    EXPECT_FALSE(clock.ticks());
    move(at(2.5 / 8));
    EXPECT_EQ(item(0).shownFrame(), start);
    EXPECT_NE(item(0).frame(), start);
    clock.advance(Seconds(0.125));
    const double way = (item(0).shownFrame().x() - start.x()) / (item(0).frame().x() - start.x());
    EXPECT_NEAR(way, eased(0.5), 1e-9);
    view.layoutSubviews(); // asks nothing new
    clock.advance(Seconds(0.125));
    EXPECT_EQ(item(0).shownFrame(), item(0).frame());
    EXPECT_FALSE(clock.ticks()) << "a standing ring costs nothing";
}

TEST_F(RingViewMotion, setsOutAnewFromWhereItIsSeen)
{
    move(at(2.5 / 8));
    clock.advance(Seconds(0.1));
    const QRectF between = item(0).shownFrame();
    move(at(6.5 / 8));
    EXPECT_EQ(item(0).shownFrame(), between);
    clock.advance(Seconds(0.25));
    EXPECT_EQ(item(0).shownFrame(), item(0).frame());
}

TEST_F(RingViewMotion, isLeftOutWhereTheUserWantsLess)
{
    clock.appearance.setMotionReduced(true);
    move(at(2.5 / 8));
    EXPECT_EQ(item(0).shownFrame(), item(0).frame());
    EXPECT_FALSE(clock.ticks());
}

TEST_F(RingViewMotion, growsNewItemsWhereTheyBelongInAGlidingReload)
{
    const QRectF former = item(0).frame();
    script.sections = {9};
    view.reloadData(false);
    EXPECT_EQ(item(0).shownFrame(), former);
    EXPECT_NEAR(length(item(8).shownFrame().center() - centerOf(8)), 0.0, 1e-9);
    EXPECT_TRUE(item(8).shownFrame().isEmpty());
    clock.advance(Seconds(0.3));
    EXPECT_EQ(item(8).shownFrame(), item(8).frame());
}

TEST_F(RingViewMotion, unturnsAtOnceForTheNextShow)
{
    move(at(2.5 / 8));
    view.resetLayout();
    EXPECT_EQ(view.ringLayout().startArc, 0.0);
    EXPECT_EQ(item(0).shownFrame(), item(0).frame());
}

TEST_F(RingViewMotion, followsTheSizeOfTheView)
{
    view.resize(800, 800);
    clock.advance(Seconds(0.3));
    EXPECT_NEAR(length(item(0).shownFrame().center() - QPointF(400, 400)), 244.0, 1e-9);
}

} // namespace
} // namespace Orbita
