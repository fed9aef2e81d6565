#pragma once

#include "companion/script/Script.h"
#include "companion/script/ScriptHost.h"
#include "companion/script/Value.h"

#include <atomic>

namespace Orbita {

/// Runs scripts, one at a time, on the thread that calls run(): its stack has to be 8 MiB at least.
///
/// A script may run for ever. Calls of handlers go 1,000 deep, and shallower where the stack is nearly used up.
class ScriptInterpreter {
public:
    explicit ScriptInterpreter(ScriptHost &host) : m_host(host) {}

    /// The value of the script's last statement, or of its `return`. A script that the user cancelled, or that was
    /// stopped, ends with the problem ScriptFailure::userCancelled, about which nothing need be shown.
    [[nodiscard]] Result<Value, ScriptProblem> run(const Script &script);

    /// Ends the script before its next statement, whatever it would catch. For any thread; a call of the host that is
    /// under way is waited for. Later runs end at once.
    void stop() { m_isStopped = true; }

private:
    ScriptHost &m_host;
    std::atomic<bool> m_isStopped = false;
};

} // namespace Orbita
