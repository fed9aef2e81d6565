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

int start(const Request &request)
{
    const char *display = std::getenv("DISPLAY");
    if (!display || !*display)
        return fail("There is no X11 display to show the ring on.");
    if (request.command != Command::Start)
        return startDesktopProgram(startArguments(request)) ? EXIT_SUCCESS : EXIT_FAILURE;
    becomeDesktopProgram(startArguments(request));
    return fail("The program orbita-desktop could not be started.");
}

int run(const Request &request)
{
    if (!request.touchRecording.empty()) {
        return isInstanceRunning()
            ? fail("Orbita runs already; a recording can only stand for the touchpads from its start.")
            : start(request);
    }
    const Command command = request.command;
    switch (callInstance(methodFor(command))) {
    case CallResult::Done:
        return EXIT_SUCCESS;
    case CallResult::Failed:
        return fail("Orbita runs but did not answer.");
    case CallResult::NotRunning:
        return startsOrbita(command) ? start(request) : fail("Orbita is not running.");
    case CallResult::NoBus:
        return startsOrbita(command) ? start(request)
                                     : fail("There is no session bus, so a running Orbita cannot be reached.");
    }
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char **argv)
{
    const auto request = parseRequest(std::span<char *const>(argv, std::size_t(argc)).subspan(argc > 0 ? 1 : 0));
    if (!request)
        return fail("Unknown command; see \"orbita --help\"."), 2;
    switch (request->command) {
    case Command::Help:
        std::fputs(helpText(), stdout);
        return EXIT_SUCCESS;
    case Command::Version:
        std::puts("orbita " ORBITA_VERSION);
        return EXIT_SUCCESS;
    default:
        return run(*request);
    }
}
