#include "app/RingPlacement.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

const std::vector<Stage::Screen> oneScreen{{QRectF(0, 0, 1280, 800), 1.0}};
const std::vector<Stage::Screen> twoScreens{{QRectF(0, 0, 640, 800), 1.0}, {QRectF(700, 0, 640, 800), 2.0}};
const std::vector<Stage::Screen> stacked{{QRectF(0, 0, 640, 800), 1.0}, {QRectF(0, 800, 640, 600), 1.0}};

TEST(RingFrame, keepsTheRingOnASingleScreenButItsUpperEdge)
{
    const auto expectCentre = [](QPointF asked, QPointF expected, double size = 400, SwiftMode mode = SwiftMode::Off,
                                 const std::vector<Stage::Screen> &screens = oneScreen) {
        const QRectF frame = ringFrame(asked, size, mode, screens);
        EXPECT_EQ(frame.center(), expected);
        EXPECT_EQ(frame.size(), QSizeF(size, size));
    };
    expectCentre({600, 400}, {600, 400});
    expectCentre({100, 500}, {410, 500}, 800);
    expectCentre({1270, 400}, {1070, 400});
    expectCentre({600, 100}, {600, 210});
    expectCentre({600, 790}, {600, 790});
    expectCentre({200, 200}, {200, 200}); // it touches two edges
    expectCentre({10, 10}, {10, 10}, 400, SwiftMode::Enabled);
    expectCentre({10, 10}, {10, 10}, 400, SwiftMode::Off, twoScreens);
}

TEST(RequestedCentre, isThePointerOrTheMiddleOfItsScreen)
{
    EXPECT_EQ(requestedCentre({650, 20}, MenuPosition::AroundPointer, twoScreens), QPointF(650, 20));
    const auto centre = [](QPointF pointer, const auto &screens) {
        return requestedCentre(pointer, MenuPosition::ScreenCenter, screens);
    };
    EXPECT_EQ(centre({639, 20}, twoScreens), QPointF(320, 400));
    EXPECT_EQ(centre({700, 799}, twoScreens), QPointF(1020, 400));
    EXPECT_EQ(centre({639, 800}, twoScreens), QPointF(320, 400)) << "topmost row";
    EXPECT_EQ(centre({639, 0}, twoScreens), QPointF(639, 0)) << "below the screens";
    EXPECT_EQ(centre({650, 20}, twoScreens), QPointF(650, 20)) << "between the screens";
    EXPECT_EQ(centre({320, 800}, stacked), QPointF(320, 400));
    EXPECT_EQ(centre({320, 801}, stacked), QPointF(320, 1100));
}

} // namespace
} // namespace Orbita
