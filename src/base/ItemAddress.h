#pragma once

#include <QtGlobal>

#include <compare>
#include <limits>

namespace Orbita {

/// Marks the absence of an index wherever an address is stored: 2^63 - 1.
inline constexpr qint64 NotFound = std::numeric_limits<qint64>::max();

/// Where an item stands: its section and its position within that section, both counted from 0.
struct ItemAddress {
    qint64 section = NotFound;
    qint64 position = NotFound;

    [[nodiscard]] bool isFound() const { return section != NotFound && position != NotFound; }
    friend auto operator<=>(const ItemAddress &, const ItemAddress &) = default;
};

} // namespace Orbita
