#pragma once

#include <string>
#include <vector>

namespace Orbita {

/// How a call to the running instance went.
enum class CallResult {
    Done,
    NotRunning, ///< nobody owns the name
    NoBus,      ///< there is no session bus to ask
    Failed,     ///< it runs but did not do it
    Refused,    ///< it says why it does not do it
    Unsendable, ///< what it was to be told is no text that a bus carries
};

struct CallAnswer {
    CallResult result;
    std::string reason{}; ///< for the user, one line, where the call was refused
};

/// Calls \a method of the instance on the session bus and waits for its answer.
[[nodiscard]] CallAnswer callInstance(const char *method);

/// Has the instance open \a urls, which have to be UTF-8, and waits until it has taken them. They may be long.
[[nodiscard]] CallAnswer openUrls(const std::vector<std::string> &urls);

/// Asks the bus to read anew which programs it can start. Nothing happens where there is no session bus.
void reloadBusConfiguration();

/// Whether an instance runs. False when there is no session bus.
[[nodiscard]] bool isInstanceRunning();

} // namespace Orbita
