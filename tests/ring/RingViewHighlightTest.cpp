#include "ring/RingViewFixture.h"

namespace Orbita {
namespace {

using RingViewHighlight = RingViewFixture;

TEST_F(RingViewHighlight, magnifiesAtOnceAndMarksTheLastOfSeveralAfterTheEvent)
{
    view.highlightItem({0, 4});
    view.highlightItem({0, 3});
    EXPECT_NEAR(weight(3), Pi + 1, 1e-9);
    EXPECT_EQ(view.highlightedItem(), (ItemAddress{0, 3}));
    EXPECT_EQ(selected(), "");
    QCoreApplication::processEvents();
    EXPECT_EQ(selected(), "0-3 ");
    EXPECT_EQ(titles(), "0-3 ");
    view.layoutSubviews();
    EXPECT_EQ(selected(), "") << "it ends with the next layout";
}

TEST_F(RingViewHighlight, needsNoBubbleWhereTheCaptionIsShown)
{
    script.alwaysShowsCaption = true;
    view.reloadData();
    view.highlightItem({0, 3});
    QCoreApplication::processEvents();
    EXPECT_EQ(titles(), "");
    EXPECT_EQ(selected(), "0-3 ");
}

TEST_F(RingViewHighlight, survivesAReloadBeforeItIsMarkedWithItsItemOnly)
{
    view.highlightItem({0, 3});
    load({5});
    EXPECT_EQ(view.highlightedItem(), (ItemAddress{0, 3}));
    EXPECT_NEAR(weight(3), Pi + 1, 1e-9);
    load({2});
    QCoreApplication::processEvents();
    EXPECT_EQ(selected(), "");
    EXPECT_FALSE(view.highlightedItem().isFound()) << "the item is no longer there";
}

TEST_F(RingViewHighlight, countsThroughSections)
{
    load({2, 0, 3});
    view.highlightItem({2, 1});
    EXPECT_EQ(view.mouseOverItemIndex(), 3);
    EXPECT_EQ(view.highlightedItem(), (ItemAddress{2, 1}));
    view.highlightItem({1, 0});
    EXPECT_EQ(view.mouseOverItemIndex(), 0) << "an address without an item falls back to the first sector";
}

} // namespace
} // namespace Orbita
