#include "ring/DropZone.h"

#include "base/Angle.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

constexpr double degree = Pi / 180.0;

RingLayout fourItems(double startArc = 0.0)
{
    RingLayout layout;
    layout.size = {400, 400};
    layout.relativeSizes = {{1, 1}, {1, 1}}; // arcs of 90 degrees
    layout.totalNumberOfItems = 4;
    layout.startArc = startArc;
    return layout;
}

TEST(DropTargets, dependOnTheDirection)
{
    struct Row {
        const char *name;
        double degrees;
        bool canDropOnto;
        std::optional<DropTarget> target;
        double startDegrees = 0.0;
    };
    for (const Row &row :
         {Row{"first quarter is before", 10, true, DropTarget{{0, 0}, DropZone::Before}},
          Row{"middle is onto", 45, true, DropTarget{{0, 0}, DropZone::Onto}},
          Row{"last quarter is after", 80, true, DropTarget{{0, 0}, DropZone::After}},
          Row{"first half is before without onto", 44, false, DropTarget{{0, 0}, DropZone::Before}},
          Row{"second half is after", 46, false, DropTarget{{0, 0}, DropZone::After}},
          Row{"the middle belongs to neither half", 45, false, std::nullopt},
          Row{"a quarter border belongs to no zone", 22.5, true, std::nullopt},
          Row{"the border between items belongs to none", 90, true, std::nullopt},
          Row{"straight up is a border", 0, false, std::nullopt},
          Row{"other sections follow on", 200, false, DropTarget{{1, 0}, DropZone::Before}},
          Row{"a ring turned back begins left of up", 355, true, DropTarget{{0, 0}, DropZone::Before}, -20},
          Row{"a ring turned on ends right of up", 10, true, DropTarget{{1, 1}, DropZone::After}, 20}}) {
        SCOPED_TRACE(row.name);
        std::vector<ItemAddress> asked;
        const auto answer = [&](ItemAddress item) {
            asked.push_back(item);
            return row.canDropOnto;
        };
        const RingLayout ring = fourItems(row.startDegrees * degree);
        EXPECT_EQ(dropTargetAt(ring, row.degrees * degree, answer), row.target);
        EXPECT_TRUE(!row.target || asked == std::vector{row.target->item});
    }
    EXPECT_FALSE(dropTargetAt(RingLayout{}, 1.0, [](ItemAddress) { return true; })) << "an empty ring";
}

TEST(ArcAt, givesTheFarBorderToItsItemOnRequest)
{
    EXPECT_FALSE(arcAt(fourItems(), 90 * degree, ArcEnd::Excluded));
    ASSERT_TRUE(arcAt(fourItems(), 90 * degree, ArcEnd::Included));
    EXPECT_EQ(arcAt(fourItems(), 90 * degree, ArcEnd::Included)->item, (ItemAddress{0, 0}));
}

} // namespace
} // namespace Orbita
