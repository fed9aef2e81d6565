#include "companion/host/ChildProcess.h"
#include "companion/host/ClipboardKeeper.h"
#include "companion/host/DesktopScriptHost.h"
#include "companion/host/ScriptSource.h"
#include "companion/script/ScriptInterpreter.h"
#include "companion/service/ApplicationQuitter.h"

#include <QApplication>
#include <QFile>

#include <xcb/xcb.h>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

using namespace Orbita;
using DisplayState = DesktopScriptHost::DisplayState;

/// Asked first, because the toolkit ends the program with a core dump where there is no display.
DisplayState findDisplay()
{
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool isReachable = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isReachable ? DisplayState::Reachable : DisplayState::Missing;
}

/// Sets the toolkit's platform for as long as the application is made. What scripts start must not inherit the choice.
class PlatformChoice {
public:
    explicit PlatformChoice(DisplayState display)
        : m_isOurs(display == DisplayState::Missing || !qEnvironmentVariableIsSet(variable)),
          m_before(qgetenv(variable))
    {
        if (m_isOurs)
            qputenv(variable, display == DisplayState::Missing ? "offscreen" : "xcb");
    }
    ~PlatformChoice()
    {
        if (m_isOurs && m_before.isNull())
            qunsetenv(variable);
        else if (m_isOurs)
            qputenv(variable, m_before);
    }
    Q_DISABLE_COPY_MOVE(PlatformChoice)

private:
    static constexpr char variable[] = "QT_QPA_PLATFORM";
    bool m_isOurs;
    QByteArray m_before;
};

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
    const DisplayState display = findDisplay();
    std::optional<PlatformChoice> choice(display);
    QApplication application(argc, argv);
    choice.reset();
    QApplication::setApplicationName(QStringLiteral("orbita-script"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orbita"));
    QApplication::setDesktopFileName(QStringLiteral("org.orbita.Toolkit"));
    QApplication::setQuitOnLastWindowClosed(false);

    DesktopScriptHost host({display, &quitApplication, QCoreApplication::applicationFilePath()});
    const auto problem = runScript(host);
    if (problem)
        tell(*problem, display, host);
    return problem ? EXIT_FAILURE : EXIT_SUCCESS;
}
