#include "companion/script/ScriptRun.h"

#include "companion/script/ScriptInterpreter.h"
#include "companion/script/ThrownFailures.h"

#include <QScopedValueRollback>

#include <new>

#include <sys/resource.h>

namespace Orbita {
namespace {

constexpr int deepestCalls = 1000;
constexpr int stackOverflow = -2706;

/// The bytes of the stack that a script may use; the rest is for what the host does.
qptrdiff stackShare()
{
    constexpr qptrdiff most = 64 * 1024 * 1024; // also where the stack has no limit
    rlimit limit{};
    if (::getrlimit(RLIMIT_STACK, &limit) != 0 || limit.rlim_cur > rlim_t(most))
        return most / 4 * 3;
    return qptrdiff(limit.rlim_cur) / 4 * 3;
}

const char *stackPosition()
{
    return static_cast<const char *>(__builtin_frame_address(0));
}

} // namespace

ScriptRun::ScriptRun(const ScriptTree &tree, ScriptHost &host, const std::atomic<bool> &isStopped)
    : m_tree(tree),
      m_host(host),
      m_isStopped(isStopped),
      m_stackBottom(stackPosition()),
      m_mostStack(stackShare()),
      m_sharedNames(tree.sharedNames.begin(), tree.sharedNames.end())
{
    for (const Handler &handler : tree.handlers)
        m_handlers.insert(handler.name, &handler);
}

Value ScriptRun::run()
{
    (void)execute(m_tree.body);
    return m_result;
}

bool ScriptRun::isGlobal(const QString &name) const
{
    return !m_frame || m_sharedNames.contains(name) || m_frame->globals.contains(name);
}

Value *ScriptRun::find(const QString &name)
{
    QHash<QString, Value> &variables = isGlobal(name) ? m_globals : m_frame->locals;
    const auto found = variables.find(name);
    return found == variables.end() ? nullptr : &*found;
}

Value &ScriptRun::place(const QString &name)
{
    return isGlobal(name) ? m_globals[name] : m_frame->locals[name];
}

void ScriptRun::checkStack() const
{
    if (qAbs(m_stackBottom - stackPosition()) > m_mostStack)
        failScript(stackOverflow, QStringLiteral("The script is nested too deeply in calls of handlers."));
}

Value ScriptRun::evaluate(const HandlerCall &call)
{
    const Handler *handler = m_handlers.value(call.name, nullptr);
    if (!handler)
        failScript(ScriptFailure::notUnderstood, QStringLiteral("There is no handler \"%1\".").arg(call.name.left(40)));
    if (handler->parameters.size() != qsizetype(call.arguments.size()))
        failScript(ScriptFailure::notUnderstood,
                   QStringLiteral("The handler \"%1\" takes %2 values, not %3.")
                       .arg(call.name.left(40))
                       .arg(handler->parameters.size())
                       .arg(call.arguments.size()));
    if (m_calls >= deepestCalls)
        failScript(stackOverflow, QStringLiteral("Handlers call one another more than %1 deep.").arg(deepestCalls));
    Frame frame;
    for (size_t i = 0; i < call.arguments.size(); ++i)
        frame.locals.insert(handler->parameters[qsizetype(i)], evaluate(call.arguments[i]));
    const QScopedValueRollback<Frame *> inFrame(m_frame, &frame);
    const QScopedValueRollback<int> inCall(m_calls, m_calls + 1);
    const QScopedValueRollback<Value> tellsNobody(m_target, MissingValue());
    m_result = MissingValue();
    (void)execute(handler->body);
    return m_result;
}

Result<Value, ScriptProblem> ScriptInterpreter::run(const Script &script)
{
    using Failed = Failure<ScriptProblem>;
    try {
        return ScriptRun(script.tree(), m_host, m_isStopped).run();
    } catch (const ScriptProblem &problem) {
        return Failed(problem);
    } catch (const std::bad_alloc &) {
        return Failed({1, ScriptFailure::general, QStringLiteral("The script needs more memory than there is.")});
    }
}

} // namespace Orbita
