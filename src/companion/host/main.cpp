#include "base/ProgramNames.h"
#include "companion/host/ChildProcess.h"
#include "companion/host/ClipboardKeeper.h"
#include "companion/host/DesktopScriptHost.h"
#include "companion/host/PlatformChoice.h"
#include "companion/host/ScriptSource.h"
#include "companion/script/ScriptInterpreter.h"
#include "companion/service/ApplicationQuitter.h"
#include "platform/desktop/MemoryLimit.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

using namespace Orbita;
using DisplayState = DesktopScriptHost::DisplayState;

void tell(const ProblemReport &report, DisplayState display, DesktopScriptHost &host)
{
    if (display == DisplayState::Reachable)
        return host.showProblem(report);
    if (report.line > 0)
        std::fprintf(stderr, "orbita-script: line %lld: ", static_cast<long long>(report.line));
    else
        std::fputs("orbita-script: ", stderr);
    std::fprintf(stderr, "%s\n", qUtf8Printable(report.sentence));
}

/// What kept the script on standard input from running to its end; nothing when it did that or was cancelled.
std::optional<ProblemReport> runScript(DesktopScriptHost &host)
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return ProblemReport{QStringLiteral("The script cannot be read."), 0, {}, input.errorString() + u'.'};
    const auto source = readSource(input);
    if (!source)
        return ProblemReport{QStringLiteral("The script cannot be read."), 0, {}, source.error()};
    const auto script = readScript(*source);
    if (!script)
        return reportOf(script.error(), *source);
    const auto result = ScriptInterpreter(host).run(*script);
    if (result || result.error().number == ScriptFailure::userCancelled)
        return std::nullopt;
    return reportOf(result.error(), *source);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], keepClipboardArgument) == 0)
        return keepClipboard(argc, argv);
    if (argc > 1) {
        std::fputs("orbita-script: The script is read from standard input; there are no options.\n", stderr);
        return EXIT_FAILURE;
    }
    endChildrenWithProgram();
    const DisplayState display = isDisplayReachable() ? DisplayState::Reachable : DisplayState::Missing;
    std::optional<PlatformChoice> choice(display == DisplayState::Reachable);
    QApplication application(argc, argv);
    choice.reset();
    QApplication::setApplicationName(QStringLiteral("orbita-script"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orbita"));
    QApplication::setDesktopFileName(toolkitNames.bus);
    QApplication::setQuitOnLastWindowClosed(false);

    constexpr size_t scriptMemory = 2UL * 1024 * 1024 * 1024; // bytes, for values and dialogs
    limitMemory(scriptMemory);
    DesktopScriptHost host({display, &quitApplication, QCoreApplication::applicationFilePath()});
    const auto problem = runScript(host);
    if (problem)
        tell(*problem, display, host);
    return problem ? EXIT_FAILURE : EXIT_SUCCESS;
}
