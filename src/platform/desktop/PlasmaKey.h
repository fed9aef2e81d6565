#pragma once

#include "platform/KeyCombination.h"

#include <optional>

namespace Orbita {

class KeyboardLayout;

/// \a combination as Plasma's shortcut service names it: the toolkit's key and modifiers in one number. Keys that type
/// go by what \a layout has on them, all others by their position.
/// Nothing when the key has no such name.
[[nodiscard]] std::optional<int> plasmaKey(KeyCombination combination, const KeyboardLayout &layout);

} // namespace Orbita
