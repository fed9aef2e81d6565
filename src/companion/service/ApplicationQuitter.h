#pragma once

#include "base/Result.h"

#include <QString>

namespace Orbita {

/// Asks the process \a processIdentifier of this user to quit as the close buttons of its windows would, so that it can
/// ask its own user; one without windows gets the signal SIGTERM. Does not wait until it has ended.
///
/// A failure is one sentence that says why it was not asked: there is no such process, it is another user's, this very
/// program, one that the session needs (its session manager, window manager, desktop shell, display server, bus, and
/// what has started them), or one that may have windows on another display than that of $DISPLAY.
[[nodiscard]] Result<void, QString> quitApplication(qint64 processIdentifier);

} // namespace Orbita
