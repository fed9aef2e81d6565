#pragma once

#include <QString>

namespace Orbita {

/// Whether \a program, the name of an executable file or of a process, is one that a desktop session does not survive
/// without losing what is open in it: a session manager, window manager, desktop shell, display server or bus, or what
/// keeps terminals.
///
/// The names of processes are cut by the kernel after 15 bytes; such a beginning of a name counts.
[[nodiscard]] bool isSessionProgram(const QString &program);

} // namespace Orbita
