#pragma once

#include <QRegion>
#include <QSize>

namespace Orbita {

/// The radius of the corners of panels, in points.
inline constexpr double panelCornerRadius = 10.0;

/// What lies within \a inset points of the edges of a panel of \a size; points, y downwards.
[[nodiscard]] QRegion roundedRegion(QSize size, int inset);

} // namespace Orbita
