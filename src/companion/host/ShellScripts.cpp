#include "companion/host/ShellScripts.h"

#include "companion/host/ChildProcess.h"
#include "companion/script/LineBreaks.h"

#include <QStandardPaths>

#include <array>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

/// Text as scripts have it: without the last line break, the others a carriage return each.
QString scriptText(const QByteArray &bytes)
{
    QString text = withCarriageReturns(QString::fromUtf8(bytes));
    if (text.endsWith(u'\r'))
        text.chop(1);
    return text;
}

ScriptFailure failureOf(const ChildOutcome &outcome)
{
    constexpr qsizetype maximumSentence = 2000; // characters of a dialog that somebody reads
    QString said = QString::fromUtf8(outcome.errors.left(4 * maximumSentence)).trimmed().left(maximumSentence);
    if (said.isEmpty())
        said = u"The command ended with the status %1."_s.arg(outcome.status);
    else if (!said.endsWith(u'.'))
        said += u'.';
    return {outcome.status, said};
}

struct SpeechProgram {
    const char *name;
    std::initializer_list<const char *> arguments; ///< before the text
};

/// The speech dispatcher speaks with the user's own voice, rate and volume.
const std::array<SpeechProgram, 3> speechPrograms{{
    {"spd-say", {"--wait", "--"}},
    {"espeak-ng", {"--"}},
    {"espeak", {"--"}},
}};

bool speakWith(const QString &program, const SpeechProgram &speech, const QString &text)
{
    QStringList arguments;
    for (const char *argument : speech.arguments)
        arguments << QString::fromLatin1(argument);
    const ChildOutcome outcome = runChild(program, arguments << text);
    return outcome.end == ChildOutcome::End::Exited && outcome.status == 0;
}

} // namespace

ScriptResult<QString> runShellScript(const QString &command)
{
    // The kernel takes no longer argument: MAX_ARG_STRLEN of linux/binfmts.h, the final NUL included.
    constexpr qsizetype maximumCommand = 128 * 1024 - 1;
    if (command.contains(QChar::Null))
        return Failure(ScriptFailure{ScriptFailure::general, u"A shell command cannot hold the character NUL."_s});
    if (command.toUtf8().size() > maximumCommand)
        return Failure(ScriptFailure{ScriptFailure::general, u"The shell command is longer than 128 KiB."_s});
    const ChildOutcome outcome = runChild(u"/bin/sh"_s, {u"-c"_s, command});
    switch (outcome.end) {
    case ChildOutcome::End::NotStarted:
        return Failure(ScriptFailure{ScriptFailure::general, u"The shell cannot be started."_s});
    case ChildOutcome::End::TooMuchOutput:
        return Failure(ScriptFailure{ScriptFailure::general, u"The command wrote more than 16 MiB and was stopped."_s});
    case ChildOutcome::End::Exited:
        break;
    }
    if (outcome.status != 0)
        return Failure(failureOf(outcome));
    return scriptText(outcome.output);
}

ScriptResult<void> speak(const QString &text)
{
    if (text.trimmed().isEmpty())
        return {};
    constexpr qsizetype maximumText = 32 * 1024; // as an argument it may have four bytes a character
    if (text.size() > maximumText)
        return Failure(ScriptFailure{ScriptFailure::general, u"The text is too long to be spoken."_s});
    QString speechless = u"No speech program is installed: neither spd-say nor espeak-ng nor espeak."_s;
    for (const SpeechProgram &speech : speechPrograms) {
        const QString program = QStandardPaths::findExecutable(QString::fromLatin1(speech.name));
        if (program.isEmpty())
            continue;
        if (speakWith(program, speech, QString(text).remove(QChar::Null)))
            return {};
        speechless = u"The speech program cannot speak: is there a sound device?"_s;
    }
    return Failure(ScriptFailure{ScriptFailure::general, speechless});
}

} // namespace Orbita
