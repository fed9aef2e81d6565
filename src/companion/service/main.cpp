#include "base/ProgramNames.h"
#include "companion/service/AnsweringUrlHandler.h"
#include "companion/service/ApplicationQuitter.h"
#include "companion/service/Lifetime.h"
#include "companion/service/Log.h"
#include "companion/service/OrbitaPresence.h"
#include "companion/service/OwnScripts.h"
#include "companion/service/ProcessScriptRunner.h"
#include "companion/service/ToolkitService.h"
#include "platform/Directories.h"
#include "platform/Scheduler.h"
#include "platform/desktop/DesktopApplication.h"
#include "platform/desktop/EndSignals.h"
#include "platform/desktop/FreedesktopNotifications.h"
#include "toolkit/VXSchemeCommunicationCenter.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusMessage>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

using namespace Orbita;
using namespace Qt::StringLiterals;
using Sender = ToolkitService::Sender;

const QString stopScripts = QStringLiteral("stop-scripts");

int fail(const char *sentence)
{
    std::fprintf(stderr, "orbita-toolkit: %s\n", sentence);
    return EXIT_FAILURE;
}

/// The program that runs scripts lies beside this one in a build folder, and in a folder of its own when installed.
QString scriptProgram()
{
    const QString folder = QCoreApplication::applicationDirPath() + u'/';
    const QString beside = folder + u"orbita-script"_s;
    return QFileInfo::exists(beside)
        ? beside
        : QFileInfo(folder + QStringLiteral(ORBITA_LIBEXEC_FROM_BIN "/orbita-script")).absoluteFilePath();
}

/// What the companion is made of, in the order in which the parts need one another.
struct Companion {
    Companion(DesktopApplication &desktop, OrbitaPresence &presence) : application(desktop), orbita(presence) {}

    void connectAll()
    {
        center.setUrlSchemeForReceiving(toolkitNames.scheme);
        center.setUrlSchemeOfRecipient(orbitaNames.scheme);
        const auto end = [this] {
            lifetime.endSoon();
            runner.stopAll();
        };
        QObject::connect(&service, &ToolkitService::endRequested, &lifetime, end);
        QObject::connect(&signals, &EndSignals::received, &lifetime, end);
        QObject::connect(&lifetime, &Lifetime::over, qApp, &QCoreApplication::quit);
        QObject::connect(&runner, &ScriptRunner::runningCountChanged, &lifetime,
                         [this] { lifetime.setRunningScripts(runner.runningCount()); });
        QObject::connect(&orbita, &OrbitaPresence::changed, &lifetime,
                         [this] { lifetime.setOrbitaRunning(orbita.isRunning()); });
        lifetime.setOrbitaRunning(orbita.isRunning());
        QObject::connect(&application, &DesktopApplication::actionRequested, &runner, &ScriptRunner::stopAll);
        QObject::connect(&application, &DesktopApplication::opened, &service,
                         [this](const QStringList &addresses, const QString &sender) {
                             open(addresses, orbita.isOrbitas(sender) ? Sender::Orbita : Sender::Anybody);
                         });
    }
    void open(const QStringList &addresses, Sender sender)
    {
        for (const QString &address : addresses)
            service.open(address, sender);
    }

    DesktopApplication &application;
    OrbitaPresence &orbita;
    QDBusConnection bus = QDBusConnection::sessionBus();
    EndSignals signals;
    TimerScheduler scheduler;
    AnsweringUrlHandler answers{bus, orbita, scheduler};
    VXSchemeCommunicationCenter center{answers, scheduler};
    FreedesktopNotifications notifications;
    ProcessScriptRunner runner{scriptProgram(), notifications};
    QString itemsFile = Directories::standard().container + u"/menuItems.plist"_s;
    ToolkitService service{
        center, runner, {quitApplication, [this](const QString &script) { return isOwnScript(itemsFile, script); }}};
    Lifetime lifetime{scheduler};
};

/// What the instance that runs answers to a call of \a method.
QDBusMessage callInstance(const QString &method, const QVariantList &arguments)
{
    auto call = QDBusMessage::createMethodCall(toolkitNames.bus, DesktopApplication::objectPath(toolkitNames.bus),
                                               u"org.freedesktop.Application"_s, method);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    return QDBusConnection::sessionBus().call(call);
}

/// Whether \a answer says that no instance runs.
bool isNobodys(const QDBusMessage &answer)
{
    return answer.errorName() == "org.freedesktop.DBus.Error.ServiceUnknown"_L1;
}

int statusOf(const QDBusMessage &answer)
{
    if (answer.type() == QDBusMessage::ReplyMessage)
        return EXIT_SUCCESS;
    return fail(isNobodys(answer) ? "The companion is not running." : "The companion runs but did not answer.");
}

int endScripts()
{
    if (!QDBusConnection::sessionBus().isConnected())
        return fail("There is no session bus, so a running companion cannot be reached.");
    return statusOf(callInstance(u"ActivateAction"_s, {stopScripts, QVariantList(), QVariantMap()}));
}

/// Nothing when the instance that runs has ended instead of taking \a urls.
std::optional<int> handOver(const QStringList &urls)
{
    const QDBusMessage answer = callInstance(u"Open"_s, {urls, QVariantMap()});
    return isNobodys(answer) ? std::nullopt : std::optional(statusOf(answer));
}

/// Serves, or leaves \a urls to the instance that does. Nothing when that one has ended in between.
std::optional<int> tryToServe(const QStringList &urls)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    OrbitaPresence orbita(bus); // before the bus hands over what the companion was started for
    DesktopApplication application(toolkitNames.bus, {stopScripts});
    switch (application.registerOn(bus)) {
    case DesktopApplication::Registration::AlreadyRunning:
        return urls.isEmpty() ? std::optional(EXIT_SUCCESS) : handOver(urls);
    case DesktopApplication::Registration::NoBus:
        qCWarning(lcCompanion,
                  "There is no session bus: Orbita cannot be told from others, so its requests are refused.");
        break;
    case DesktopApplication::Registration::Registered:
        break;
    }
    Companion companion(application, orbita);
    companion.connectAll();
    companion.open(urls, Sender::Anybody);
    return QCoreApplication::exec();
}

int serve(const QStringList &urls)
{
    std::optional<int> status;
    while (!status)
        status = tryToServe(urls);
    return *status;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"orbita-toolkit"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(ORBITA_VERSION));
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Runs the scripts of Orbita's items, and quits applications for it.\n"
                                     "Orbita starts it when it is needed, and it ends with Orbita."_s);
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Print this help."_s);
    const QCommandLineOption version(u"version"_s, u"Print the version."_s);
    const QCommandLineOption service(u"service"_s, u"Started by the session bus; opens nothing."_s);
    const QCommandLineOption stop(stopScripts, u"End all scripts that run."_s);
    parser.addOptions({help, version, service, stop});
    parser.addPositionalArgument(u"url"_s, u"Addresses of the scheme \"%1\"."_s.arg(toolkitNames.scheme),
                                 u"[url...]"_s);
    parser.process(application);
    if (parser.isSet(help)) {
        std::fputs(qUtf8Printable(parser.helpText()), stdout);
        return EXIT_SUCCESS;
    }
    if (parser.isSet(version)) {
        std::puts("orbita-toolkit " ORBITA_VERSION);
        return EXIT_SUCCESS;
    }
    if (parser.isSet(stop))
        return endScripts();
    return serve(parser.positionalArguments());
}
