#include "ring/RingLayout.h"

#include "base/Angle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace Orbita {
namespace {

RingLayout ringOf(std::initializer_list<size_t> sections, double side = 400.0)
{
    RingLayout layout;
    layout.size = {side, side};
    for (const size_t count : sections) {
        layout.relativeSizes.emplace_back(count, 1.0);
        layout.totalNumberOfItems += qint64(count);
    }
    return layout;
}

double angleOf(const RingLayout &layout, const QRectF &frame)
{
    return clockwiseAngle(layout.offsetFromCentre(frame.center()));
}

TEST(RingLayout, magnifiesEightItemsAroundTheThird)
{
    RingLayout layout = ringOf({8});
    layout.magnify(2, Magnification::On);

    const std::vector<double> expected{2.5708, 3.3562, 4.1416, 3.3562, 2.5708, 1.7854, 1.0, 1.7854};
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(layout.relativeSizes[0][i], expected[i], 1e-4) << i;
    EXPECT_NEAR(layout.totalRelativeSize(), 20.5664, 1e-4);
    EXPECT_NEAR(layout.startArc, -0.47989, 1e-5);
    EXPECT_DOUBLE_EQ(layout.radius(), 122.0);

    const std::vector<QRectF> frames = layout.frames();
    EXPECT_DOUBLE_EQ(frames[2].width(), 100.0) << "capped at a quarter of the width";
    EXPECT_NEAR(frames[6].width(), 26.43, 0.005);
    EXPECT_NEAR(angleOf(layout, frames[2]), layout.sectorCenter(2), 1e-9) << "stays under the pointer";
}

TEST(RingLayout, growsTheRadiusFromElevenItemsOn)
{
    EXPECT_DOUBLE_EQ(ringOf({10}).radius(), 122.0);
    EXPECT_DOUBLE_EQ(ringOf({11}).radius(), 136.0);
    EXPECT_DOUBLE_EQ(ringOf({6, 5}).radius(), 136.0) << "all sections count";
}

TEST(RingLayout, spreadsEqualItemsEvenlyFromTwelveOClock)
{
    for (size_t count = 1; count <= 40; ++count) {
        RingLayout layout = ringOf({count});
        layout.startArc = 0.125;
        const std::vector<QRectF> frames = layout.frames();
        ASSERT_EQ(frames.size(), count);
        for (size_t k = 0; k < count; ++k) {
            const double expected = std::fmod((double(k) + 0.5) * TwoPi / double(count) + 0.125, TwoPi);
            EXPECT_NEAR(angleOf(layout, frames[k]), expected, 1e-9) << k << " of " << count;
            EXPECT_NEAR(length(layout.offsetFromCentre(frames[k].center())), layout.radius(), 1e-9);
            EXPECT_LE(frames[k].width(), 100.0);
        }
    }
}

TEST(RingLayout, runsThroughTheSectionsWithoutABreak)
{
    const RingLayout layout = ringOf({2, 0, 3});
    const std::vector<QRectF> one = ringOf({5}).frames();
    EXPECT_EQ(layout.frames(), one);
    for (qint64 index = 0; index < 5; ++index)
        EXPECT_EQ(layout.indexOf(layout.addressAt(index)), index);
    EXPECT_EQ(layout.addressAt(2), (ItemAddress{2, 0}));
    for (const qint64 outside : {qint64(-1), qint64(5), NotFound})
        EXPECT_FALSE(layout.addressAt(outside).isFound()) << outside;
    EXPECT_EQ(layout.indexOf({1, 0}), NotFound);
    EXPECT_EQ(layout.indexOf({}), NotFound);
}

TEST(RingLayout, leavesRoomForOneItemInTheGap)
{
    struct Row {
        const char *name;
        ItemAddress gap;
        std::vector<double> centers; ///< in units, a fifth of the circle each
    };
    for (const auto &[name, gap, centers] :
         {Row{"before the first", {0, 0}, {1.5, 2.5, 3.5, 4.5}}, Row{"within a section", {0, 1}, {0.5, 2.5, 3.5, 4.5}},
          Row{"past a section goes to the end of the ring", {0, 2}, {0.5, 1.5, 2.5, 3.5}},
          Row{"past the last is at the end", {1, 2}, {0.5, 1.5, 2.5, 3.5}}}) {
        SCOPED_TRACE(name);
        RingLayout layout = ringOf({2, 2});
        layout.gap = gap;
        const std::vector<QRectF> frames = layout.frames();
        for (size_t i = 0; i < frames.size(); ++i)
            EXPECT_NEAR(angleOf(layout, frames[i]), centers[i] * TwoPi / 5, 1e-9) << i;
        EXPECT_NEAR(layout.centerArcForItem({0, 1}), 1.5 * TwoPi / 4, 1e-9) << "the gap is no part of an arc";
    }
}

TEST(RingLayout, findsTheSectorUnderThePointer)
{
    const RingLayout eight = ringOf({8});
    EXPECT_EQ(eight.sectorAt({0, 50}), 0) << "straight up";
    EXPECT_EQ(eight.sectorAt({-0.001, 50}), 7) << "just left of up";
    EXPECT_EQ(eight.sectorAt({-1e-300, 50}), 7) << "a hair left of up";
    EXPECT_EQ(eight.sectorAt({50, 50}), 1) << "a border belongs to the later";
    EXPECT_EQ(eight.sectorAt({0, -50}), 4) << "straight down";
    EXPECT_EQ(eight.sectorAt({0, 10}), 0) << "ten points away is a direction";
    EXPECT_EQ(eight.sectorAt({0, 9.99}), std::nullopt) << "nearer than that is none";
    EXPECT_EQ(ringOf({0}).sectorAt({0, -50}), 0) << "an empty ring has only the first";
}

TEST(RingLayout, turnsOnlySlightlyWithoutMagnification)
{
    RingLayout layout = ringOf({7});
    const std::vector<QRectF> before = layout.frames();
    layout.magnify(3, Magnification::Off);
    EXPECT_NEAR(layout.startArc, 0.0, 1e-12);
    for (size_t i = 0; i < before.size(); ++i)
        EXPECT_NEAR(length(before[i].center() - layout.frames()[i].center()), 0.0, 1e-9);
    layout.totalNumberOfItems = 8; // an item is out
    layout.magnify(3, Magnification::Off);
    EXPECT_NEAR(layout.startArc, Pi / 8 - Pi / 7, 1e-12);
}

TEST(RingLayout, keepsTheHoveredItemUnderThePointerForEveryCount)
{
    for (qint64 count = 1; count <= 40; ++count) {
        for (qint64 hovered = 0; hovered < count; ++hovered) {
            RingLayout layout = ringOf({size_t(count)});
            layout.magnify(hovered, Magnification::On);
            const QRectF frame = layout.frames()[size_t(hovered)];
            EXPECT_EQ(layout.sectorAt(layout.offsetFromCentre(frame.center())), hovered) << count;
            const std::vector<double> &sizes = layout.relativeSizes[0];
            EXPECT_DOUBLE_EQ(*std::max_element(sizes.begin(), sizes.end()), sizes[size_t(hovered)]);
        }
    }
}

TEST(RingLayout, favoursTheEarlierOfTwoEqualNeighboursOfTheHoveredSector)
{
    RingLayout layout = ringOf({7});
    layout.totalNumberOfItems = 8;
    layout.magnify(7, Magnification::On); // neither item 0 nor item 6 stands there, both are next to it
    EXPECT_DOUBLE_EQ(layout.relativeSizes[0][0], layout.relativeSizes[0][6]);
    EXPECT_NEAR(layout.startArc + layout.centerArcForItem({0, 0}), layout.sectorCenter(0), 1e-12);
}

TEST(RingLayout, placesNothingInAnEmptyRing)
{
    RingLayout layout = ringOf({0});
    layout.startArc = 1.0;
    layout.magnify(0, Magnification::On);
    EXPECT_EQ(layout.startArc, 0.0);
    EXPECT_TRUE(layout.frames().empty());
    layout.gap = {0, 0};
    EXPECT_TRUE(layout.frames().empty());
    EXPECT_EQ(layout.centerArcForItem({0, 0}), 0.0);
    EXPECT_EQ(layout.relativeSizeOfItem({0, 0}), 0.0);
}

} // namespace
} // namespace Orbita
