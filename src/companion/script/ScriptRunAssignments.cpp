#include "companion/script/Coercions.h"
#include "companion/script/Limits.h"
#include "companion/script/ScriptRun.h"
#include "companion/script/ThrownFailures.h"

#include <QScopedValueRollback>

namespace Orbita {
namespace {

using KnownSteps = std::span<const KnownStep>;

void store(Value &place, KnownSteps steps, Value value);

/// Stores \a value below the item at \a index. The item leaves its list meanwhile, so that it need not be copied.
void storeInItem(ValueList &list, qsizetype index, KnownSteps steps, Value value)
{
    Value item = list.at(index);
    list.replace(index, MissingValue());
    try {
        store(item, steps, std::move(value));
    } catch (const ScriptFailure &) {
        list.replace(index, std::move(item));
        throw;
    }
    list.replace(index, std::move(item));
}

[[noreturn]] void refuse(const Value &place, const QString &what)
{
    failScript(ScriptFailure::cannotConvert, describe(place) + QStringLiteral(" has no %1 to set.").arg(what));
}

void storeProperty(Value &place, const QString &name, KnownSteps rest, Value value)
{
    if (name == QLatin1String("contents"))
        return store(place, rest, std::move(value));
    auto *record = std::get_if<ValueRecord>(&place);
    const qsizetype index = record ? record->names.indexOf(name) : -1;
    if (index < 0)
        refuse(place, QLatin1Char('"') + name.left(40) + QLatin1Char('"'));
    storeInItem(record->values, index, rest, std::move(value));
}

void store(Value &place, KnownSteps steps, Value value)
{
    if (steps.empty()) {
        place = std::move(value);
        return;
    }
    const KnownSteps rest = steps.subspan(1);
    if (const auto *property = std::get_if<PropertyStep>(&steps.front()))
        return storeProperty(place, property->name, rest, std::move(value));
    auto *list = std::get_if<ValueList>(&place);
    if (!list)
        refuse(place, QStringLiteral("items"));
    if (const auto *choice = std::get_if<ElementChoice>(&steps.front()))
        return storeInItem(*list, placeOf(choice->first, list->size()), rest, std::move(value));
    if (!rest.empty())
        refuse(place, QStringLiteral("item there"));
    list->insert(std::get<EndStep>(steps.front()).isBeginning ? 0 : list->size(), std::move(value));
}

} // namespace

void ScriptRun::assign(const Expression &target, Value value)
{
    if (const auto *variable = std::get_if<Variable>(&target.node))
        place(variable->name) = std::move(value);
    else if (const auto *list = std::get_if<ListLiteral>(&target.node))
        assignItems(*list, value);
    else
        assignPart(std::get<Path>(target.node), std::move(value));
}

void ScriptRun::assignItems(const ListLiteral &targets, const Value &values)
{
    const ValueList list = toList(values);
    if (list.size() < qsizetype(targets.items.size()))
        failScript(ScriptFailure::outOfRange,
                   QStringLiteral("%1 values were expected, not %2.").arg(targets.items.size()).arg(list.size()));
    for (size_t i = 0; i < targets.items.size(); ++i)
        assign(*targets.items[i], list.at(qsizetype(i)));
}

void ScriptRun::assignPart(const Path &path, Value value)
{
    std::vector<KnownStep> steps;
    for (const Step &step : path.steps)
        steps.push_back(known(step));
    if (const auto *variable = std::get_if<Variable>(&path.base->node))
        return storeIn(variable->name, steps, std::move(value));
    const Value &base = std::get<Literal>(path.base->node).value;
    const auto *word = base.as<Word>();
    const auto *property = std::get_if<PropertyStep>(&steps.front());
    if (!word || !property)
        refuse(base, QStringLiteral("part"));
    if (property->name == QLatin1String("text item delimiters"))
        return assignDelimiters(value);
    if (word->name != QLatin1String("me"))
        refuse(base, QLatin1Char('"') + property->name.left(40) + QLatin1Char('"'));
    const QScopedValueRollback<Frame *> amongGlobals(m_frame, nullptr);
    storeIn(property->name, KnownSteps(steps).subspan(1), std::move(value));
}

void ScriptRun::storeIn(const QString &name, KnownSteps steps, Value value)
{
    if (steps.empty()) {
        place(name) = std::move(value);
        return;
    }
    Value *const whole = find(name);
    if (!whole)
        failScript(ScriptFailure::unknownName, QStringLiteral("The variable \"%1\" has no value.").arg(name.left(40)));
    // Checked before anything changes: a script that catches the problem must not get past the bounds step by step.
    checkItemCount(weight(*whole) + weight(value));
    if (nestingDepth(value) + qsizetype(steps.size()) > deepestList)
        failScript(ScriptFailure::general, QStringLiteral("Lists are nested more than %1 deep.").arg(deepestList));
    store(*whole, steps, std::move(value));
}

void ScriptRun::assignDelimiters(const Value &value)
{
    QStringList delimiters = toTexts(value, m_rules);
    if (delimiters.isEmpty())
        delimiters.append(QString());
    m_rules.delimiters = std::move(delimiters);
}

} // namespace Orbita
