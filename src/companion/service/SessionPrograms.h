#pragma once

#include <QString>

namespace Orbita {

/// Whether a process is one that a desktop session does not survive without losing what is open in it, or that keeps
/// it safe: a session manager, window manager, desktop shell, display server or bus, what keeps terminals, a screen
/// locker or what sets it off, or an agent that keeps the user's secrets or asks for them.
///
/// \a executable is the name of its executable file. \a process is what it calls itself, which for an interpreter is
/// mostly the name of the script; the kernel cuts it after 15 bytes. Such a beginning of a known name counts, unless
/// the executable's name goes on from there in another way.
[[nodiscard]] bool isSessionProgram(const QString &executable, const QString &process);

} // namespace Orbita
