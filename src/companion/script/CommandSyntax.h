#pragma once

#include "companion/script/Vocabulary.h"

#include <vector>

namespace Orbita {

class CommandArguments;
struct CommandContext;

/// Something that may follow a command's subject: `with title "x"`.
struct CommandOption {
    enum class Kind {
        Expression,
        Flag, ///< `with x`, `without x`, or `x` and an expression
        Name  ///< a word of its own, as in `with icon note`, or an expression that is no word
    };
    const char *phrase; ///< in lower case; without the "with" of a flag
    Kind kind = Kind::Expression;
};

/// A command: how it is written, and what it does.
struct CommandSyntax {
    /// What follows the command's own words; Name as for options.
    enum class Subject { None, Optional, Required, Name };

    const char *phrase; ///< in lower case
    Subject subject;
    std::vector<CommandOption> options;
    Value (*run)(CommandContext &context, const CommandArguments &arguments);
};

/// Every command that scripts can give.
[[nodiscard]] const PhraseTable<const CommandSyntax *> &commands();

} // namespace Orbita
