#pragma once

#include "platform/Stage.h"
#include "settings/SettingValues.h"

#include <QPointF>
#include <QRectF>

#include <vector>

namespace Orbita {

/// The side of the ring window in points.
[[nodiscard]] double ringSize(MenuSize size);

/// Where the ring's centre goes for a trigger with the pointer at \a pointer: the pointer itself, or the
/// centre of the first screen that holds it. A pointer between screens stays.
[[nodiscard]] QPointF requestedCentre(QPointF pointer, MenuPosition position,
                                      const std::vector<Stage::Screen> &screens);

/// Where the centre of a shown ring goes when the screens have changed: it stays on a screen that holds it, and moves
/// to the middle of the main screen otherwise.
[[nodiscard]] QPointF keptOnScreens(QPointF centre, const std::vector<Stage::Screen> &screens);

/// The window's frame round \a centre. On a single screen, with Swift Mode off, a ring that would leave it at the left,
/// right or bottom edge stands 10 points inside; the top edge is not tested, so that a ring asked for near it stays
/// centred on the pointer.
[[nodiscard]] QRectF ringFrame(QPointF centre, double size, SwiftMode swiftMode,
                               const std::vector<Stage::Screen> &screens);

} // namespace Orbita
