#include "command/Command.h"
#include "command/Instance.h"
#include "command/Launcher.h"

#include <cstdio>
#include <cstdlib>
#include <span>

namespace {

using namespace Orbita;

int fail(const char *sentence)
{
    std::fprintf(stderr, "orbita: %s\n", sentence);
    return EXIT_FAILURE;
}

int start(Command command)
{
    const char *display = std::getenv("DISPLAY");
    if (!display || !*display)
        return fail("There is no X11 display to show the ring on.");
    if (command != Command::Start)
        return startDesktopProgram(startArgumentFor(command)) ? EXIT_SUCCESS : EXIT_FAILURE;
    becomeDesktopProgram(startArgumentFor(command));
    return fail("The program orbita-desktop could not be started.");
}

int run(Command command)
{
    switch (callInstance(methodFor(command))) {
    case CallResult::Done:
        return EXIT_SUCCESS;
    case CallResult::Failed:
        return fail("Orbita runs but did not answer.");
    case CallResult::NotRunning:
        return startsOrbita(command) ? start(command) : fail("Orbita is not running.");
    case CallResult::NoBus:
        return startsOrbita(command) ? start(command)
                                     : fail("There is no session bus, so a running Orbita cannot be reached.");
    }
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char **argv)
{
    const auto command = parseCommand(std::span<char *const>(argv, std::size_t(argc)).subspan(argc > 0 ? 1 : 0));
    if (!command)
        return fail("Unknown command; see \"orbita --help\"."), 2;
    switch (*command) {
    case Command::Help:
        std::fputs(helpText(), stdout);
        return EXIT_SUCCESS;
    case Command::Version:
        std::puts("orbita " ORBITA_VERSION);
        return EXIT_SUCCESS;
    default:
        return run(*command);
    }
}
