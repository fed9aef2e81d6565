#pragma once

#include "companion/script/ScriptHost.h"

namespace Orbita {

/// What the shell makes of \a command, as ScriptHost::doShellScript() says. More than 16 MiB of output are a failure.
[[nodiscard]] ScriptResult<QString> runShellScript(const QString &command);

/// Speaks \a text with the first speech program that is installed and works, and returns when it has been spoken.
[[nodiscard]] ScriptResult<void> speak(const QString &text);

} // namespace Orbita
