#pragma once

#include <QString>

namespace Orbita {

/// Whether \a script stands, letter for letter, in one of the items that the property list at \a itemsFile holds, at
/// any depth. False when the file cannot be read.
[[nodiscard]] bool isOwnScript(const QString &itemsFile, const QString &script);

} // namespace Orbita
