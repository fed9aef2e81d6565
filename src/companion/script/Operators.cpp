#include "companion/script/Operators.h"

#include "companion/script/Coercions.h"
#include "companion/script/Limits.h"

namespace Orbita {
namespace {

Value joinRecords(const ValueRecord &left, const ValueRecord &right)
{
    ValueRecord record = left;
    for (qsizetype i = 0; i < right.names.size(); ++i) {
        if (left.find(right.names[i]))
            continue;
        record.names.append(right.names[i]);
        record.values.insert(record.values.size(), right.values.at(i));
    }
    return record;
}

Value joinLists(const Value &left, const Value &right)
{
    const ValueList first = toList(left);
    const ValueList second = toList(right);
    checkItemCount(first.weight() + second.weight());
    std::vector<Value> items = first.items();
    items.insert(items.end(), second.items().begin(), second.items().end());
    return ValueList(std::move(items));
}

} // namespace

Value applyOperator(Operator op, const Value &left, const Value &right, const TextRules &rules)
{
    switch (op) {
    case Operator::Equal:
        return areEqual(left, right, rules);
    case Operator::NotEqual:
        return !areEqual(left, right, rules);
    case Operator::Less:
        return order(left, right, rules) < 0;
    case Operator::LessOrEqual:
        return order(left, right, rules) <= 0;
    case Operator::Greater:
        return order(left, right, rules) > 0;
    case Operator::GreaterOrEqual:
        return order(left, right, rules) >= 0;
    case Operator::StartsWith:
        return startsWith(left, right, rules);
    case Operator::EndsWith:
        return endsWith(left, right, rules);
    case Operator::Contains:
        return contains(left, right, rules);
    case Operator::DoesNotContain:
        return !contains(left, right, rules);
    case Operator::IsContainedBy:
        return contains(right, left, rules);
    case Operator::IsNotContainedBy:
        return !contains(right, left, rules);
    case Operator::Coerce:
        return coerce(left, right, rules);
    case Operator::Join:
        return join(left, right, rules);
    default:
        return calculate(op, left, right);
    }
}

Value join(const Value &left, const Value &right, const TextRules &rules)
{
    if (const auto *text = left.as<QString>())
        return checkedSize(*text + toText(right, rules));
    const auto *leftRecord = left.as<ValueRecord>();
    const auto *rightRecord = right.as<ValueRecord>();
    return checkedSize(leftRecord && rightRecord ? joinRecords(*leftRecord, *rightRecord) : joinLists(left, right));
}

} // namespace Orbita
