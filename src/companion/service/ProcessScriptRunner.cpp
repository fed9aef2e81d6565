#include "companion/service/ProcessScriptRunner.h"

#include "companion/service/ShebangInterpreter.h"
#include "platform/UserNotifications.h"

#include <QFileInfo>
#include <QTemporaryFile>

#include <algorithm>

namespace Orbita {

ProcessScriptRunner::ProcessScriptRunner(QString scriptProgram, UserNotifications &notifications, QObject *parent)
    : ScriptRunner(parent), m_scriptProgram(std::move(scriptProgram)), m_notifications(notifications)
{
}

ProcessScriptRunner::~ProcessScriptRunner() = default;

void ProcessScriptRunner::run(const QString &script)
{
    const auto interpreter = interpreterOf(script);
    if (!interpreter) {
        if (QFileInfo(m_scriptProgram).isExecutable())
            start({m_scriptProgram, {}, script.toUtf8(), nullptr}, Tells::Nothing);
        else
            tell(QStringLiteral("The script cannot be run: there is no program \"%1\".").arg(m_scriptProgram));
        return;
    }
    if (const auto obstacle = obstacleOf(*interpreter))
        return tell(*obstacle);
    auto file = m_folder.write(script);
    if (!file)
        return tell(QStringLiteral("The script cannot be run: there is no room for its file."));
    QStringList arguments{file->fileName()};
    if (!interpreter->argument.isEmpty())
        arguments.prepend(interpreter->argument);
    start({interpreter->program, arguments, {}, std::move(file)}, Tells::Failure);
}

void ProcessScriptRunner::start(ScriptCommand command, Tells tells)
{
    RunningScript *script = m_scripts.emplace_back(std::make_unique<RunningScript>(std::move(command), this)).get();
    connect(script, &RunningScript::ended, this, [this, script, tells](const QString &failure) {
        if (tells == Tells::Failure && !failure.isEmpty())
            tell(failure);
        remove(script);
    });
    script->start();
    Q_EMIT runningCountChanged();
}

void ProcessScriptRunner::remove(RunningScript *script)
{
    const auto found = std::ranges::find(m_scripts, script, &std::unique_ptr<RunningScript>::get);
    found->release()->deleteLater(); // it is the one that is speaking
    m_scripts.erase(found);
    Q_EMIT runningCountChanged();
}

void ProcessScriptRunner::stopAll()
{
    for (const auto &script : m_scripts)
        script->stop();
}

void ProcessScriptRunner::tell(const QString &sentence)
{
    m_notifications.notify(QStringLiteral("Script"), sentence);
}

} // namespace Orbita
