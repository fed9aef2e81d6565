#pragma once

#include <optional>
#include <span>
#include <string>

namespace Orbita {

/// What the user asked for on the command line.
enum class Command { Start, Show, Hide, Toggle, Settings, Quit, Help, Version };

/// Reads the arguments behind the program's name. None means Start. Nothing for arguments that make no sense.
[[nodiscard]] std::optional<Command> parseCommand(std::span<char *const> arguments);

/// The D-Bus method that asks the running instance for \a command; starting it again opens its settings.
/// Null for a command that needs no instance.
[[nodiscard]] const char *methodFor(Command command);

/// The argument with which the desktop program is started for \a command; null when it starts for none.
[[nodiscard]] const char *startArgumentFor(Command command);

/// Whether \a command starts Orbita where it does not run yet.
[[nodiscard]] bool startsOrbita(Command command);

[[nodiscard]] const char *helpText();

} // namespace Orbita
