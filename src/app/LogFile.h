#pragma once

#include <QString>

namespace Orbita {

/// Where a program writes its log that was started by a command, and so has no terminal of its own to write to:
/// "orbita/orbita.log" in the user's folder for state, $XDG_STATE_HOME or ~/.local/state.
[[nodiscard]] QString logFilePath();

/// Opens the log file for appending, with its folder, readable for the user only. One of more than a megabyte is begun
/// anew. -1 where it cannot be written. The caller closes the descriptor.
[[nodiscard]] int openLogFile();

} // namespace Orbita
