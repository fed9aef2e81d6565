#pragma once

#include <cstddef>

namespace Orbita {

/// From now on this program gets at most \a more bytes beyond what it has: past that, allocations fail. A limit that it
/// was started with stays where it is lower.
void limitMemory(size_t more);

/// Between fork and exec: gives a child the limit that this program was started with. Async-signal-safe.
void restoreMemoryLimit();

} // namespace Orbita
