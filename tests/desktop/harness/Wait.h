#pragma once

#include <QString>

#include <chrono>
#include <functional>
#include <stdexcept>

namespace Orbita {

/// The desktop under test did not do what a test relies on. GoogleTest reports it as a failure of the running
/// test and goes on with the next one.
class DesktopFailure : public std::runtime_error {
public:
    explicit DesktopFailure(const QString &what) : std::runtime_error(what.toStdString()) {}
};

/// How long a condition may take before the wait for it is given up. Long enough for a loaded machine: it is only
/// ever used up by a test that fails.
inline constexpr std::chrono::seconds waitBound{60};

/// Runs the event loop until \a condition holds, and asks it again after every event and every few milliseconds.
///
/// \a description completes the sentence "waited in vain until …" and is evaluated only then.
/// Throws DesktopFailure when \a bound has passed.
void waitUntil(const std::function<bool()> &condition, const std::function<QString()> &description,
               std::chrono::milliseconds bound = waitBound);
void waitUntil(const std::function<bool()> &condition, const QString &description,
               std::chrono::milliseconds bound = waitBound);

} // namespace Orbita
