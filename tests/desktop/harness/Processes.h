#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>


namespace Orbita {

/// A program that a test started. Ends with this object, or with the test program should that die.
class Program {
public:
    /// Starts \a program, which is a path or a name to be looked up in the PATH of \a environment.
    /// Throws DesktopFailure when it cannot be started.
    Program(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment);
    ~Program();
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    [[nodiscard]] qint64 pid() const { return m_pid; }
    [[nodiscard]] bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

    /// Complete lines of both streams, in the order in which they arrived.
    [[nodiscard]] const QStringList &lines() const { return m_lines; }

    /// Waits for a line of either stream that \a pattern matches somewhere and returns it.
    /// Lines up to it are not looked at again: waiting twice waits for two lines.
    QString waitForOutput(const QString &pattern);
    /// Waits for the end and returns the exit status, as a shell counts it: 128 and the signal for a killed one.
    int waitForExit();

    /// Asks the program to end (SIGTERM) and waits for that. Returns the exit status.
    int terminate();
    /// Ends the program at once (SIGKILL), as a crash would, and waits for that.
    void kill();

private:
    void take(QByteArray &rest, const QByteArray &bytes);

    QProcess m_process;
    qint64 m_pid = 0;
    QByteArray m_output; ///< the beginning of a line
    QByteArray m_errors;
    QStringList m_lines;
    qsizetype m_nextToMatch = 0;
};

/// Whether nothing runs under \a pid any more; an end that nobody has taken note of yet counts.
[[nodiscard]] bool hasEnded(qint64 pid);

/// Living processes whose environment has \a variable set to \a value: a program and all that descend from it.
[[nodiscard]] QList<qint64> processesWithEnvironment(const QByteArray &variable, const QByteArray &value);

} // namespace Orbita
