#include "companion/host/ClipboardKeeper.h"

#include "companion/host/ChildProcess.h"
#include "companion/host/PlatformChoice.h"
#include "companion/script/LineBreaks.h"
#include "platform/BoundedRead.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype maximumText = 64 * 1024 * 1024; // bytes

/// Lets go of what would keep others waiting: they read a pipe until nobody can write to it.
void leaveSession()
{
    ::setsid();
    if (const int null = ::open("/dev/null", O_RDWR); null >= 0) {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::dup2(null, stream);
        ::close(null);
    }
}

/// Writes a byte to \a ready when \a text can be had, and goes on until it is not on the clipboard any more.
int handOut(int argc, char **argv, const QByteArray &text, int ready)
{
    leaveSession();
    const PlatformChoice choice(isDisplayReachable());
    QGuiApplication application(argc, argv);
    QClipboard &clipboard = *QGuiApplication::clipboard();
    clipboard.setText(QString::fromUtf8(text));
    if (!clipboard.ownsClipboard() || ::write(ready, "", 1) != 1)
        return EXIT_FAILURE;
    ::close(ready);
    QObject::connect(&clipboard, &QClipboard::dataChanged, &application, [&clipboard] {
        if (!clipboard.ownsClipboard())
            QCoreApplication::quit();
    });
    return QGuiApplication::exec();
}

} // namespace

ScriptResult<QString> clipboardText()
{
    QCoreApplication::processEvents(); // others may have changed it since
    const QMimeData *content = QGuiApplication::clipboard()->mimeData();
    if (!content || !content->hasText())
        return QString();
    return withCarriageReturns(content->text());
}

ScriptResult<void> setClipboardText(const QString &text, const QString &keeper)
{
    const QByteArray bytes = withLineFeeds(text).toUtf8();
    if (bytes.size() > maximumText)
        return Failure(ScriptFailure{ScriptFailure::general, u"The text is too long for the clipboard."_s});
    const ChildOutcome outcome = runChild(keeper, {QString::fromLatin1(keepClipboardArgument)}, bytes);
    if (outcome.end != ChildOutcome::End::Exited || outcome.status != 0)
        return Failure(ScriptFailure{ScriptFailure::general, u"The clipboard cannot be set."_s});
    return {};
}

int keepClipboard(int argc, char **argv)
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return EXIT_FAILURE;
    const QByteArray text = readAtMost(input, maximumText);
    int pipe[2];
    if (::pipe2(pipe, O_CLOEXEC) != 0)
        return EXIT_FAILURE;
    const pid_t keeper = ::fork();
    if (keeper < 0)
        return EXIT_FAILURE;
    if (keeper == 0) {
        ::close(pipe[0]);
        return handOut(argc, argv, text, pipe[1]);
    }
    ::close(pipe[1]);
    char byte = 0;
    return ::read(pipe[0], &byte, 1) == 1 ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace Orbita
