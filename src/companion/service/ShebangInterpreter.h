#pragma once

#include <QString>

#include <optional>

namespace Orbita {

/// What a script's first line says it is to be run by.
struct ShebangInterpreter {
    QString program;  ///< as it is written: it may be empty, relative or missing
    QString argument; ///< the rest of the line, blanks and all, as the kernel takes it; empty for none

    friend bool operator==(const ShebangInterpreter &, const ShebangInterpreter &) = default;
};

/// The interpreter of a \a script whose first line begins with "#!"; nothing for any other.
[[nodiscard]] std::optional<ShebangInterpreter> interpreterOf(const QString &script);

/// Why \a interpreter cannot be started, as one sentence for the user; nothing where it can.
[[nodiscard]] std::optional<QString> obstacleOf(const ShebangInterpreter &interpreter);

} // namespace Orbita
