#include "companion/script/Coercions.h"
#include "companion/script/CommandArguments.h"
#include "companion/script/Limits.h"
#include "companion/script/Operators.h"
#include "companion/script/Properties.h"
#include "companion/script/ScriptRun.h"
#include "companion/script/ThrownFailures.h"

namespace Orbita {
namespace {

bool isWord(const Value &value, const char *name)
{
    const auto *word = value.as<Word>();
    return word && word->name == QLatin1String(name);
}

} // namespace

Value ScriptRun::evaluate(const ExpressionPtr &expression)
{
    try {
        checkStack();
        return std::visit([this](const auto &node) { return evaluate(node); }, expression->node);
    } catch (const ScriptFailure &failure) {
        throw ScriptProblem{expression->line, failure.number, failure.message};
    }
}

Value ScriptRun::evaluate(const Variable &variable)
{
    if (const Value *value = find(variable.name))
        return *value;
    failScript(ScriptFailure::unknownName,
               QStringLiteral("The variable \"%1\" has no value.").arg(variable.name.left(40)));
}

Value ScriptRun::evaluate(const ListLiteral &list)
{
    std::vector<Value> items;
    items.reserve(list.items.size());
    for (const ExpressionPtr &item : list.items)
        items.push_back(evaluate(item));
    return checkedSize(ValueList(std::move(items)));
}

Value ScriptRun::evaluate(const RecordLiteral &record)
{
    std::vector<Value> values;
    for (const ExpressionPtr &value : record.values)
        values.push_back(evaluate(value));
    return checkedSize(ValueRecord{record.names, ValueList(std::move(values))});
}

Value ScriptRun::evaluate(const Unary &unary)
{
    const Value operand = evaluate(unary.operand);
    switch (unary.kind) {
    case Unary::Kind::Negate:
        return negated(operand);
    case Unary::Kind::Not:
        return !toBoolean(operand);
    case Unary::Kind::File:
        return FilePath{toText(operand, m_rules)};
    case Unary::Kind::Application:
        break;
    }
    return ApplicationName{toText(operand, m_rules)};
}

Value ScriptRun::evaluate(const Chain &chain)
{
    const Operator first = chain.links.front().op;
    if (first == Operator::And || first == Operator::Or)
        return evaluateLogic(chain);
    if (first == Operator::Power)
        return evaluatePowers(chain);
    Value value = evaluate(chain.first);
    for (const Chain::Link &link : chain.links)
        value = applyOperator(link.op, value, evaluate(link.operand), m_rules);
    return value;
}

/// Looks at no more operands than it takes to know the answer.
Value ScriptRun::evaluateLogic(const Chain &chain)
{
    const bool decisive = chain.links.front().op == Operator::Or;
    bool value = toBoolean(evaluate(chain.first));
    for (const Chain::Link &link : chain.links) {
        if (value == decisive)
            break;
        value = toBoolean(evaluate(link.operand));
    }
    return value;
}

/// From the right: 2 ^ 3 ^ 2 is 2 ^ 9.
Value ScriptRun::evaluatePowers(const Chain &chain)
{
    std::vector<Value> operands = {evaluate(chain.first)};
    for (const Chain::Link &link : chain.links)
        operands.push_back(evaluate(link.operand));
    Value value = operands.back();
    for (auto base = operands.rbegin() + 1; base != operands.rend(); ++base)
        value = calculate(Operator::Power, toReal(*base), value);
    return value;
}

Value ScriptRun::evaluate(const Path &path)
{
    Value value = evaluate(path.base);
    for (const Step &step : path.steps)
        value = follow(value, known(step));
    return value;
}

KnownStep ScriptRun::known(const Step &step)
{
    if (const auto *property = std::get_if<PropertyStep>(&step))
        return *property;
    if (const auto *end = std::get_if<EndStep>(&step))
        return *end;
    const auto &element = std::get<ElementStep>(step);
    ElementChoice choice = {element.selection, element.kind};
    if (element.first)
        choice.first = toInteger(evaluate(element.first));
    if (element.last)
        choice.last = toInteger(evaluate(element.last));
    if (element.selection == ElementStep::Selection::Some)
        choice.random = m_host.randomNumber();
    return choice;
}

Value ScriptRun::follow(const Value &whole, const KnownStep &step)
{
    if (const auto *choice = std::get_if<ElementChoice>(&step))
        return chooseElements(whole, *choice, m_rules);
    if (const auto *named = std::get_if<PropertyStep>(&step))
        return property(whole, named->name);
    failScript(ScriptFailure::outOfRange, QStringLiteral("Only \"set\" and \"copy\" know the end of a list."));
}

Value ScriptRun::property(const Value &whole, const QString &name)
{
    const auto *application = whole.as<ApplicationName>();
    if (application && name == QLatin1String("running"))
        return valueOrThrow(m_host.isRunning(application->name));
    const bool isScript = isWord(whole, "me");
    if ((isScript || isWord(whole, "applescript")) && name == QLatin1String("text item delimiters")) {
        std::vector<Value> delimiters(m_rules.delimiters.begin(), m_rules.delimiters.end());
        return delimiters.size() == 1 ? delimiters.front() : Value(ValueList(std::move(delimiters)));
    }
    if (isScript && m_globals.contains(name))
        return m_globals.value(name);
    return propertyOf(whole, name, m_rules);
}

Value ScriptRun::evaluate(const CommandCall &call)
{
    std::optional<Value> subject;
    if (call.direct)
        subject = evaluate(call.direct);
    CommandArguments arguments(std::move(subject), m_rules);
    for (const CommandCall::Option &option : call.options)
        arguments.add(*option.option, evaluate(option.value));
    CommandContext context = {m_host, m_target, m_rules};
    return call.command->run(context, arguments);
}

} // namespace Orbita
