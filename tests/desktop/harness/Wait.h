#pragma once

#include <QString>

#include <functional>
#include <stdexcept>

namespace Orbita {

/// The desktop under test did not do what a test relies on. GoogleTest reports it as a failure of the running
/// test and goes on with the next one.
class DesktopFailure : public std::runtime_error {
public:
    explicit DesktopFailure(const QString &what) : std::runtime_error(what.toStdString()) {}
};

/// Runs the event loop until \a condition holds, and asks it again after every event and every few milliseconds.
/// False when it still does not after a minute: only a test that fails uses that up, even on a loaded machine.
[[nodiscard]] bool eventually(const std::function<bool()> &condition);

/// Throws DesktopFailure where eventually() is false. \a description completes the sentence "waited in vain until …"
/// and is evaluated only then.
void waitUntil(const std::function<bool()> &condition, const std::function<QString()> &description);
void waitUntil(const std::function<bool()> &condition, const QString &description);

} // namespace Orbita
