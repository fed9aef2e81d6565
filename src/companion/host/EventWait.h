#pragma once

#include <chrono>
#include <functional>

namespace Orbita {

/// Runs the event loop until \a condition holds, which is asked after each burst of events; false when it still does
/// not after \a limit. Needs an application.
bool waitFor(const std::function<bool()> &condition, std::chrono::milliseconds limit);

/// Runs the event loop for \a seconds, however many; not at all for a negative number or none.
void waitSeconds(double seconds);

} // namespace Orbita
