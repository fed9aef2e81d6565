#include "platform/desktop/EndSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace Orbita {

namespace {

// Where the handler, which may do next to nothing, tells the event loop.
std::array<int, 2> ends{-1, -1};

void tell(int)
{
    const int error = errno;
    const char byte = 0;
    // A full pipe has been told of already.
    [[maybe_unused]] const auto written = write(ends[1], &byte, 1);
    errno = error;
}

void handle(void (*handler)(int))
{
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaction(number, &action, nullptr);
}

} // namespace

EndSignals::EndSignals(QObject *parent) : QObject(parent)
{
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        std::array<char, 16> bytes;
        if (read(ends[0], bytes.data(), bytes.size()) > 0)
            Q_EMIT received();
    });
    handle(tell);
}

EndSignals::~EndSignals()
{
    handle(SIG_DFL);
    m_notifier.reset();
    for (int &end : ends)
        close(std::exchange(end, -1));
}

} // namespace Orbita
