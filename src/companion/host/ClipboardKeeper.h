#pragma once

#include "companion/script/ScriptHost.h"

namespace Orbita {

/// The text on the desktop's clipboard; empty where there is none. Needs an application with windows.
/// Line breaks are "\r" for scripts, here and below, and "\n" for everybody else.
[[nodiscard]] ScriptResult<QString> clipboardText();

/// Puts \a text, at most 64 MiB, on the desktop's clipboard, where it outlives this program: on X11 somebody has to be
/// there and hand it out. \a keeper is the program whose main function calls keepClipboard() with these arguments.
[[nodiscard]] ScriptResult<void> setClipboardText(const QString &text, const QString &keeper);

/// Puts the text on standard input on the clipboard and returns once it is there, with the exit status. A process is
/// left behind, in a session of its own, which hands the text out until somebody else puts something on the clipboard,
/// or the display goes away. To be called before there is an application.
[[nodiscard]] int keepClipboard(int argc, char **argv);

/// The argument by which a program is asked to call keepClipboard().
inline constexpr char keepClipboardArgument[] = "--keep-clipboard";

} // namespace Orbita
