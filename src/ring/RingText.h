#pragma once

#include <QFont>
#include <QString>

namespace Orbita {

/// The system font with glyphs of \a size points.
///
/// Sizes are rounded to halves, since every size keeps glyphs of its own in memory.
[[nodiscard]] QFont ringFont(double size);

/// \a text on one line of at most \a width points in \a font, cut at its end; breaks and runs of spaces become one
/// space.
[[nodiscard]] QString elidedLine(const QString &text, const QFont &font, double width);

} // namespace Orbita
