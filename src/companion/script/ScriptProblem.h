#pragma once

#include <QString>

namespace Orbita {

/// Why a script could not be read, or why it ended early.
struct ScriptProblem {
    static constexpr int syntax = -2741; ///< the number of everything that readScript() finds

    int line = 1;        ///< of the source, from 1
    int number = syntax; ///< ScriptFailure has the usual ones; scripts may raise numbers of their own
    QString message;     ///< one sentence: "then" was expected, not "display".

    /// What the user is told: Line 3: "then" was expected, not "display".
    [[nodiscard]] QString sentence() const;

    friend bool operator==(const ScriptProblem &, const ScriptProblem &) = default;
};

} // namespace Orbita
