#pragma once

#include <QStringView>

#include <span>

namespace Orbita {

/// The words of the script language that are coloured, in lower case. Those with a comma or a space count as one.
[[nodiscard]] std::span<const QStringView> scriptKeywords();

/// The length of the longest keyword that \a text begins with, whatever its case and what follows it; 0 for none.
[[nodiscard]] qsizetype keywordLengthAtStart(QStringView text);

} // namespace Orbita
