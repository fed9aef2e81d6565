#include "companion/script/Elements.h"

#include "companion/script/Coercions.h"
#include "companion/script/Limits.h"
#include "companion/script/TextParts.h"
#include "companion/script/ThrownFailures.h"

namespace Orbita {
namespace {

using Selection = ElementStep::Selection;

struct Places {
    qsizetype first;
    qsizetype last;
};

Places placesOf(const ElementChoice &choice, qsizetype count)
{
    switch (choice.selection) {
    case Selection::Every:
        return {0, count - 1};
    case Selection::Range: {
        const qsizetype first = placeOf(choice.first, count);
        const qsizetype last = placeOf(choice.last, count);
        return {qMin(first, last), qMax(first, last)};
    }
    case Selection::Middle:
        return {placeOf((count + 1) / 2, count), (count - 1) / 2};
    case Selection::Some: {
        const auto number = qMin(qint64(choice.random * double(count)), qint64(count) - 1);
        return {placeOf(number + 1, count), qsizetype(number)};
    }
    case Selection::Index:
        break;
    }
    const qsizetype place = placeOf(choice.first, count);
    return {place, place};
}

bool picksOne(const ElementChoice &choice)
{
    return choice.selection != Selection::Every && choice.selection != Selection::Range;
}

Value chooseItems(const ValueList &list, const ElementChoice &choice)
{
    const Places places = placesOf(choice, list.size());
    if (picksOne(choice))
        return list.at(places.first);
    const auto &items = list.items();
    return ValueList(std::vector<Value>(items.begin() + places.first, items.begin() + places.last + 1));
}

Value chooseParts(const QString &text, const ElementChoice &choice, const TextRules &rules)
{
    const TextParts parts(text, choice.kind, rules);
    const Places places = placesOf(choice, parts.count());
    if (picksOne(choice))
        return parts.at(places.first);
    if (choice.kind == ElementKind::Text)
        return parts.between(places.first, places.last);
    checkItemCount(places.last - places.first + 1);
    std::vector<Value> texts;
    for (qsizetype i = places.first; i <= places.last; ++i)
        texts.push_back(parts.at(i));
    return ValueList(std::move(texts));
}

} // namespace

Value chooseElements(const Value &whole, const ElementChoice &choice, const TextRules &rules)
{
    if (choice.kind == ElementKind::Item && (whole.is<ValueList>() || whole.is<ValueRecord>()))
        return chooseItems(toList(whole), choice);
    if (whole.is<ValueList>() && choice.kind != ElementKind::TextItem && choice.kind != ElementKind::Text)
        failScript(ScriptFailure::outOfRange, describe(whole) + QStringLiteral(" is a list, which has items only."));
    return chooseParts(toText(whole, rules), choice, rules);
}

qsizetype placeOf(qint64 index, qsizetype count)
{
    const qint64 place = index > 0 ? index - 1 : index < -count ? -1 : count + index;
    if (index == 0 || place < 0 || place >= count)
        failScript(ScriptFailure::outOfRange, QStringLiteral("There is no item %1 of %2.").arg(index).arg(count));
    return qsizetype(place);
}

} // namespace Orbita
