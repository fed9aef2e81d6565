#include "ring/RingViewFixture.h"

namespace Orbita {
namespace {

using RingViewPress = RingViewFixture;

const std::string allEight = "0-0 0-1 0-2 0-3 0-4 0-5 0-6 0-7 ";

TEST_F(RingViewPress, clicksWhenThePointerHardlyMoves)
{
    const QPointF start = centerOf(3);
    press(start);
    EXPECT_EQ(view.numberOfItemsInSection(0), 7) << "the pressed item is out of the ring";
    EXPECT_EQ(view.ringLayout().totalNumberOfItems, 8);
    drag(start + QPointF(13, 13)); // 18.4 points
    release(start + QPointF(13, 13));
    EXPECT_EQ(script.reports, Reports{"click 0-3"});
    EXPECT_EQ(order(), allEight);
    EXPECT_FALSE(gap().isFound());
}

TEST_F(RingViewPress, magnifiesNothingUntilTheRelease)
{
    move(at(2.5 / 8));
    press(centerOf(2));
    EXPECT_EQ(weight(1), 1.0);
    drag(at(5.5 / 8));
    EXPECT_EQ(weight(4), 1.0);
    release(at(5.5 / 8));
    EXPECT_GT(weight(5), 4.0);
}

TEST_F(RingViewPress, takesAControlPressForARightClickUntilItsRelease)
{
    press(centerOf(3), Qt::ControlModifier);
    drag(at(5.5 / 8));
    release(at(5.5 / 8));
    EXPECT_EQ(script.reports, Reports{"right click 0-3"});
    EXPECT_EQ(titles(), "") << "moving the pole of a menu hovers over nothing";
}

TEST_F(RingViewPress, survivesARightPressInTheMiddleOfADrag)
{
    press(centerOf(0));
    drag(at(4.4 / 8));
    mouse(QEvent::MouseButtonPress, at(4.4 / 8), Qt::RightButton, Qt::LeftButton | Qt::RightButton);
    release(at(4.4 / 8));
    EXPECT_EQ(script.reports.back().substr(0, 11), "move 0-0 to");
    EXPECT_EQ(view.numberOfItemsInSection(0), 8);
}

TEST_F(RingViewPress, movesAnItemIntoTheGapThatItOpens)
{
    press(centerOf(0));
    drag(at(4.4 / 8)); // within the second half of the arc of "0-4", which stands third now
    EXPECT_TRUE(gap().isFound());
    const ItemAddress target = gap();
    release(at(4.4 / 8));
    EXPECT_EQ(script.reports, Reports{"move 0-0 to 0-" + std::to_string(target.position)});
    EXPECT_EQ(item(target.position).title(), QStringLiteral("0-0"));
    EXPECT_EQ(view.numberOfItemsInSection(0), 8);
    EXPECT_FALSE(gap().isFound());
}

TEST_F(RingViewPress, followsThePointerOnTheCircleAtItsSize)
{
    const QSizeF size = item(0).frame().size();
    press(centerOf(0));
    drag(at(0.25, 60));
    ASSERT_TRUE(view.draggedItem());
    const QRectF frame = view.draggedItem()->frame();
    EXPECT_EQ(frame.size(), size);
    EXPECT_EQ(view.draggedItem()->shownFrame(), frame);
    EXPECT_NEAR(length(frame.center() - QPointF(322, 200)), 0.0, 1e-9);
}

TEST_F(RingViewPress, opensNoGapForWhatCanBeDroppedOnto)
{
    script.container = ItemAddress{0, 5};
    press(centerOf(2));
    // Seven items stand now, turned by a little: "0-5" is the fifth of them.
    const double turned = (Pi / 8 - Pi / 7) / TwoPi;
    drag(at(4.1 / 7 + turned));
    EXPECT_EQ(gap(), (ItemAddress{0, 4})) << "its first quarter";
    drag(at(4.5 / 7 + turned));
    EXPECT_FALSE(gap().isFound());
    release(at(4.5 / 7 + turned));
    EXPECT_EQ(script.reports, Reports{"drop 0-2 onto 0-5"});
    EXPECT_EQ(script.asked.back(), (ItemAddress{0, 5})) << "as it stood before the press";
    EXPECT_EQ(order(), "0-0 0-1 0-3 0-4 0-5 0-6 0-7 ") << "the item stays out until the ring is reloaded";
    view.reloadData();
    EXPECT_FALSE(view.draggedItem());
    EXPECT_EQ(order(), allEight);
}

TEST_F(RingViewPress, asksAboutItemsAsTheyStoodBeforeThePressInEverySection)
{
    load({4, 4});
    press(centerOf(2));
    for (const double turn : {0.2, 0.38, 0.55, 0.95})
        drag(at(turn));
    EXPECT_EQ(script.asked, std::vector<ItemAddress>({{0, 1}, {0, 3}, {1, 0}, {1, 4}}));
}

TEST_F(RingViewPress, movesAcrossSections)
{
    load({3, 3});
    press(centerOf(0));
    drag(at(0.97));
    EXPECT_EQ(gap(), (ItemAddress{1, 3})) << "past the last";
    release(at(0.97));
    EXPECT_EQ(script.reports, Reports{"move 0-0 to 1-3"});
    EXPECT_EQ(order(), "0-1 0-2 1-0 1-1 1-2 0-0 ");
}

TEST_F(RingViewPress, putsTheOnlyItemBack)
{
    load({1});
    press(centerOf(0));
    drag(at(0.8));
    release(at(0.8));
    EXPECT_EQ(order(), "0-0 ");
    EXPECT_TRUE(script.reports.empty());
}

TEST_F(RingViewPress, bearsAReloadWhileAnItemIsDragged)
{
    press(centerOf(2));
    drag(at(0.5));
    view.reloadData();
    EXPECT_FALSE(view.draggedItem());
    drag(at(0.7));
    release(at(0.7));
    EXPECT_TRUE(script.reports.empty());
    EXPECT_EQ(order(), allEight);
}

TEST_F(RingViewPress, putsTheItemBackWhenTheRingGoesAway)
{
    press(centerOf(2));
    drag(at(0.5));
    view.hide();
    EXPECT_EQ(order(), allEight);
    view.show();
    press(centerOf(2));
    press(centerOf(5)); // the release went to another window
    release(centerOf(5));
    EXPECT_EQ(view.numberOfItemsInSection(0), 8);
}

TEST_F(RingViewPress, bearsAReloadInTheReportOfAClick)
{
    script.onClick = [this] { load({2}); };
    const QPointF point = centerOf(7);
    press(point);
    release(point);
    EXPECT_EQ(order(), "0-0 0-1 ");
}

TEST_F(RingViewPress, tellsRightClicksOnAndBesideItems)
{
    rightPress(centerOf(4));
    rightPress(at(4.5 / 8, 30));
    press(centerOf(1), Qt::ControlModifier);
    release(centerOf(1));
    move(at(2.5 / 8)); // the first arc begins left of twelve o'clock now
    rightPress(at(0.99, 30));
    EXPECT_EQ(script.reports, (Reports{"right click 0-4", "beside 0-4", "right click 0-1", "beside 0-0"}));
    EXPECT_EQ(order(), allEight);
}

} // namespace
} // namespace Orbita
