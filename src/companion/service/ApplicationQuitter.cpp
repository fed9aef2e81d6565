#include "companion/service/ApplicationQuitter.h"

#include "companion/service/ProcessFiles.h"
#include "companion/service/ProcessWindows.h"
#include "companion/service/QuitPlan.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

#include <csignal>
#include <optional>

#include <sys/syscall.h>
#include <unistd.h>

namespace Orbita {

namespace {

using namespace ProcessFiles;

/// A process itself, whoever gets its number after it.
class ProcessHandle {
public:
    explicit ProcessHandle(pid_t process) : m_descriptor(int(syscall(SYS_pidfd_open, process, 0U))) {}
    ~ProcessHandle()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    ProcessHandle(const ProcessHandle &) = delete;
    ProcessHandle &operator=(const ProcessHandle &) = delete;

    /// Signal 0 only asks whether the process is still there and may be signalled.
    [[nodiscard]] bool signal(int number) const
    {
        return m_descriptor >= 0 && syscall(SYS_pidfd_send_signal, m_descriptor, number, nullptr, 0U) == 0;
    }
    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

/// A program that runs with somebody else's rights besides this user's is not this user's to end.
bool isOfThisUser(qint64 process)
{
    const QList<QByteArray> users = statusValues(process, "Uid"); // real, effective, saved, for files
    return users.size() == 4 && users.count(QByteArray::number(getuid())) == 4;
}

/// That of the session bus; 0 without one.
qint64 busProcess()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? bus.interface()->servicePid(QStringLiteral("org.freedesktop.DBus")).value() : 0;
}

/// Whether \a process has started the window manager or the bus, as the script of a session does that waits for its
/// window manager, or is one of them.
bool carriesSession(qint64 process, const std::optional<ProcessWindows> &windows)
{
    const auto isBehind = [process](qint64 part) { return part > 0 && isOrStarted(process, part); };
    return isBehind(windows ? windows->windowManager() : 0) || isBehind(busProcess());
}

QuitFacts::Windows windowsOf(qint64 process, const std::optional<ProcessWindows> &windows)
{
    const bool isReached = windows && windows->isDisplayReached();
    if (isReached && windows->kind() != QuitFacts::Windows::None)
        return windows->kind();
    const DisplayNames names{environmentValue(process, "DISPLAY"), environmentValue(process, "WAYLAND_DISPLAY")};
    return mayHaveWindowsBeyond(isReached ? qgetenv("DISPLAY") : QByteArray(), names) ? QuitFacts::Windows::OutOfReach
                                                                                      : QuitFacts::Windows::None;
}

} // namespace

Result<void, QString> quitApplication(qint64 processIdentifier)
{
    QuitFacts facts;
    facts.processIdentifier = processIdentifier;
    if (!isProcessIdentifier(processIdentifier))
        return Failure(planQuit(facts).error());

    const ProcessHandle process{pid_t(processIdentifier)};
    std::optional<ProcessWindows> windows;
    if (qEnvironmentVariableIsSet("DISPLAY"))
        windows.emplace(processIdentifier);
    facts.isOfThisUser = isOfThisUser(processIdentifier);
    facts.isAncestor = isOrStarted(processIdentifier, getpid());
    facts.carriesSession = carriesSession(processIdentifier, windows);
    facts.executableName = executableName(processIdentifier);
    facts.processName = QString::fromUtf8(statusValues(processIdentifier, "Name").join(' '));
    facts.windows = windowsOf(processIdentifier, windows);
    // Asked last: what has not ended by now is what all the other facts are about.
    facts.exists = process.isOpen() && (!facts.isOfThisUser || process.signal(0));

    const auto step = planQuit(facts);
    if (!step)
        return Failure(step.error());
    if (*step == QuitStep::CloseWindows)
        windows->close();
    else if (!process.signal(SIGTERM))
        return Failure(QStringLiteral("The process %1 could not be told to end.").arg(processIdentifier));
    return {};
}

} // namespace Orbita
