#pragma once

#include "companion/service/RunningScript.h"
#include "companion/service/ScriptFolder.h"
#include "companion/service/ScriptRunner.h"

#include <vector>

namespace Orbita {

class UserNotifications;

/// Runs each script in a process of its own, with the user's home as working folder.
///
/// A script whose first line begins with "#!" is run by that interpreter from a private file; any other is given to the
/// standard input of the program `orbita-script`. What they write goes to this program's standard error. What keeps a
/// script from running, and the error that one with an interpreter ends with, is told to the user; `orbita-script`
/// shows its own.
class ProcessScriptRunner final : public ScriptRunner {
    Q_OBJECT
public:
    /// \a scriptProgram is the path of `orbita-script`. \a notifications outlives the runner.
    ProcessScriptRunner(QString scriptProgram, UserNotifications &notifications, QObject *parent = nullptr);
    /// Ends all scripts at once.
    ~ProcessScriptRunner() override;

    void run(const QString &script) override;
    void stopAll() override;
    [[nodiscard]] int runningCount() const override { return int(m_scripts.size()); }

private:
    enum class Tells { Nothing, Failure };
    void start(ScriptCommand command, Tells tells);
    void remove(RunningScript *script);
    void tell(const QString &sentence);

    QString m_scriptProgram;
    UserNotifications &m_notifications;
    ScriptFolder m_folder;
    std::vector<std::unique_ptr<RunningScript>> m_scripts;
};

} // namespace Orbita
