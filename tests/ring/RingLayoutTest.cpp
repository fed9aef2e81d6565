#include "ring/RingLayout.h"

#include "base/Angle.h"
#include "support/RowName.h"

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

struct GapRow {
    const char *name;
    ItemAddress gap;
    std::vector<double> centers; ///< in units, a fifth of the circle each
};

class Gap : public testing::TestWithParam<GapRow> {};

TEST_P(Gap, leavesRoomForOneItem)
{
    RingLayout layout = ringOf({2, 2});
    layout.gap = GetParam().gap;
    const std::vector<QRectF> frames = layout.frames();
    for (size_t i = 0; i < frames.size(); ++i)
        EXPECT_NEAR(angleOf(layout, frames[i]), GetParam().centers[i] * TwoPi / 5, 1e-9) << i;
    EXPECT_NEAR(layout.centerArcForItem({0, 1}), 1.5 * TwoPi / 4, 1e-9) << "the gap is no part of an item's arc";
}

INSTANTIATE_TEST_SUITE_P(
    Places, Gap,
    testing::Values(GapRow{"before the first", {0, 0}, {1.5, 2.5, 3.5, 4.5}},
                    GapRow{"within a section", {0, 1}, {0.5, 2.5, 3.5, 4.5}},
                    GapRow{"past a section goes to the end of the ring", {0, 2}, {0.5, 1.5, 2.5, 3.5}},
                    GapRow{"past the last is at the end", {1, 2}, {0.5, 1.5, 2.5, 3.5}}),
    rowName<GapRow>);

struct SectorRow {
    const char *name;
    QPointF offset;
    qint64 count;
    std::optional<qint64> sector;
};

class Sector : public testing::TestWithParam<SectorRow> {};

TEST_P(Sector, liesUnderThePointer)
{
    EXPECT_EQ(ringOf({size_t(GetParam().count)}).sectorAt(GetParam().offset), GetParam().sector);
}

INSTANTIATE_TEST_SUITE_P(Directions, Sector,
                         testing::Values(SectorRow{"straight up is the first", {0, 50}, 8, 0},
                                         SectorRow{"just left of up is the last", {-0.001, 50}, 8, 7},
                                         SectorRow{"a hair left of up is the last", {-1e-300, 50}, 8, 7},
                                         SectorRow{"a border belongs to the later", {50, 50}, 8, 1},
                                         SectorRow{"straight down is past the half", {0, -50}, 8, 4},
                                         SectorRow{"ten points away is a direction", {0, 10}, 8, 0},
                                         SectorRow{"nearer than that is none", {0, 9.99}, 8, std::nullopt},
                                         SectorRow{"an empty ring has only the first", {0, -50}, 0, 0}),
                         rowName<SectorRow>);

TEST(RingLayout, staysUnturnedWithoutMagnification)
{
    RingLayout layout = ringOf({12});
    const std::vector<QRectF> before = layout.frames();
    layout.magnify(7, Magnification::Off);
    EXPECT_NEAR(layout.startArc, 0.0, 1e-12);
    const std::vector<QRectF> after = layout.frames();
    for (size_t i = 0; i < before.size(); ++i)
        EXPECT_NEAR(length(before[i].center() - after[i].center()), 0.0, 1e-9);
}

TEST(RingLayout, keepsTheHoveredItemUnderThePointerForEveryCount)
{
    for (qint64 count = 1; count <= 40; ++count) {
        for (qint64 hovered = 0; hovered < count; ++hovered) {
            RingLayout layout = ringOf({size_t(count)});
            layout.magnify(hovered, Magnification::On);
            const QRectF frame = layout.frames()[size_t(hovered)];
            EXPECT_EQ(layout.sectorAt(layout.offsetFromCentre(frame.center())), hovered) << count;
            EXPECT_DOUBLE_EQ(*std::max_element(layout.relativeSizes[0].begin(), layout.relativeSizes[0].end()),
                             layout.relativeSizes[0][size_t(hovered)]);
        }
    }
}

TEST(RingLayout, turnsSlightlyWhileAnItemIsOut)
{
    RingLayout layout = ringOf({7});
    layout.totalNumberOfItems = 8;
    layout.magnify(3, Magnification::Off);
    EXPECT_NEAR(layout.startArc, Pi / 8 - Pi / 7, 1e-12);
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
