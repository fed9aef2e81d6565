#pragma once

#include "companion/script/ScriptHost.h"

namespace Orbita {

// Within the interpreter, failures are thrown as a ScriptFailure and caught where the script or its reader wants them.

/// Throws; \a message is a sentence.
[[noreturn]] inline void failScript(int number, const QString &message)
{
    throw ScriptFailure{number, message};
}

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
