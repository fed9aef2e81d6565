#include "companion/service/RunningScript.h"

#include <QDir>
#include <QTemporaryFile>
#include <QTimer>

#include <csignal>
#include <cstdlib>

#include <sys/prctl.h>
#include <unistd.h>

namespace Orbita {

RunningScript::RunningScript(ScriptCommand command, QObject *parent)
    : QObject(parent), m_command(std::move(command)), m_output(new ScriptOutput(parent))
{
    m_process.setProgram(m_command.program);
    m_process.setArguments(m_command.arguments);
    m_process.setWorkingDirectory(QDir::homePath());
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    if (m_command.input.isEmpty())
        m_process.setStandardInputFile(QProcess::nullDevice());
    // Between fork and exec: nothing but system calls.
    m_process.setChildProcessModifier([parent = getpid(), output = m_output->writeEnd(ScriptOutput::Output),
                                       errors = m_output->writeEnd(ScriptOutput::Error)] {
        setsid();
        prctl(PR_SET_PDEATHSIG, SIGTERM); // should the companion crash
        if (getppid() != parent)          // it did so before that
            _exit(EXIT_FAILURE);
        dup2(output, STDOUT_FILENO);
        dup2(errors, STDERR_FILENO);
    });
    connect(&m_process, &QProcess::started, this, [this] {
        m_group = m_process.processId();
        if (m_isStopping)
            signalGroup(SIGTERM);
    });
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            takeEnd(QStringLiteral("The script could not be started: %1.").arg(m_process.errorString()));
    });
    connect(&m_process, &QProcess::finished, this,
            [this](int exitCode, QProcess::ExitStatus status) { takeEnd(failureOf(exitCode, status)); });
}

RunningScript::~RunningScript()
{
    m_process.disconnect(this);
    if (m_process.waitForStarted())
        m_group = m_process.processId();
    if (!m_hasConcluded)
        signalGroup(SIGKILL);
    m_process.waitForFinished();
    m_output->deleteWhenFinished();
}

void RunningScript::start()
{
    m_process.start();
    m_output->closeWriteEnds();
    if (!m_command.input.isEmpty()) {
        m_process.write(std::exchange(m_command.input, {}));
        m_process.closeWriteChannel();
    }
}

void RunningScript::stop()
{
    if (std::exchange(m_isStopping, true))
        return;
    signalGroup(SIGTERM);
    QTimer::singleShot(patience, this, [this] {
        signalGroup(SIGKILL);
        m_isKilled = true;
        if (m_process.state() == QProcess::NotRunning)
            conclude();
    });
}

void RunningScript::signalGroup(int number)
{
    if (m_group > 0)
        ::kill(pid_t(-m_group), number);
}

void RunningScript::takeEnd(const QString &failure)
{
    if (!m_isStopping)
        m_failure = failure;
    // What it had started may be about to end, and has as long for it as the script itself.
    const bool isGroupLeft = m_isStopping && !m_isKilled && m_group > 0 && ::kill(pid_t(-m_group), 0) == 0;
    if (!isGroupLeft)
        conclude();
}

void RunningScript::conclude()
{
    if (std::exchange(m_hasConcluded, true))
        return;
    m_command.file.reset();
    Q_EMIT ended(m_failure);
}

QString RunningScript::failureOf(int exitCode, QProcess::ExitStatus status)
{
    if (status == QProcess::NormalExit && exitCode == 0)
        return {};
    const QString line = m_output->lastErrorLine();
    if (!line.isEmpty())
        return QStringLiteral("The script ended with an error: %1").arg(line);
    if (status == QProcess::CrashExit)
        return QStringLiteral("The script was ended by a signal.");
    return QStringLiteral("The script ended with the status %1.").arg(exitCode);
}

} // namespace Orbita
