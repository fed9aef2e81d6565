#include "companion/script/Coercions.h"
#include "companion/script/ScriptRun.h"
#include "companion/script/ThrownFailures.h"

#include <QScopedValueRollback>

#include <limits>

namespace Orbita {

ScriptRun::Flow ScriptRun::execute(const Block &block)
{
    for (const Statement &statement : block) {
        if (const Flow flow = execute(statement); flow != Flow::Next)
            return flow;
    }
    return Flow::Next;
}

ScriptRun::Flow ScriptRun::execute(const Statement &statement)
{
    try {
        checkStop();
        checkStack();
        return std::visit([this](const auto &node) { return execute(node); }, statement.node);
    } catch (const ScriptFailure &failure) {
        throw ScriptProblem{statement.line, failure.number, failure.message};
    }
}

ScriptRun::Flow ScriptRun::execute(const Assignment &assignment)
{
    Value value = evaluate(assignment.value);
    m_result = value;
    assign(*assignment.target, std::move(value));
    return Flow::Next;
}

ScriptRun::Flow ScriptRun::execute(const Evaluation &evaluation)
{
    m_result = evaluate(evaluation.value);
    return Flow::Next;
}

ScriptRun::Flow ScriptRun::execute(const If &statement)
{
    for (const If::Branch &branch : statement.branches) {
        if (toBoolean(evaluate(branch.condition)))
            return execute(branch.body);
    }
    return execute(statement.otherwise);
}

ScriptRun::Flow ScriptRun::execute(const Try &statement)
{
    ScriptProblem problem;
    try {
        return execute(statement.body);
    } catch (const ScriptProblem &caught) {
        if (m_isStopped)
            throw;
        problem = caught;
    }
    // Outside of the catch block, so that an error in here finds the stack unwound.
    if (!statement.messageName.isEmpty())
        place(statement.messageName) = problem.message;
    if (!statement.numberName.isEmpty())
        place(statement.numberName) = qint64(problem.number);
    return execute(statement.onError);
}

ScriptRun::Flow ScriptRun::execute(const Raise &raise)
{
    const QString message
        = raise.message ? toText(evaluate(raise.message), m_rules) : QStringLiteral("The script raised an error.");
    const qint64 number = raise.number ? toInteger(evaluate(raise.number)) : ScriptFailure::general;
    failScript(int(qBound(qint64(std::numeric_limits<int>::min()), number, qint64(std::numeric_limits<int>::max()))),
               message);
}

ScriptRun::Flow ScriptRun::execute(const Return &statement)
{
    m_result = statement.value ? evaluate(statement.value) : Value(MissingValue());
    return Flow::Return;
}

ScriptRun::Flow ScriptRun::execute(const Tell &tell)
{
    Value target = evaluate(tell.target);
    const auto *word = target.as<Word>();
    const bool isScript = word && word->name == QLatin1String("me");
    if (!isScript && !target.is<ApplicationName>())
        failScript(ScriptFailure::notUnderstood,
                   QStringLiteral("Only applications can be told something, not %1.").arg(describe(target)));
    const QScopedValueRollback<Value> telling(m_target, isScript ? Value(MissingValue()) : std::move(target));
    return execute(tell.body);
}

ScriptRun::Flow ScriptRun::execute(const CaseBlock &block)
{
    const QScopedValueRollback<bool> comparing(m_rules.considersCase, block.considersCase);
    return execute(block.body);
}

ScriptRun::Flow ScriptRun::execute(const Timeout &timeout)
{
    (void)toReal(evaluate(timeout.seconds));
    return execute(timeout.body);
}

ScriptRun::Flow ScriptRun::execute(const Declaration &declaration)
{
    for (const QString &name : declaration.names) {
        if (m_frame && declaration.isGlobal)
            m_frame->globals.insert(name);
    }
    return Flow::Next;
}

} // namespace Orbita
