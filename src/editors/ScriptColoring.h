#pragma once

#include <QStringView>

#include <vector>

namespace Orbita {

/// What a stretch of a script is coloured as.
enum class ColorRole {
    Keyword,
    String, ///< quotes, what stands between them, and digits
    Comment,
};

/// A stretch of one colour. In UTF-16 units.
struct ColorRange {
    qsizetype start = 0;
    qsizetype length = 0;
    ColorRole role = ColorRole::Keyword;

    friend bool operator==(const ColorRange &, const ColorRange &) = default;
};

/// The colours of \a script, whose lines end with line feeds. What no range holds is black.
///
/// Ascending, apart from one another or of different roles. A keyword is coloured at the start of a word, whatever
/// follows it. A quote of either kind opens or closes a string, also within a comment; "#" outside a string begins a
/// comment, which ends with the line. What a string, comment or digit colours is no keyword.
[[nodiscard]] std::vector<ColorRange> scriptColoring(QStringView script);

} // namespace Orbita
