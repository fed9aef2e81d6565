#pragma once

#include <functional>

namespace Orbita {

/// Runs the event loop until \a condition holds. False when it does not come true within half a minute.
[[nodiscard]] bool eventually(const std::function<bool()> &condition);

} // namespace Orbita
