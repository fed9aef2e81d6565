#pragma once

#include <QRectF>

namespace Orbita {

class Stage;

/// The frame of the screen that holds \a point (global points, y upwards), else of the main one.
[[nodiscard]] QRectF screenAt(const Stage &stage, QPointF point);

} // namespace Orbita
