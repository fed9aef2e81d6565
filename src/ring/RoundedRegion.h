#pragma once

#include <QRegion>
#include <QSize>

namespace Orbita {

/// The radius of the corners of panels, in points.
inline constexpr double panelCornerRadius = 10.0;

/// The points whose middles lie in a panel of \a size whose edges are moved inwards by \a inset; y downwards.
[[nodiscard]] QRegion roundedRegion(QSize size, int inset);

} // namespace Orbita
