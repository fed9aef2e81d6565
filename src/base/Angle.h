#pragma once

#include <QPointF>

#include <numbers>

namespace Orbita {

inline constexpr double Pi = std::numbers::pi;
inline constexpr double TwoPi = 2.0 * Pi;

/// The direction of \a offset in radians, clockwise from twelve o'clock, in [0, 2 pi).
///
/// \a offset is measured from the centre with y upwards. The offset (0, 0) points to twelve o'clock.
[[nodiscard]] double clockwiseAngle(QPointF offset);

/// The point at \a radius from the origin in the direction \a angle (clockwise from twelve o'clock, y upwards).
[[nodiscard]] QPointF pointAtAngle(double radius, double angle);

/// The length of \a offset.
[[nodiscard]] double length(QPointF offset);

} // namespace Orbita
