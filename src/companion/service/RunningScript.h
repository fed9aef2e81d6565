#pragma once

#include "companion/service/ScriptOutput.h"

#include <QByteArray>
#include <QObject>
#include <QProcess>
#include <QStringList>

#include <chrono>
#include <memory>

class QTemporaryFile;

namespace Orbita {

/// How a script is to be run.
struct ScriptCommand {
    QString program;
    QStringList arguments;
    QByteArray input;                     ///< for its standard input
    std::unique_ptr<QTemporaryFile> file; ///< the script, where it is read from a file; null otherwise
};

/// A script that runs, in a session and a process group of its own.
class RunningScript final : public QObject {
    Q_OBJECT
public:
    /// What a script that is told to end has for it.
    static constexpr std::chrono::seconds patience{3};

    explicit RunningScript(ScriptCommand command, QObject *parent = nullptr);
    /// Ends it at once where it still runs.
    ~RunningScript() override;

    /// Call once. The outcome comes with ended(), from the event loop.
    void start();
    /// Tells it, and all that it has started and that has not left its group, to end (SIGTERM), and ends what is left
    /// after \c patience.
    void stop();

Q_SIGNALS:
    /// It has ended. \a failure is one sentence for the user; empty when it has ended well or was told to.
    void ended(const QString &failure);

private:
    void takeEnd(const QString &failure);
    void conclude();
    void signalGroup(int number);
    [[nodiscard]] QString failureOf(int exitCode, QProcess::ExitStatus status);

    ScriptCommand m_command;
    QProcess m_process;
    ScriptOutput *m_output; ///< outlives this object for as long as somebody writes
    qint64 m_group = 0;     ///< 0 while it has not started
    bool m_isStopping = false;
    bool m_isKilled = false;
    bool m_hasConcluded = false;
    QString m_failure;
};

} // namespace Orbita
