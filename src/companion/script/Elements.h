#pragma once

#include "companion/script/SyntaxTree.h"
#include "companion/script/TextRules.h"
#include "companion/script/Value.h"

namespace Orbita {

/// An ElementStep whose indices are known.
struct ElementChoice {
    ElementStep::Selection selection;
    ElementKind kind;
    qint64 first = 1; ///< from 1, or negative from the end
    qint64 last = 1;
    double random = 0.0; ///< from 0 to below 1; which one Some is
};

/// What \a choice picks of \a whole, a list or anything that can be made into text. Throws a ScriptFailure for an
/// index that is out of range, and where \a whole has no such parts.
[[nodiscard]] Value chooseElements(const Value &whole, const ElementChoice &choice, const TextRules &rules);

/// The place in 0 to \a count - 1 that \a index from 1, or negative from the end, names. Throws a ScriptFailure
/// where there is none.
[[nodiscard]] qsizetype placeOf(qint64 index, qsizetype count);

} // namespace Orbita
