#pragma once

#include "companion/script/Value.h"

namespace Orbita {

// Bounds of what a script can hold, so that one that grows without end gets a problem of its own. Past a bound, each
// function throws a ScriptFailure.
inline constexpr qsizetype longestText = 32 * 1024 * 1024; ///< UTF-16 units: 64 MiB
inline constexpr qint64 mostItems = 4 * 1024 * 1024;       ///< those of nested lists included
inline constexpr int deepestList = 200;

/// Gives \a value back.
Value checkedSize(Value value);
void checkTextLength(qint64 length);
void checkItemCount(qint64 count);

} // namespace Orbita
