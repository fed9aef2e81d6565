#include "base/Angle.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

TEST(ClockwiseAngle, isMeasuredFromTwelveOClock)
{
    const std::vector<std::tuple<const char *, QPointF, double>> rows{
        {"straight up is 0", {0, 100}, 0.0},      {"right is a quarter", {100, 0}, Pi / 2},
        {"straight down is a half", {0, -3}, Pi}, {"left is three quarters", {-1, 0}, 1.5 * Pi},
        {"the origin counts as up", {0, 0}, 0.0}, {"a hair left of up stays below a full turn", {-1e-300, 100}, TwoPi}};
    for (const auto &[name, offset, angle] : rows) {
        EXPECT_NEAR(clockwiseAngle(offset), angle, 1e-12) << name;
        EXPECT_LT(clockwiseAngle(offset), TwoPi) << name;
    }
}

} // namespace
} // namespace Orbita
