#include "platform/desktop/ProcessWatch.h"

#include <QSocketNotifier>

#include <sys/syscall.h>
#include <unistd.h>

namespace Orbita {

void ProcessWatch::Closer::operator()(QSocketNotifier *notifier) const
{
    notifier->setEnabled(false);
    close(int(notifier->socket()));
    notifier->deleteLater(); // it may be the one that is speaking
}

std::set<qint64> ProcessWatch::watchOnly(const std::set<qint64> &processes)
{
    std::erase_if(m_watched, [&](const auto &watched) { return !processes.contains(watched.first); });
    std::set<qint64> watched;
    for (const qint64 process : processes) {
        if (watch(process))
            watched.insert(process);
    }
    return watched;
}

bool ProcessWatch::watch(qint64 processIdentifier)
{
    if (m_watched.contains(processIdentifier))
        return true;
    // A descriptor for the process becomes readable when that ends.
    const auto descriptor = int(syscall(SYS_pidfd_open, pid_t(processIdentifier), 0U));
    if (descriptor < 0)
        return false;
    auto *notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read);
    m_watched[processIdentifier].reset(notifier);
    connect(notifier, &QSocketNotifier::activated, this, [this, processIdentifier] {
        m_watched.erase(processIdentifier);
        Q_EMIT ended(processIdentifier);
    });
    return true;
}

} // namespace Orbita
