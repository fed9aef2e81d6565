#include "command/Command.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Orbita {

namespace {

constexpr std::string_view recordingOption = "--touch-recording";

struct Row {
    std::string_view argument;
    Command command;
    const char *method;
    const char *startArgument;
};

constexpr std::array rows{
    Row{"", Command::Start, "ShowSettings", ""},
    Row{"show", Command::Show, "Show", "--show"},
    Row{"hide", Command::Hide, "Hide", nullptr},
    Row{"toggle", Command::Toggle, "Toggle", "--show"},
    Row{"settings", Command::Settings, "ShowSettings", "--settings"},
    Row{"stop-scripts", Command::StopScripts, "StopScripts", nullptr},
    Row{"quit", Command::Quit, "Quit", nullptr},
    Row{"open", Command::Open, nullptr, "--service"},
    Row{"--service", Command::Service, nullptr, "--service"},
    Row{"--register", Command::Register, nullptr, nullptr},
    Row{"--unregister", Command::Unregister, nullptr, nullptr},
    Row{"--help", Command::Help, nullptr, nullptr},
    Row{"-h", Command::Help, nullptr, nullptr},
    Row{"--version", Command::Version, nullptr, nullptr},
};

const Row &rowOf(Command command)
{
    return *std::ranges::find(rows, command, &Row::command);
}

/// The addresses behind "open". They begin with a scheme, so what begins with a dash is none.
std::optional<Request> parseOpen(std::span<char *const> arguments)
{
    const std::vector<std::string> urls(arguments.begin(), arguments.end());
    if (urls == std::vector<std::string>{"-"})
        return Request{Command::Open, urls};
    if (std::ranges::any_of(urls, [](const std::string &url) { return url.empty() || url.starts_with('-'); }))
        return std::nullopt;
    return urls.empty() ? Request{} : Request{Command::Open, urls};
}

} // namespace

std::optional<Request> parseRequest(std::span<char *const> arguments)
{
    if (!arguments.empty() && std::string_view(arguments.front()) == rowOf(Command::Open).argument)
        return parseOpen(arguments.subspan(1));
    Request request;
    bool hasCommand = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == recordingOption && request.touchRecording.empty() && ++i < arguments.size()) {
            request.touchRecording = arguments[i];
            if (request.touchRecording.empty())
                return std::nullopt;
            continue;
        }
        const auto found = std::ranges::find(rows, argument, &Row::argument);
        if (hasCommand || found == rows.end() || argument.empty() || found->command == Command::Open)
            return std::nullopt;
        request.command = found->command;
        hasCommand = true;
    }
    if (!request.touchRecording.empty() && !startsOrbita(request.command))
        return std::nullopt;
    return request;
}

const char *methodFor(Command command)
{
    return rowOf(command).method;
}

std::vector<std::string> startArguments(const Request &request)
{
    std::vector<std::string> arguments;
    if (const char *argument = rowOf(request.command).startArgument; argument && *argument)
        arguments.emplace_back(argument);
    if (!request.touchRecording.empty())
        arguments.insert(arguments.end(), {std::string(recordingOption), request.touchRecording});
    return arguments;
}

bool startsOrbita(Command command)
{
    return rowOf(command).startArgument != nullptr;
}

const char *helpText()
{
    return "Usage: orbita [COMMAND] [OPTION]\n"
           "\n"
           "A ring of your applications and files round the pointer.\n"
           "\n"
           "Without a command Orbita starts, or opens its settings when it runs.\n"
           "\n"
           "Commands:\n"
           "  show       show the ring; starts Orbita where needed\n"
           "  hide       hide the ring\n"
           "  toggle     show the ring, or hide it when it is shown\n"
           "  settings   open the settings; starts Orbita where needed\n"
           "  stop-scripts\n"
           "             end the scripts that run\n"
           "  quit       end Orbita\n"
           "  open URL...\n"
           "             have Orbita open addresses, as the desktop does; starts Orbita\n"
           "             where needed; with \"-\" they come on standard input, one a line\n"
           "\n"
           "Options:\n"
           "  --touch-recording FILE   play a recorded touchpad, not the real ones\n"
           "  --register               make this copy of Orbita known to your desktop\n"
           "  --unregister             take that back\n"
           "  -h, --help               print this help\n"
           "  --version                print the version\n";
}

} // namespace Orbita
