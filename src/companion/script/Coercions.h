#pragma once

#include "companion/script/TextRules.h"
#include "companion/script/Value.h"

namespace Orbita {

// What cannot be made into what is asked for is thrown as a ScriptFailure.

/// Items of a list are joined by the first delimiter of \a rules.
[[nodiscard]] QString toText(const Value &value, const TextRules &rules);
[[nodiscard]] Value toNumber(const Value &value); ///< an integer or a real
[[nodiscard]] double toReal(const Value &value);
/// Reals are rounded to the nearest.
[[nodiscard]] qint64 toInteger(const Value &value);
[[nodiscard]] bool toBoolean(const Value &value);
/// A value that is no list is the only item of one; a record gives its values.
[[nodiscard]] ValueList toList(const Value &value);
/// The texts of the items; a value that is no list is the only one.
[[nodiscard]] QStringList toTexts(const Value &value, const TextRules &rules);

/// \a value as the class \a className, a Word that the vocabulary has.
[[nodiscard]] Value coerce(const Value &value, const Value &className, const TextRules &rules);
/// The name of the class of \a value.
[[nodiscard]] QString className(const Value &value);

/// \a value as a script would write it, cut off after about \a longest characters.
[[nodiscard]] QString describe(const Value &value, qsizetype longest = 60);

} // namespace Orbita
