// Runs a command in a desktop session of its own: a virtual screen, openbox, a message bus and an empty home.

#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    using namespace Orbita;
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Runs a command in a desktop session of its own."));
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    parser.addHelpOption();
    parser.addOption({QStringLiteral("compositor"), QStringLiteral("With picom.")});
    parser.addOption({QStringLiteral("kwin"), QStringLiteral("With kwin_x11 instead of openbox.")});
    parser.addPositionalArgument(QStringLiteral("COMMAND"), QStringLiteral("The command and its arguments."));
    parser.process(application);

    QStringList command = parser.positionalArguments();
    if (command.isEmpty())
        parser.showHelp(2);
    try {
        SessionOptions options;
        options.compositor = parser.isSet(QStringLiteral("compositor"));
        options.windowManager = parser.isSet(QStringLiteral("kwin")) ? WindowManager::KWin : WindowManager::Openbox;
        DesktopSession session(options);
        const QString name = command.takeFirst();
        QProcess process;
        process.setProcessEnvironment(session.environment());
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(name, command);
        if (!process.waitForFinished(-1))
            throw DesktopFailure(process.errorString());
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 1;
    } catch (const DesktopFailure &failure) {
        std::fprintf(stderr, "desktop-session: %s\n", failure.what());
        return 2;
    }
}
