#include "base/Angle.h"

#include "support/RowName.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

struct Row {
    const char *name;
    QPointF offset;
    double angle;
};

class ClockwiseAngle : public testing::TestWithParam<Row> {};

TEST_P(ClockwiseAngle, isMeasuredFromTwelveOClock)
{
    EXPECT_NEAR(clockwiseAngle(GetParam().offset), GetParam().angle, 1e-12) << GetParam().name;
    EXPECT_LT(clockwiseAngle(GetParam().offset), TwoPi) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(Directions, ClockwiseAngle,
                         testing::Values(Row{"straight up is 0", {0, 100}, 0.0},
                                         Row{"right is a quarter", {100, 0}, Pi / 2},
                                         Row{"straight down is a half", {0, -3}, Pi},
                                         Row{"left is three quarters", {-1, 0}, 1.5 * Pi},
                                         Row{"the origin counts as up", {0, 0}, 0.0},
                                         Row{"a hair left of up stays below a full turn", {-1e-300, 100}, TwoPi}),
                         rowName<Row>);

TEST(PointAtAngle, undoesClockwiseAngle)
{
    for (double angle = 0.01; angle < TwoPi; angle += 0.37) {
        const QPointF point = pointAtAngle(122.0, angle);
        EXPECT_NEAR(clockwiseAngle(point), angle, 1e-12);
        EXPECT_NEAR(length(point), 122.0, 1e-12);
    }
}

} // namespace
} // namespace Orbita
