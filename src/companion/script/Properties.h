#pragma once

#include "companion/script/TextRules.h"
#include "companion/script/Value.h"

namespace Orbita {

/// The property \a name of \a whole: a field of a record, or what the language gives every value of its class.
/// Throws a ScriptFailure where it has none.
[[nodiscard]] Value propertyOf(const Value &whole, const QString &name, const TextRules &rules);

/// \a text in single quotes, as a shell reads it.
[[nodiscard]] QString shellQuoted(const QString &text);

} // namespace Orbita
