#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

namespace Orbita {

/// The desktop's accent colour, or one of our own where white text on that cannot be read or it looks grey.
[[nodiscard]] QColor sheetAccent();

/// Light colours for what the style sheet leaves to the toolkit.
[[nodiscard]] QPalette sheetPalette();
/// How controls on a white sheet look, whatever the desktop's style and colours are. Buttons with the property
/// "isPrimary" stand out, labels with the property "isQuiet" stand back.
[[nodiscard]] QString sheetStyleSheet();

} // namespace Orbita
