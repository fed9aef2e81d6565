#include "command/Command.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Orbita {

namespace {

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
    Row{"quit", Command::Quit, "Quit", nullptr},
    Row{"--help", Command::Help, nullptr, nullptr},
    Row{"-h", Command::Help, nullptr, nullptr},
    Row{"--version", Command::Version, nullptr, nullptr},
};

const Row &rowOf(Command command)
{
    return *std::ranges::find(rows, command, &Row::command);
}

} // namespace

std::optional<Command> parseCommand(std::span<char *const> arguments)
{
    if (arguments.empty())
        return Command::Start;
    const auto found = std::ranges::find(rows, std::string_view(arguments.front()), &Row::argument);
    if (arguments.size() > 1 || found == rows.end() || found->argument.empty())
        return std::nullopt;
    return found->command;
}

const char *methodFor(Command command)
{
    return rowOf(command).method;
}

const char *startArgumentFor(Command command)
{
    return rowOf(command).startArgument;
}

bool startsOrbita(Command command)
{
    return startArgumentFor(command) != nullptr;
}

const char *helpText()
{
    return "Usage: orbita [COMMAND]\n"
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
           "  quit       end Orbita\n"
           "\n"
           "Options:\n"
           "  -h, --help   print this help\n"
           "  --version    print the version\n";
}

} // namespace Orbita
