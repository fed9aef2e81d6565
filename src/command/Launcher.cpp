#include "command/Launcher.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace Orbita {

namespace {

/// The desktop program lies beside this one in a build folder, and in a folder of its own when installed.
std::filesystem::path desktopProgram()
{
    constexpr const char *name = "orbita-desktop";
    std::error_code error;
    const auto folder = programFolder();
    const auto beside = folder / name;
    return std::filesystem::exists(beside, error) ? beside : folder / ORBITA_LIBEXEC_FROM_BIN / name;
}

/// Waits for the one byte that says that the program is ready. False when it ended without, or takes too long.
bool waitUntilReady(int readEnd)
{
    constexpr int patience = 60'000; // milliseconds: a machine that is starting up can be very slow
    pollfd waited{readEnd, POLLIN, 0};
    char byte = 0;
    return TEMP_FAILURE_RETRY(poll(&waited, 1, patience)) == 1 && TEMP_FAILURE_RETRY(read(readEnd, &byte, 1)) == 1;
}

} // namespace

std::filesystem::path programFolder()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

void becomeDesktopProgram(const std::vector<std::string> &arguments)
{
    const std::string path = desktopProgram().string();
    std::string name = "orbita";
    std::vector<char *> pointers{name.data()};
    for (const std::string &argument : arguments)
        pointers.push_back(const_cast<char *>(argument.c_str())); // execv() changes nothing
    pointers.push_back(nullptr);
    execv(path.c_str(), pointers.data());
}

bool startDesktopProgram(const std::vector<std::string> &arguments)
{
    std::array<int, 2> ready{};
    if (pipe2(ready.data(), O_CLOEXEC) != 0)
        return false;
    const pid_t child = fork();
    if (child < 0)
        return false;
    if (child == 0) {
        setsid();
        fcntl(ready[1], F_SETFD, 0);
        setenv("ORBITA_READY_FD", std::to_string(ready[1]).c_str(), 1);
        becomeDesktopProgram(arguments);
        _exit(127);
    }
    close(ready[1]);
    const bool isReady = waitUntilReady(ready[0]);
    close(ready[0]);
    return isReady;
}

} // namespace Orbita
