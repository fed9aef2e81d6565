#pragma once

#include <xkbcommon/xkbcommon.h>

namespace Orbita {

/// The accent that the dead key \a symbol puts on a letter, as a character by itself; 0 for other keys and for dead
/// keys whose accent has no such character.
[[nodiscard]] char16_t spacingAccent(xkb_keysym_t symbol);

} // namespace Orbita
