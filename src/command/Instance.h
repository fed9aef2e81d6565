#pragma once

namespace Orbita {

/// How a call to the running instance went.
enum class CallResult {
    Done,
    NotRunning, ///< nobody owns the name
    NoBus,      ///< there is no session bus to ask
    Failed,     ///< it runs but did not do it
};

/// Calls \a method of the instance on the session bus and waits for its answer.
[[nodiscard]] CallResult callInstance(const char *method);

/// Whether an instance runs. False when there is no session bus.
[[nodiscard]] bool isInstanceRunning();

} // namespace Orbita
