#include "base/Angle.h"

#include <cmath>

namespace Orbita {

double clockwiseAngle(QPointF offset)
{
    const double angle = std::atan2(offset.x(), offset.y());
    if (angle >= 0.0)
        return angle;
    // A tiny negative angle plus a full turn rounds up to the full turn itself, which is outside the range.
    const double turned = angle + TwoPi;
    return turned < TwoPi ? turned : std::nextafter(TwoPi, 0.0);
}

QPointF pointAtAngle(double radius, double angle)
{
    return {radius * std::sin(angle), radius * std::cos(angle)};
}

double length(QPointF offset)
{
    return std::hypot(offset.x(), offset.y());
}

} // namespace Orbita
