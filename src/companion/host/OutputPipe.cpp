#include "companion/host/OutputPipe.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Orbita {

namespace {

constexpr size_t pieceSize = 64 * 1024; // bytes: what a pipe mostly holds

/// Lets go of everything but the two pipes, which become the first two streams.
void keepOnly(int output, int errors)
{
    ::setsid();
    const int null = ::open("/dev/null", O_RDWR);
    ::dup2(output, STDIN_FILENO);
    ::dup2(errors, STDOUT_FILENO);
    ::dup2(null, STDERR_FILENO);
    ::close_range(STDERR_FILENO + 1, ~0U, 0);
}

/// Runs in a copy of a program with threads: only async-signal-safe calls.
[[noreturn]] void drain(int output, int errors)
{
    keepOnly(output, errors);
    std::array<pollfd, 2> pipes{{{STDIN_FILENO, POLLIN, 0}, {STDOUT_FILENO, POLLIN, 0}}};
    static char forgotten[pieceSize];
    while (pipes[0].fd >= 0 || pipes[1].fd >= 0) {
        if (::poll(pipes.data(), pipes.size(), -1) < 0 && errno != EINTR)
            break;
        for (pollfd &pipe : pipes) {
            if (pipe.fd >= 0 && pipe.revents != 0 && ::read(pipe.fd, forgotten, pieceSize) == 0)
                pipe.fd = -1;
        }
    }
    ::_exit(EXIT_SUCCESS);
}

} // namespace

OutputPipe::OutputPipe()
{
    if (::pipe2(m_ends.data(), O_CLOEXEC) != 0)
        m_ends = {-1, -1};
}

OutputPipe::~OutputPipe()
{
    closeWriteEnd();
    if (isOpen())
        ::close(readEnd());
}

void OutputPipe::closeWriteEnd()
{
    if (writeEnd() >= 0)
        ::close(writeEnd());
    m_ends[1] = -1;
}

QByteArray OutputPipe::read() const
{
    int waiting = 0;
    if (::ioctl(readEnd(), FIONREAD, &waiting) != 0 || waiting <= 0)
        return {};
    QByteArray bytes(waiting, Qt::Uninitialized);
    const ssize_t count = ::read(readEnd(), bytes.data(), size_t(bytes.size()));
    bytes.truncate(std::max<ssize_t>(count, 0));
    return bytes;
}

bool OutputPipe::isAbandoned() const
{
    pollfd pipe{readEnd(), POLLIN, 0};
    return ::poll(&pipe, 1, 0) > 0 && (pipe.revents & POLLHUP) != 0;
}

void leaveToDrain(const OutputPipe &output, const OutputPipe &errors)
{
    // Of two generations, so that it is nobody's child here.
    const pid_t child = ::fork();
    if (child == 0) {
        if (::fork() == 0)
            drain(output.readEnd(), errors.readEnd());
        ::_exit(EXIT_SUCCESS);
    }
    if (child > 0)
        while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {}
}

} // namespace Orbita
