#include "desktop/harness/Processes.h"
#include "desktop/harness/Wait.h"

#include <QRegularExpression>
#include <QStandardPaths>

#include <csignal>
#include <sys/prctl.h>

namespace Orbita {

namespace {

QString executablePath(const QString &program, const QProcessEnvironment &environment)
{
    if (program.contains(QLatin1Char('/')))
        return program;
    const QStringList folders = environment.value(QStringLiteral("PATH")).split(QLatin1Char(':'));
    const QString path = QStandardPaths::findExecutable(program, folders);
    if (path.isEmpty())
        throw DesktopFailure(QStringLiteral("%1 is not installed").arg(program));
    return path;
}

} // namespace

Program::Program(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment)
{
    QObject::connect(&m_process, &QProcess::readyReadStandardOutput, &m_process,
                     [this] { take(m_output, m_process.readAllStandardOutput()); });
    QObject::connect(&m_process, &QProcess::readyReadStandardError, &m_process,
                     [this] { take(m_errors, m_process.readAllStandardError()); });
    m_process.setProcessEnvironment(environment);
    m_process.setStandardInputFile(QProcess::nullDevice());
    // A test program that crashes takes the desktop down with it.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.start(executablePath(program, environment), arguments);
    if (!m_process.waitForStarted(-1))
        throw DesktopFailure(QStringLiteral("%1 cannot be started: %2").arg(program, m_process.errorString()));
    m_pid = m_process.processId();
}

Program::~Program()
{
    m_process.kill();
    m_process.waitForFinished(-1);
}

void Program::take(QByteArray &rest, const QByteArray &bytes)
{
    QList<QByteArray> lines = (rest + bytes).split('\n');
    rest = lines.takeLast();
    for (const QByteArray &line : lines)
        m_lines += QString::fromUtf8(line);
}

QString Program::waitForOutput(const QString &pattern)
{
    const QRegularExpression expression(pattern);
    QString match;
    const auto matches = [&] {
        while (match.isNull() && m_nextToMatch < m_lines.size()) {
            const QString &line = m_lines[m_nextToMatch++];
            if (expression.match(line).hasMatch())
                match = line;
        }
        if (match.isNull() && !isRunning())
            throw DesktopFailure(QStringLiteral("%1 ended without saying \"%2\":\n%3")
                                     .arg(m_process.program(), pattern, m_lines.join(QLatin1Char('\n'))));
        return !match.isNull();
    };
    waitUntil(matches, [&] {
        return QStringLiteral("%1 said \"%2\":\n%3").arg(m_process.program(), pattern, m_lines.join(QLatin1Char('\n')));
    });
    return match;
}

int Program::waitForExit()
{
    waitUntil([this] { return !isRunning(); }, m_process.program() + QStringLiteral(" ended"));
    // Qt reports the signal as the exit code of a crashed program.
    return m_process.exitStatus() == QProcess::CrashExit ? 128 + m_process.exitCode() : m_process.exitCode();
}

int Program::terminate()
{
    m_process.terminate();
    return waitForExit();
}

void Program::kill()
{
    m_process.kill();
    waitForExit();
}

} // namespace Orbita
