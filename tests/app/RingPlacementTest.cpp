#include "app/RingPlacement.h"

#include "support/RowName.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

const std::vector<Stage::Screen> oneScreen{{QRectF(0, 0, 1280, 800), 1.0}};
const std::vector<Stage::Screen> twoScreens{{QRectF(0, 0, 640, 800), 1.0}, {QRectF(700, 0, 640, 800), 2.0}};

struct FrameRow {
    const char *name;
    QPointF centre;
    double size;
    SwiftMode swiftMode;
    std::vector<Stage::Screen> screens;
    QPointF expectedCentre;
};

class RingFrame : public testing::TestWithParam<FrameRow> {};

TEST_P(RingFrame, keepsTheRingOnASingleScreen)
{
    const FrameRow &row = GetParam();
    const QRectF frame = ringFrame(row.centre, row.size, row.swiftMode, row.screens);
    EXPECT_EQ(frame.center(), row.expectedCentre);
    EXPECT_EQ(frame.size(), QSizeF(row.size, row.size));
}

INSTANTIATE_TEST_SUITE_P(
    Places, RingFrame,
    testing::Values(FrameRow{"in the middle it is centred", {600, 400}, 400, SwiftMode::Off, oneScreen, {600, 400}},
                    FrameRow{"too far left it moves in", {100, 500}, 800, SwiftMode::Off, oneScreen, {410, 500}},
                    FrameRow{"too far right it moves in", {1270, 400}, 400, SwiftMode::Off, oneScreen, {1070, 400}},
                    FrameRow{"too low it moves up", {600, 100}, 400, SwiftMode::Off, oneScreen, {600, 210}},
                    FrameRow{"too high it stays", {600, 790}, 400, SwiftMode::Off, oneScreen, {600, 790}},
                    FrameRow{"touching the edge it stays", {200, 200}, 400, SwiftMode::Off, oneScreen, {200, 200}},
                    FrameRow{"in Swift Mode it stays", {10, 10}, 400, SwiftMode::Enabled, oneScreen, {10, 10}},
                    FrameRow{"on two screens it stays", {10, 10}, 400, SwiftMode::Off, twoScreens, {10, 10}}),
    rowName<FrameRow>);

TEST(RequestedCentre, isThePointerOrTheMiddleOfItsScreen)
{
    EXPECT_EQ(requestedCentre({639, 800}, MenuPosition::ScreenCenter, twoScreens), QPointF(320, 400)) << "topmost row";
    EXPECT_EQ(requestedCentre({639, 0}, MenuPosition::ScreenCenter, twoScreens), QPointF(639, 0))
        << "below the screens";
    const std::vector<Stage::Screen> stacked{{QRectF(0, 0, 640, 800), 1.0}, {QRectF(0, 800, 640, 600), 1.0}};
    EXPECT_EQ(requestedCentre({320, 800}, MenuPosition::ScreenCenter, stacked), QPointF(320, 400));
    EXPECT_EQ(requestedCentre({320, 801}, MenuPosition::ScreenCenter, stacked), QPointF(320, 1100));
    EXPECT_EQ(requestedCentre({650, 20}, MenuPosition::AroundPointer, twoScreens), QPointF(650, 20));
    EXPECT_EQ(requestedCentre({639, 20}, MenuPosition::ScreenCenter, twoScreens), QPointF(320, 400));
    EXPECT_EQ(requestedCentre({700, 799}, MenuPosition::ScreenCenter, twoScreens), QPointF(1020, 400));
    EXPECT_EQ(requestedCentre({650, 20}, MenuPosition::ScreenCenter, twoScreens), QPointF(650, 20))
        << "between the screens";
}

TEST(RingSize, growsWithTheSetting)
{
    EXPECT_EQ(ringSize(MenuSize::Small), 400);
    EXPECT_EQ(ringSize(MenuSize::Medium), 500);
    EXPECT_EQ(ringSize(MenuSize::Large), 600);
    EXPECT_EQ(ringSize(MenuSize::ExtraLarge), 800);
}

} // namespace
} // namespace Orbita
