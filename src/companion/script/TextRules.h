#pragma once

#include <QStringList>

namespace Orbita {

/// How a script wants texts to be compared, taken apart and put together.
struct TextRules {
    bool considersCase = false;
    QStringList delimiters = {QString()}; ///< `text item delimiters`; the first stands between joined items

    [[nodiscard]] Qt::CaseSensitivity caseSensitivity() const
    {
        return considersCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
    }
};

} // namespace Orbita
