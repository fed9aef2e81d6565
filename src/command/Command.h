#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Orbita {

/// What the user asked for on the command line.
enum class Command {
    Start,
    Show,
    Hide,
    Toggle,
    Settings,
    StopScripts,
    Quit,
    Open,
    Service, ///< start for a call that the bus has waiting
    Register,
    Unregister,
    Help,
    Version,
};

/// A whole command line.
struct Request {
    Command command = Command::Start;
    std::vector<std::string> urls{}; ///< to be opened; a "-" alone stands for those on standard input
    std::string touchRecording{};    ///< the file that is to stand for the touchpads; empty for none

    friend bool operator==(const Request &, const Request &) = default;
};

/// Reads the arguments behind the program's name. None means Start, and so does "open" without an address. Nothing for
/// arguments that make no sense.
[[nodiscard]] std::optional<Request> parseRequest(std::span<char *const> arguments);

/// The D-Bus method that asks the running instance for \a command; starting it again opens its settings.
/// Null for a command that needs no instance, and for Open.
[[nodiscard]] const char *methodFor(Command command);

/// The arguments with which the desktop program is started for \a request.
[[nodiscard]] std::vector<std::string> startArguments(const Request &request);

/// Whether \a command starts Orbita where it does not run yet.
[[nodiscard]] bool startsOrbita(Command command);

[[nodiscard]] const char *helpText();

} // namespace Orbita
