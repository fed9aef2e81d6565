#pragma once

#include "companion/script/SyntaxTree.h"
#include "companion/script/TextRules.h"
#include "companion/script/Value.h"

namespace Orbita {

// What the operands have no meaning for is thrown as a ScriptFailure.

/// Any operator but `and` and `or`, which decide whether their right side is looked at.
[[nodiscard]] Value applyOperator(Operator op, const Value &left, const Value &right, const TextRules &rules);

/// Sums, products and powers. Integers stay integers until they are too large, and then become reals.
[[nodiscard]] Value calculate(Operator op, const Value &left, const Value &right);
[[nodiscard]] Value negated(const Value &value);

/// `&`: texts, records and lists put together.
[[nodiscard]] Value join(const Value &left, const Value &right, const TextRules &rules);

[[nodiscard]] bool areEqual(const Value &left, const Value &right, const TextRules &rules);
/// Negative where \a left comes before \a right, 0 where neither does. The right side is made into the left's class.
[[nodiscard]] int order(const Value &left, const Value &right, const TextRules &rules);
[[nodiscard]] bool startsWith(const Value &whole, const Value &part, const TextRules &rules);
[[nodiscard]] bool endsWith(const Value &whole, const Value &part, const TextRules &rules);
[[nodiscard]] bool contains(const Value &whole, const Value &part, const TextRules &rules);

} // namespace Orbita
