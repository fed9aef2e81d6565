#include "companion/host/ChildProcess.h"

#include <QEventLoop>
#include <QProcess>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <sys/prctl.h>
#include <unistd.h>

namespace Orbita {

namespace {

/// The leader of the running child's group; 0 while none runs. Read by a signal handler.
std::atomic<pid_t> runningGroup{0};
static_assert(std::atomic<pid_t>::is_always_lock_free);

void killRunningGroup()
{
    if (const pid_t group = runningGroup.exchange(0); group > 0)
        ::kill(-group, SIGKILL);
}

void endByExit()
{
    killRunningGroup();
}

void endBySignal(int number)
{
    killRunningGroup();
    std::signal(number, SIG_DFL);
    ::raise(number);
}

/// Keeps the ending signals away for as long as it lives: between the start of a child and the note of its group, none
/// may come.
class SignalsHeld {
public:
    SignalsHeld()
    {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int number : {SIGTERM, SIGINT, SIGHUP})
            sigaddset(&signals, number);
        pthread_sigmask(SIG_BLOCK, &signals, &m_before);
    }
    ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    Q_DISABLE_COPY_MOVE(SignalsHeld)

private:
    sigset_t m_before;
};

/// Runs in the child between fork and exec: only async-signal-safe calls.
void becomeGroupLeader(pid_t parent)
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) // it died before it was asked to tell of that
        ::_exit(EXIT_FAILURE);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// Starts \a process and notes its group. False when it cannot be started.
bool startInGroup(QProcess &process)
{
    const SignalsHeld held;
    process.setChildProcessModifier([parent = ::getpid()] { becomeGroupLeader(parent); });
    process.start();
    const auto group = pid_t(process.processId());
    if (group > 0) {
        ::setpgid(group, group); // whoever of the two comes first
        runningGroup = group;
    }
    return process.waitForStarted(-1);
}

/// Appends what has arrived. False when that is too much.
bool take(QByteArray &bytes, const QByteArray &arrived)
{
    const bool fits = bytes.size() + arrived.size() <= maximumChildOutput;
    bytes += fits ? arrived : arrived.left(maximumChildOutput - bytes.size());
    return fits;
}

} // namespace

ChildOutcome runChild(const QString &program, const QStringList &arguments, const QByteArray &input)
{
    ChildOutcome outcome;
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    if (input.isEmpty())
        process.setStandardInputFile(QProcess::nullDevice());

    const auto takeAll = [&] {
        const bool fits = take(outcome.output, process.readAllStandardOutput());
        if (fits & take(outcome.errors, process.readAllStandardError()))
            return;
        outcome.end = ChildOutcome::End::TooMuchOutput;
        killRunningGroup();
    };
    QEventLoop loop;
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &loop, takeAll);
    QObject::connect(&process, &QProcess::readyReadStandardError, &loop, takeAll);
    QObject::connect(&process, &QProcess::finished, &loop, [&] { loop.quit(); });
    if (!startInGroup(process)) {
        runningGroup = 0;
        outcome.end = ChildOutcome::End::NotStarted;
        return outcome;
    }
    if (!input.isEmpty()) {
        process.write(input);
        process.closeWriteChannel();
    }
    if (process.state() != QProcess::NotRunning)
        loop.exec();
    runningGroup = 0;
    takeAll();
    outcome.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 128 + process.exitCode();
    return outcome;
}

void endChildrenWithProgram()
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        std::signal(number, endBySignal);
    std::atexit(endByExit);
}

} // namespace Orbita
