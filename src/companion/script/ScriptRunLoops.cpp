#include "companion/script/Coercions.h"
#include "companion/script/Operators.h"
#include "companion/script/ScriptRun.h"
#include "companion/script/ThrownFailures.h"

namespace Orbita {

void ScriptRun::checkStop() const
{
    if (m_isStopped)
        failScript(ScriptFailure::userCancelled, QStringLiteral("The script was stopped."));
}

ScriptRun::Flow ScriptRun::execute(const RepeatTimes &loop)
{
    const qint64 count = loop.count ? toInteger(evaluate(loop.count)) : 0;
    for (qint64 i = 0; !loop.count || i < count; ++i) {
        checkStop();
        if (const Flow flow = execute(loop.body); flow != Flow::Next)
            return flow == Flow::ExitRepeat ? Flow::Next : flow;
    }
    return Flow::Next;
}

ScriptRun::Flow ScriptRun::execute(const RepeatWhile &loop)
{
    while (toBoolean(evaluate(loop.condition)) != loop.endsWith) {
        checkStop();
        if (const Flow flow = execute(loop.body); flow != Flow::Next)
            return flow == Flow::ExitRepeat ? Flow::Next : flow;
    }
    return Flow::Next;
}

ScriptRun::Flow ScriptRun::execute(const RepeatRange &loop)
{
    Value current = toNumber(evaluate(loop.from));
    const Value last = toNumber(evaluate(loop.to));
    const Value step = loop.by ? toNumber(evaluate(loop.by)) : Value(qint64(1));
    const double direction = toReal(step);
    if (direction == 0.0)
        failScript(ScriptFailure::general, QStringLiteral("A repeat cannot go on by 0."));
    while (direction > 0.0 ? order(current, last, m_rules) <= 0 : order(current, last, m_rules) >= 0) {
        checkStop();
        place(loop.variable) = current;
        if (const Flow flow = execute(loop.body); flow != Flow::Next)
            return flow == Flow::ExitRepeat ? Flow::Next : flow;
        Value next = calculate(Operator::Add, current, step);
        if (order(next, current, m_rules) == 0) // too little beside so large a number
            break;
        current = std::move(next);
    }
    return Flow::Next;
}

/// Goes through the list as it was at first, whatever the loop does to it.
ScriptRun::Flow ScriptRun::execute(const RepeatIn &loop)
{
    const ValueList list = toList(evaluate(loop.list));
    for (const Value &item : list.items()) {
        checkStop();
        place(loop.variable) = item;
        if (const Flow flow = execute(loop.body); flow != Flow::Next)
            return flow == Flow::ExitRepeat ? Flow::Next : flow;
    }
    return Flow::Next;
}

} // namespace Orbita
