#include "ring/BubblePlacement.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

const QRectF screen(0, 0, 1000, 800);
constexpr QSizeF text{80, 16};

struct Row {
    const char *name;
    QRectF item;
    BubbleEdge edge;
    bool isCentered;
};

const Row rows[]{
    {"below in the middle", {500, 400, 60, 60}, BubbleEdge::Bottom, true},
    {"above at the lower edge", {500, 5, 60, 60}, BubbleEdge::Top, true},
    {"shifted right", {10, 400, 60, 60}, BubbleEdge::Bottom, true},
    {"shifted left", {930, 400, 60, 60}, BubbleEdge::Bottom, true},
    {"in the corner the tip stays off the bend", {-25, 400, 30, 30}, BubbleEdge::Bottom, false},
};

TEST(Bubble, standsAtItsItemOnTheScreen)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const BubblePlacement placement = placeBubble(text, row.item, screen);
        const QRectF outline = placement.frame.adjusted(bubbleShadow, bubbleShadow, -bubbleShadow, -bubbleShadow);
        EXPECT_EQ(placement.edge, row.edge);
        EXPECT_TRUE(screen.contains(outline));
        const double tip = placement.frame.x() + placement.arrow;
        EXPECT_EQ(tip == row.item.center().x(), row.isCentered) << tip;
        const bool isBelow = row.edge == BubbleEdge::Bottom;
        EXPECT_DOUBLE_EQ(isBelow ? outline.bottom() : outline.top(), isBelow ? row.item.top() : row.item.bottom());

        const QRectF label = bubbleLabel(placement.frame.size(), placement.edge);
        EXPECT_GE(label.width(), text.width() + 10.0) << "five points on either side of the text";
        EXPECT_GE(label.height(), text.height());
        const QPainterPath path = bubbleOutline(placement.frame.size(), placement.edge, placement.arrow);
        EXPECT_TRUE(path.contains(label.adjusted(1, 1, -1, -1)));
        // The tip points at the item: up (small y in the window) when the bubble stands below it.
        const double tipY = isBelow ? path.boundingRect().top() : path.boundingRect().bottom();
        EXPECT_TRUE(path.intersects(QRectF(placement.arrow - 1.5, tipY - 1.5, 3, 3)));
    }
}

} // namespace
} // namespace Orbita
