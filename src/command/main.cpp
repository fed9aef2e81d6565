#include "command/Command.h"
#include "command/Instance.h"
#include "command/Launcher.h"
#include "command/Registration.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <span>
#include <string>

namespace {

using namespace Orbita;

int fail(const char *sentence)
{
    std::fprintf(stderr, "orbita: %s\n", sentence);
    return EXIT_FAILURE;
}

/// The lines of standard input that are not empty.
std::vector<std::string> readUrls()
{
    std::vector<std::string> urls;
    for (std::string line; std::getline(std::cin, line);) {
        if (!line.empty())
            urls.push_back(line);
    }
    return urls;
}

CallAnswer tell(const Request &request)
{
    return request.command == Command::Open ? openUrls(request.urls) : callInstance(methodFor(request.command));
}

int start(const Request &request)
{
    const char *display = std::getenv("DISPLAY");
    if (!display || !*display)
        return fail("There is no X11 display to show the ring on.");
    if (request.command == Command::Start || request.command == Command::Service) {
        becomeDesktopProgram(startArguments(request));
        return fail("The program orbita-desktop could not be started.");
    }
    if (!startDesktopProgram(startArguments(request)))
        return EXIT_FAILURE;
    if (request.command == Command::Open && tell(request).result != CallResult::Done)
        return fail("Orbita was started but did not open the addresses.");
    return EXIT_SUCCESS;
}

int run(const Request &request)
{
    if (!request.touchRecording.empty()) {
        return isInstanceRunning()
            ? fail("Orbita runs already; a recording can only stand for the touchpads from its start.")
            : start(request);
    }
    const bool canStart = startsOrbita(request.command);
    const CallAnswer answer = tell(request);
    switch (answer.result) {
    case CallResult::Done:
        return EXIT_SUCCESS;
    case CallResult::Failed:
        return fail("Orbita runs but did not answer.");
    case CallResult::Refused:
        return fail(answer.reason.c_str());
    case CallResult::Unsendable:
        return fail("What is to be opened is no address.");
    case CallResult::NotRunning:
        return canStart ? start(request) : fail("Orbita is not running.");
    case CallResult::NoBus:
        return canStart && request.command != Command::Open
            ? start(request)
            : fail("There is no session bus, so a running Orbita cannot be reached.");
    }
    return EXIT_FAILURE;
}

int open(Request request)
{
    if (request.urls.front() == "-")
        request.urls = readUrls();
    return request.urls.empty() ? EXIT_SUCCESS : run(request);
}

int changeRegistration(Command command)
{
    const auto folders = UserFolders::standard();
    if (!folders)
        return fail("There is no home folder.");
    const auto failure
        = command == Command::Register ? registerPrograms(*folders, programFolder()) : unregisterPrograms(*folders);
    return failure ? fail(failure->c_str()) : EXIT_SUCCESS;
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
    case Command::Register:
    case Command::Unregister:
        return changeRegistration(request->command);
    case Command::Service:
        return start(*request);
    case Command::Open:
        return open(*request);
    default:
        return run(*request);
    }
}
