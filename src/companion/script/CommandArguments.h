#pragma once

#include "companion/script/CommandSyntax.h"
#include "companion/script/ScriptHost.h"
#include "companion/script/TextRules.h"

#include <optional>

namespace Orbita {

/// What a command may look at beside its arguments.
struct CommandContext {
    ScriptHost &host;
    const Value &target; ///< whom the script tells; missing value for nobody
    const TextRules &rules;
};

/// The values that a command was given.
class CommandArguments {
public:
    CommandArguments(std::optional<Value> subject, const TextRules &rules)
        : m_subject(std::move(subject)), m_rules(rules)
    {
    }
    void add(const CommandOption &option, Value value) { m_options.emplace_back(option.phrase, std::move(value)); }

    /// What the command is about; nothing where it was not said.
    [[nodiscard]] const Value *subject() const { return m_subject ? &*m_subject : nullptr; }
    /// The subject as text, which the command has to have.
    [[nodiscard]] QString subjectText() const;

    /// The option \a phrase as the command table spells it; nothing where it was not given.
    [[nodiscard]] const Value *find(const char *phrase) const;
    [[nodiscard]] QString text(const char *phrase) const; ///< empty where it was not given
    [[nodiscard]] QStringList texts(const char *phrase) const;
    [[nodiscard]] double number(const char *phrase, double otherwise) const;
    [[nodiscard]] bool flag(const char *phrase) const;

private:
    std::optional<Value> m_subject;
    const TextRules &m_rules;
    std::vector<std::pair<const char *, Value>> m_options;
};

} // namespace Orbita
