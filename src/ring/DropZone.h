#pragma once

#include "ring/RingLayout.h"

#include <functional>
#include <optional>

namespace Orbita {

/// Which part of an item's arc something is held over.
enum class DropZone { Before, Onto, After };

/// The item whose arc holds a direction, and which part of it does.
struct DropTarget {
    ItemAddress item;
    DropZone zone = DropZone::Before;

    /// Where something dropped before or after the item goes; not found for a drop onto it.
    [[nodiscard]] ItemAddress insertion() const;
    friend bool operator==(const DropTarget &, const DropTarget &) = default;
};

/// The zone at \a fraction of an arc, in (0, 1). An item that can be dropped onto has quarters: before, onto, onto,
/// after; any other has halves. Borders belong to no zone.
[[nodiscard]] std::optional<DropZone> dropZoneAt(double fraction, bool canDropOnto);

/// What lies in the direction \a angle (clockwise from twelve o'clock) on the ring without its gap. \a canDropOnto is
/// asked about the one item whose arc holds the angle. Nothing on the borders of zones and in an empty ring.
[[nodiscard]] std::optional<DropTarget> dropTargetAt(const RingLayout &layout, double angle,
                                                     const std::function<bool(ItemAddress)> &canDropOnto);

/// Whether the far end of an arc belongs to it.
enum class ArcEnd { Excluded, Included };

/// An item whose arc holds an angle, and how far along the arc the angle lies: above 0, at most 1.
struct ArcHit {
    ItemAddress item;
    double fraction = 0.0;
};

/// The item whose arc holds \a angle on the ring without its gap; none on a border that belongs to nobody.
[[nodiscard]] std::optional<ArcHit> arcAt(const RingLayout &layout, double angle, ArcEnd end);

/// The address that the item at \a standing had before the item at \a pressed was taken out of the ring.
///
/// One position is added from the pressed one on, whatever the section: also in sections that lost nothing.
[[nodiscard]] ItemAddress addressBeforePress(ItemAddress pressed, ItemAddress standing);

} // namespace Orbita
