#pragma once

#include <cstdint>

namespace Orbita {

/// How many blocks of memory this program has allocated so far.
[[nodiscard]] std::uint64_t allocationCount();

} // namespace Orbita
