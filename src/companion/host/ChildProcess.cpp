#include "companion/host/ChildProcess.h"

#include "companion/host/OutputPipe.h"
#include "platform/desktop/MemoryLimit.h"

#include <QEventLoop>
#include <QProcess>
#include <QSocketNotifier>

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

/// What the child writes. The pipes are our own because they may have to outlive it.
struct ChildPipes {
    OutputPipe output;
    OutputPipe errors;

    [[nodiscard]] bool areOpen() const { return output.isOpen() && errors.isOpen(); }
    [[nodiscard]] bool areAbandoned() const { return output.isAbandoned() && errors.isAbandoned(); }
    void closeWriteEnds()
    {
        output.closeWriteEnd();
        errors.closeWriteEnd();
    }
};

/// Runs in the child between fork and exec: only async-signal-safe calls.
void becomeGroupLeader(pid_t parent, const ChildPipes &pipes)
{
    ::dup2(pipes.output.writeEnd(), STDOUT_FILENO);
    ::dup2(pipes.errors.writeEnd(), STDERR_FILENO);
    restoreMemoryLimit();
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) // it died before it was asked to tell of that
        ::_exit(EXIT_FAILURE);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// Starts \a process and notes its group. False when it cannot be started.
bool startInGroup(QProcess &process, ChildPipes &pipes)
{
    const SignalsHeld held;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setChildProcessModifier([parent = ::getpid(), &pipes] { becomeGroupLeader(parent, pipes); });
    process.start();
    pipes.closeWriteEnds();
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

/// Runs the event loop until \a process has ended, and notes what it writes meanwhile.
void readUntilEnd(QProcess &process, const ChildPipes &pipes, ChildOutcome &outcome)
{
    QEventLoop loop;
    QSocketNotifier output(pipes.output.readEnd(), QSocketNotifier::Read);
    QSocketNotifier errors(pipes.errors.readEnd(), QSocketNotifier::Read);
    const auto takeFrom = [&outcome](const OutputPipe &pipe, QByteArray &bytes, QSocketNotifier &notifier) {
        const QByteArray arrived = pipe.read();
        notifier.setEnabled(!arrived.isEmpty()); // an abandoned pipe is ready for ever
        if (take(bytes, arrived))
            return;
        outcome.end = ChildOutcome::End::TooMuchOutput;
        killRunningGroup();
    };
    QObject::connect(&output, &QSocketNotifier::activated, &loop,
                     [&] { takeFrom(pipes.output, outcome.output, output); });
    QObject::connect(&errors, &QSocketNotifier::activated, &loop,
                     [&] { takeFrom(pipes.errors, outcome.errors, errors); });
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    if (process.state() != QProcess::NotRunning)
        loop.exec();
    runningGroup = 0;
    // What it wrote last is in the pipes; what others write from now on is not waited for.
    takeFrom(pipes.output, outcome.output, output);
    takeFrom(pipes.errors, outcome.errors, errors);
}

} // namespace

ChildOutcome runChild(const QString &program, const QStringList &arguments, const QByteArray &input)
{
    ChildOutcome outcome;
    ChildPipes pipes;
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    if (input.isEmpty())
        process.setStandardInputFile(QProcess::nullDevice());
    if (!pipes.areOpen() || !startInGroup(process, pipes)) {
        runningGroup = 0;
        outcome.end = ChildOutcome::End::NotStarted;
        return outcome;
    }
    if (!input.isEmpty()) {
        process.write(input);
        process.closeWriteChannel();
    }
    readUntilEnd(process, pipes, outcome);
    outcome.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 128 + process.exitCode();
    if (outcome.end == ChildOutcome::End::Exited && !pipes.areAbandoned())
        leaveToDrain(pipes.output, pipes.errors);
    return outcome;
}

void endChildrenWithProgram()
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        std::signal(number, endBySignal);
    std::atexit(endByExit);
}

} // namespace Orbita
