#pragma once

#include "companion/script/Coercions.h"
#include "companion/script/ScriptInterpreter.h"

#include <functional>

namespace Orbita {

/// A world that writes down what scripts do to it. Dialogs are answered with their last button, unless \c cancels.
class RecordingHost final : public ScriptHost {
public:
    ScriptResult<DialogReply> displayDialog(const DialogRequest &r) override
    {
        const QString answer = r.defaultAnswer.value_or(QStringLiteral("-"));
        note(r.isAlert ? "alert" : "dialog",
             {r.text, r.message, r.title, r.buttons.join(QLatin1Char('/')), r.defaultButton, r.cancelButton, answer,
              QString::number(r.isAnswerHidden), QString::number(r.givingUpAfter), QString::number(int(r.icon))});
        if (cancels)
            return cancelled();
        return DialogReply{r.buttons.constLast(), answer + QLatin1Char('!'), r.givingUpAfter > 0};
    }
    ScriptResult<void> displayNotification(const QString &text, const QString &title, const QString &subtitle) override
    {
        return add("notification", {text, title, subtitle});
    }
    ScriptResult<std::optional<QStringList>> chooseFromList(const ListRequest &r) override
    {
        note("list",
             {r.items.join(QLatin1Char('/')), r.title, r.prompt, r.defaultItems.join(QLatin1Char('/')), r.okButtonName,
              r.cancelButtonName, QString::number(r.allowsMultiple), QString::number(r.allowsEmpty)});
        return cancels ? std::nullopt : std::optional(r.items.last(1));
    }
    ScriptResult<QStringList> chooseFiles(const FileRequest &r) override
    {
        note(r.choosesFolders ? "folder" : "file",
             {r.prompt, r.namePatterns.join(QLatin1Char('/')), r.startFolder, QString::number(r.allowsMultiple)});
        if (cancels)
            return cancelled();
        return QStringList{QStringLiteral("/a b")};
    }
    ScriptResult<void> activate(const QString &application) override { return add("activate", {application}); }
    ScriptResult<void> launch(const QString &application) override { return add("launch", {application}); }
    ScriptResult<void> quit(const QString &application) override { return add("quit", {application}); }
    ScriptResult<bool> isRunning(const QString &application) override { return application == QLatin1String("Mail"); }
    ScriptResult<void> makeNewDocument(const QString &application) override { return add("make", {application}); }
    ScriptResult<void> open(const QString &application, const QStringList &paths) override
    {
        return add("open", {application, paths.join(QLatin1Char('/'))});
    }
    ScriptResult<void> openLocation(const QString &application, const QString &url) override
    {
        return add("location", {application, url});
    }
    ScriptResult<void> reveal(const QString &path) override { return add("reveal", {path}); }
    ScriptResult<QString> doShellScript(const QString &command) override
    {
        note("shell", {command});
        if (command == QLatin1String("false"))
            return Failure(ScriptFailure{1, QStringLiteral("It failed.")});
        return command.toUpper();
    }
    void delay(double seconds) override { note("delay", {QString::number(seconds)}); }
    void beep(int count) override { note("beep", {QString::number(count)}); }
    ScriptResult<void> say(const QString &text) override { return add("say", {text}); }
    ScriptResult<QString> clipboard() override { return QStringLiteral("clip"); }
    ScriptResult<void> setClipboard(const QString &text) override { return add("clipboard", {text}); }
    ScriptResult<QString> pathTo(StandardFolder folder) override
    {
        return folder == StandardFolder::Home ? QStringLiteral("/home/me") : QStringLiteral("/home/me/Desk");
    }
    QDateTime currentDate() override { return QDateTime(QDate(2024, 2, 29), QTime(13, 5, 9), Qt::UTC); }
    double randomNumber() override { return 0.5; }
    void log(const QString &text) override
    {
        note("log", {text});
        if (onLog)
            onLog();
    }

    bool cancels = false;
    std::function<void()> onLog;
    QStringList calls; ///< "name|argument|argument"

private:
    void note(const char *name, const QStringList &arguments)
    {
        calls.append(QLatin1String(name) + QLatin1Char('|') + arguments.join(QLatin1Char('|')));
    }
    ScriptResult<void> add(const char *name, const QStringList &arguments)
    {
        note(name, arguments);
        return {};
    }
    static Failure<ScriptFailure> cancelled()
    {
        return Failure(ScriptFailure{ScriptFailure::userCancelled, QStringLiteral("Cancelled.")});
    }
};

/// The value of \a source as a script would write it, or the sentence and number of its problem.
inline std::string outcomeOf(const QString &source, ScriptHost &host)
{
    const auto told = [](const ScriptProblem &problem) {
        return (problem.sentence() + QStringLiteral(" (%1)").arg(problem.number)).toStdString();
    };
    const auto script = readScript(source);
    if (!script)
        return told(script.error());
    const auto value = ScriptInterpreter(host).run(*script);
    return value ? describe(*value, 1000).toStdString() : told(value.error());
}

} // namespace Orbita
