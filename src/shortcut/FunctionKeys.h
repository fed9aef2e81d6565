#pragma once

#include <QtGlobal>

#include <optional>

namespace Orbita {

/// The number of the function key with the virtual key code \a keyCode, 1 for F1 to 20 for F20; nothing for other keys.
[[nodiscard]] std::optional<int> functionKeyNumber(quint64 keyCode);

} // namespace Orbita
