#pragma once

#include <QColor>
#include <QString>

namespace Orbita {

/// The desktop's accent colour, or one of our own where that cannot be told from grey or white.
[[nodiscard]] QColor sheetAccent();

/// How controls on a white sheet look, whatever the desktop's style and colours are.
[[nodiscard]] QString sheetStyleSheet();

} // namespace Orbita
