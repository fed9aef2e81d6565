#include "companion/service/ApplicationQuitter.h"

#include "companion/service/ProcessWindows.h"
#include "companion/service/QuitPlan.h"
#include "platform/BoundedRead.h"

#include <QFile>
#include <QFileInfo>
#include <QList>

#include <csignal>
#include <optional>

#include <sys/syscall.h>
#include <unistd.h>

namespace Orbita {

namespace {

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

QString procFile(qint64 process, const char *name)
{
    return QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String(name));
}

QByteArray content(const QString &path)
{
    QFile file(path);
    constexpr qint64 maximum = 256 * 1024; // more than any environment that a launcher hands on
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ? readAtMost(file, maximum) : QByteArray();
}

/// The values of the line \a key of a file that is laid out as /proc/PID/status is.
QList<QByteArray> statusValues(const QByteArray &status, const QByteArray &key)
{
    for (const QByteArray &line : status.split('\n')) {
        if (line.startsWith(key + ':'))
            return line.mid(key.size() + 1).simplified().split(' ');
    }
    return {};
}

/// A program that runs with somebody else's rights besides this user's is not this user's to end.
bool isOfThisUser(const QByteArray &status)
{
    const QList<QByteArray> users = statusValues(status, "Uid"); // real, effective, saved, for files
    return users.size() == 4 && users.count(QByteArray::number(getuid())) == 4;
}

bool isAncestor(qint64 process)
{
    qint64 ancestor = getpid();
    while (ancestor > 1 && ancestor != process)
        ancestor = statusValues(content(procFile(ancestor, "status")), "PPid").value(0).toLongLong();
    return ancestor == process;
}

QString executableName(qint64 process)
{
    QString name = QFileInfo(QFile::symLinkTarget(procFile(process, "exe"))).fileName();
    // So the kernel marks a program that was replaced, by an update for instance, while it runs.
    if (name.endsWith(QLatin1String(" (deleted)")))
        name.chop(10);
    return name;
}

bool hasDisplay(qint64 process)
{
    return ('\0' + content(procFile(process, "environ"))).contains(QByteArrayLiteral("\0DISPLAY="));
}

QuitFacts::Windows windowsOf(qint64 process, std::optional<ProcessWindows> &windows)
{
    if (qEnvironmentVariableIsSet("DISPLAY"))
        windows.emplace(process);
    if (windows && windows->isDisplayReached())
        return windows->kind();
    return hasDisplay(process) ? QuitFacts::Windows::OutOfReach : QuitFacts::Windows::None;
}

} // namespace

Result<void, QString> quitApplication(qint64 processIdentifier)
{
    QuitFacts facts;
    facts.processIdentifier = processIdentifier;
    if (!isProcessIdentifier(processIdentifier))
        return Failure(planQuit(facts).error());

    const ProcessHandle process{pid_t(processIdentifier)};
    const QByteArray status = content(procFile(processIdentifier, "status"));
    std::optional<ProcessWindows> windows;
    facts.isOfThisUser = isOfThisUser(status);
    facts.isAncestor = isAncestor(processIdentifier);
    facts.executableName = executableName(processIdentifier);
    facts.processName = QString::fromUtf8(statusValues(status, "Name").join(' '));
    facts.windows = windowsOf(processIdentifier, windows);
    facts.isWindowManager = windows && windows->isOfWindowManager();
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
