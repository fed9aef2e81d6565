#pragma once

#include <QPalette>

namespace Orbita {

/// Colours for controls on white, whatever the desktop's theme is; its accent colour where that can be told from white.
[[nodiscard]] QPalette lightPalette();

} // namespace Orbita
