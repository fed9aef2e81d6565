#include "companion/script/Coercions.h"
#include "companion/script/Operators.h"
#include "companion/script/ThrownFailures.h"

#include <algorithm>

namespace Orbita {
namespace {

int sign(double left, double right)
{
    return int(left > right) - int(left < right);
}

int orderNumbers(const Value &left, const Value &right)
{
    const auto *leftInteger = left.as<qint64>();
    const auto *rightInteger = right.as<qint64>();
    if (leftInteger && rightInteger)
        return int(*leftInteger > *rightInteger) - int(*leftInteger < *rightInteger);
    return sign(toReal(left), toReal(right));
}

bool areEqualLists(const ValueList &left, const ValueList &right, const TextRules &rules)
{
    const auto areItemsEqual = [&](const Value &a, const Value &b) { return areEqual(a, b, rules); };
    return left.size() == right.size()
        && std::equal(left.items().begin(), left.items().end(), right.items().begin(), areItemsEqual);
}

bool hasFields(const ValueRecord &record, const ValueRecord &fields, const TextRules &rules)
{
    for (qsizetype i = 0; i < fields.names.size(); ++i) {
        const Value *value = record.find(fields.names[i]);
        if (!value || !areEqual(*value, fields.values.at(i), rules))
            return false;
    }
    return true;
}

/// Whether \a part stands in \a whole from \a place on.
bool standsAt(const ValueList &whole, qsizetype place, const ValueList &part, const TextRules &rules)
{
    const auto areItemsEqual = [&](const Value &a, const Value &b) { return areEqual(a, b, rules); };
    return place >= 0 && part.size() <= whole.size() - place
        && std::equal(part.items().begin(), part.items().end(), whole.items().begin() + place, areItemsEqual);
}

} // namespace

bool areEqual(const Value &left, const Value &right, const TextRules &rules)
{
    if (left.isNumber() && right.isNumber())
        return orderNumbers(left, right) == 0;
    if (left.index() != right.index())
        return false;
    if (const auto *text = left.as<QString>())
        return text->compare(*right.as<QString>(), rules.caseSensitivity()) == 0;
    if (const auto *list = left.as<ValueList>())
        return areEqualLists(*list, *right.as<ValueList>(), rules);
    if (const auto *record = left.as<ValueRecord>())
        return record->names.size() == right.as<ValueRecord>()->names.size()
            && hasFields(*record, *right.as<ValueRecord>(), rules);
    if (const auto *date = left.as<QDateTime>())
        return *date == *right.as<QDateTime>();
    if (const auto *truth = left.as<bool>())
        return *truth == *right.as<bool>();
    return toText(left, rules) == toText(right, rules);
}

int order(const Value &left, const Value &right, const TextRules &rules)
{
    if (left.isNumber())
        return orderNumbers(left, toNumber(right));
    if (const auto *text = left.as<QString>())
        return text->compare(toText(right, rules), rules.caseSensitivity());
    const auto *leftDate = left.as<QDateTime>();
    const auto *rightDate = right.as<QDateTime>();
    if (leftDate && rightDate)
        return sign(double(leftDate->toMSecsSinceEpoch()), double(rightDate->toMSecsSinceEpoch()));
    failScript(ScriptFailure::cannotConvert,
               QStringLiteral("%1 and %2 have no order.").arg(describe(left), describe(right)));
}

bool startsWith(const Value &whole, const Value &part, const TextRules &rules)
{
    if (const auto *list = whole.as<ValueList>())
        return standsAt(*list, 0, toList(part), rules);
    return toText(whole, rules).startsWith(toText(part, rules), rules.caseSensitivity());
}

bool endsWith(const Value &whole, const Value &part, const TextRules &rules)
{
    if (const auto *list = whole.as<ValueList>()) {
        const ValueList end = toList(part);
        return standsAt(*list, list->size() - end.size(), end, rules);
    }
    return toText(whole, rules).endsWith(toText(part, rules), rules.caseSensitivity());
}

bool contains(const Value &whole, const Value &part, const TextRules &rules)
{
    if (const auto *record = whole.as<ValueRecord>())
        return part.is<ValueRecord>() && hasFields(*record, *part.as<ValueRecord>(), rules);
    const auto *list = whole.as<ValueList>();
    if (!list)
        return toText(whole, rules).contains(toText(part, rules), rules.caseSensitivity());
    const ValueList sought = toList(part);
    for (qsizetype place = 0; place <= list->size() - sought.size(); ++place) {
        if (standsAt(*list, place, sought, rules))
            return true;
    }
    return false;
}

} // namespace Orbita
