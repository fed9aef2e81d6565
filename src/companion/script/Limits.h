#pragma once

#include "companion/script/ScriptHost.h"
#include "companion/script/Value.h"

namespace Orbita {

// Bounds of what a script can hold, so that one that grows without end gets a problem of its own.
inline constexpr qsizetype longestText = 32 * 1024 * 1024; ///< UTF-16 units: 64 MiB
inline constexpr qint64 mostItems = 4 * 1024 * 1024;       ///< those of nested lists included
inline constexpr int deepestList = 200;

/// Throws a ScriptFailure; \a message is a sentence.
[[noreturn]] void failScript(int number, const QString &message);

/// Throws a ScriptFailure where \a value is past a bound; gives it back otherwise.
Value checkedSize(Value value);
void checkTextLength(qint64 length);
void checkItemCount(qint64 count);

/// The value of \a result; its failure is thrown.
template <typename T>
T valueOrThrow(ScriptResult<T> result)
{
    if (!result)
        throw result.error();
    return std::move(result).value();
}
inline void orThrow(const ScriptResult<void> &result)
{
    if (!result)
        throw result.error();
}

} // namespace Orbita
