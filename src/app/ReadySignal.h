#pragma once

namespace Orbita {

/// Tells the process that started this one, where there is one that waits for it, that the program is ready to be used.
/// The program then lets go of that process's terminal: what it has to say goes to the log file from then on.
void signalReady();

} // namespace Orbita
