#pragma once

#include "companion/script/Elements.h"
#include "companion/script/ScriptHost.h"
#include "companion/script/ScriptProblem.h"
#include "companion/script/SyntaxTree.h"
#include "companion/script/TextRules.h"

#include <QHash>
#include <QSet>

#include <atomic>
#include <span>

namespace Orbita {

/// A step of a path whose expressions were evaluated.
using KnownStep = std::variant<ElementChoice, PropertyStep, EndStep>;

/// One run of a script: its variables, and where it stands. What ends it early is thrown as a ScriptProblem.
class ScriptRun {
public:
    ScriptRun(const ScriptTree &tree, ScriptHost &host, const std::atomic<bool> &isStopped);
    Q_DISABLE_COPY_MOVE(ScriptRun)

    [[nodiscard]] Value run();

private:
    /// How a statement left off.
    enum class Flow { Next, ExitRepeat, Return };

    /// The variables of one call of a handler.
    struct Frame {
        QHash<QString, Value> locals;
        QSet<QString> globals; ///< names that it shares with the script
    };

    [[nodiscard]] Flow execute(const Block &block);
    [[nodiscard]] Flow execute(const Statement &statement);
    [[nodiscard]] Flow execute(const Assignment &assignment);
    [[nodiscard]] Flow execute(const Evaluation &evaluation);
    [[nodiscard]] Flow execute(const If &statement);
    [[nodiscard]] Flow execute(const RepeatTimes &loop);
    [[nodiscard]] Flow execute(const RepeatWhile &loop);
    [[nodiscard]] Flow execute(const RepeatRange &loop);
    [[nodiscard]] Flow execute(const RepeatIn &loop);
    [[nodiscard]] Flow execute(const ExitRepeat &) { return Flow::ExitRepeat; }
    [[nodiscard]] Flow execute(const Try &statement);
    [[nodiscard]] Flow execute(const Raise &raise);
    [[nodiscard]] Flow execute(const Return &statement);
    [[nodiscard]] Flow execute(const Tell &tell);
    [[nodiscard]] Flow execute(const CaseBlock &block);
    [[nodiscard]] Flow execute(const Timeout &timeout);
    [[nodiscard]] Flow execute(const Declaration &declaration);

    [[nodiscard]] Value evaluate(const ExpressionPtr &expression);
    [[nodiscard]] Value evaluate(const Literal &literal) { return literal.value; }
    [[nodiscard]] Value evaluate(const Variable &variable);
    [[nodiscard]] Value evaluate(const CurrentTarget &) { return m_target; }
    [[nodiscard]] Value evaluate(const LastResult &) { return m_result; }
    [[nodiscard]] Value evaluate(const ListLiteral &list);
    [[nodiscard]] Value evaluate(const RecordLiteral &record);
    [[nodiscard]] Value evaluate(const Unary &unary);
    [[nodiscard]] Value evaluate(const Chain &chain);
    [[nodiscard]] Value evaluateLogic(const Chain &chain);
    [[nodiscard]] Value evaluatePowers(const Chain &chain);
    [[nodiscard]] Value evaluate(const Path &path);
    [[nodiscard]] Value evaluate(const HandlerCall &call);
    [[nodiscard]] Value evaluate(const CommandCall &call);

    [[nodiscard]] KnownStep known(const Step &step);
    [[nodiscard]] Value follow(const Value &whole, const KnownStep &step);
    [[nodiscard]] Value property(const Value &whole, const QString &name);

    void assign(const Expression &target, Value value);
    void assignItems(const ListLiteral &targets, const Value &values);
    void assignPart(const Path &path, Value value);
    void storeIn(const QString &name, std::span<const KnownStep> steps, Value value);
    void assignDelimiters(const Value &value);

    [[nodiscard]] bool isGlobal(const QString &name) const;
    [[nodiscard]] Value *find(const QString &name);
    [[nodiscard]] Value &place(const QString &name);
    void checkStack() const;
    void checkStop() const;

    const ScriptTree &m_tree;
    ScriptHost &m_host;
    const std::atomic<bool> &m_isStopped;
    const char *m_stackBottom;
    qptrdiff m_mostStack; ///< bytes

    QHash<QString, const Handler *> m_handlers;
    QSet<QString> m_sharedNames;
    QHash<QString, Value> m_globals;
    Frame *m_frame = nullptr; ///< of the innermost call; nothing outside of handlers
    int m_calls = 0;
    Value m_target = MissingValue(); ///< `it`
    Value m_result = MissingValue();
    TextRules m_rules;
};

} // namespace Orbita
