#include "app/AppDelegate.h"
#include "app/CommandService.h"
#include "app/Log.h"
#include "app/OrbitaApplication.h"
#include "app/ReadySignal.h"
#include "app/ToolkitLink.h"
#include "app/TouchpadTrust.h"
#include "base/ProgramNames.h"
#include "editors/SheetItemEditors.h"
#include "editors/WidgetDialogs.h"
#include "model/DraftStore.h"
#include "model/ImageCache.h"
#include "model/ImageStore.h"
#include "model/ItemServices.h"
#include "model/MenuItemArray.h"
#include "model/Notices.h"
#include "platform/BackgroundJobs.h"
#include "platform/Directories.h"
#include "platform/Scheduler.h"
#include "platform/desktop/ApplicationIndex.h"
#include "platform/desktop/BackgroundFileLookup.h"
#include "platform/desktop/EndSignals.h"
#include "platform/desktop/FallbackHotKeyService.h"
#include "platform/desktop/FileUserDefaults.h"
#include "platform/desktop/FreedesktopAppearance.h"
#include "platform/desktop/FreedesktopNotifications.h"
#include "platform/desktop/GioUrlHandler.h"
#include "platform/desktop/GioWorkspace.h"
#include "platform/desktop/LogindSessionState.h"
#include "platform/desktop/PlasmaHotKeyService.h"
#include "platform/desktop/StartupNotifier.h"
#include "platform/evdev/EvdevTouchEventTap.h"
#include "platform/evdev/RecordedTouchEventTap.h"
#include "platform/evdev/UdevInputAccess.h"
#include "platform/x11/X11BlurBehind.h"
#include "platform/x11/X11Compositor.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11EventTaps.h"
#include "platform/x11/X11HotKeyService.h"
#include "platform/x11/X11KeyboardLayout.h"
#include "platform/x11/X11RawInput.h"
#include "platform/x11/X11RunningApplications.h"
#include "platform/x11/X11Stage.h"
#include "platform/x11/X11StartupNotifier.h"
#include "platform/x11/X11WindowManager.h"
#include "ring/AnimationClock.h"
#include "ring/RenderedPictures.h"
#include "ring/RingAccessibility.h"
#include "ring/RingWindow.h"
#include "settings/AppSettings.h"
#include "settings/triggers/TriggerMatch.h"
#include "shortcut/MASShortcutMonitors.h"
#include "shortcut/MASShortcutUserDefaultsHotKeys.h"
#include "toolkit/VXSchemeCommunicationCenter.h"

#include <QCommandLineParser>
#include <QTimer>

#include <xcb/xcb.h>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace Orbita;

/// The services of an X11 desktop, made in the order in which they need one another.
struct X11Desktop {
    X11Connection connection;
    X11WindowManager windowManager{connection};
    X11Compositor compositor{connection};
    X11Stage stage{connection, windowManager, compositor};
    X11BlurBehind blur{connection, compositor};
    X11RawInput rawInput{connection};
    X11MouseUpEventTap mouseUpTap{rawInput};
    X11OtherMouseDownEventTap otherMouseDownTap{rawInput};
    X11MouseMovedEventTap mouseMovedTap{rawInput};
    X11KeyboardLayout keyboardLayout{connection};
    X11HotKeyService grabbedHotKeys{connection, rawInput};
    PlasmaHotKeyService plasmaHotKeys{QDBusConnection::sessionBus(), keyboardLayout};
    FallbackHotKeyService hotKeys{grabbedHotKeys, plasmaHotKeys};
    GioWorkspace workspace{std::make_unique<X11StartupNotifier>(connection)};
    ApplicationIndex index;
    X11RunningApplications runningApplications{connection, windowManager, index,
                                               [this](const QString &bundle) { return workspace.icon(bundle); }};
    FreedesktopAppearance appearance;

    X11Desktop() { QObject::connect(&workspace, &Workspace::applicationsChanged, &index, &ApplicationIndex::reload); }
};

/// The touchpads of the machine, or a recording in their place.
struct Touchpads {
    explicit Touchpads(std::optional<TouchRecording> recording)
    {
        if (recording) {
            tap = std::make_unique<RecordedTouchEventTap>(std::move(*recording));
            return;
        }
        tap = std::make_unique<EvdevTouchEventTap>();
        access = std::make_unique<UdevInputAccess>();
    }
    std::unique_ptr<TouchEventTap> tap;
    std::unique_ptr<InputAccess> access; ///< null for a recording, which nobody has to allow
};

/// What the program is made of, and the rings' share of it.
struct Program {
    explicit Program(std::optional<TouchRecording> recording) : touchpads(std::move(recording))
    {
        if (touchpads.access)
            touchpadTrust.emplace(settings, *touchpads.access, session, notifications);
        else if (triggerTap(settings.gestureSettings()) != TriggerTap::Touch)
            qCWarning(lcApp, "The recording waits until a gesture on the touchpad is the trigger.");
    }

    X11Desktop desktop;
    Touchpads touchpads;
    Directories directories = Directories::standard();
    FileUserDefaults defaults{directories.configuration + QStringLiteral("/defaults.plist")};
    MASShortcutMonitors shortcutMonitors{desktop.hotKeys, desktop.keyboardLayout};
    MASShortcutUserDefaultsHotKeys shortcuts{defaults, shortcutMonitors};
    AppSettings settings{defaults,
                         {desktop.mouseUpTap, desktop.otherMouseDownTap, desktop.mouseMovedTap, *touchpads.tap,
                          desktop.stage, shortcuts}};
    FreedesktopNotifications notifications;
    Notices notices{notifications};
    LogindSessionState session;
    std::optional<TouchpadTrust> touchpadTrust;
    TimerScheduler scheduler;
    BackgroundFileLookup files{scheduler, [this](const FileLook &look) { return desktop.workspace.iconOf(look); }};
    GioUrlHandler urls{QDBusConnection::sessionBus(), scheduler, std::make_unique<NoStartupNotifier>(), {toolkitNames}};
    VXSchemeCommunicationCenter toolkit{urls, scheduler};
    ImageCache imageCache;
    ImageStore imageStore{directories.container};
    WidgetDialogs dialogs{desktop.stage};
    DraftStore drafts{directories.container};
    SheetItemEditors editors{desktop.stage, desktop.blur, dialogs, scheduler};
    ItemServices items{desktop.workspace, files,  desktop.runningApplications, toolkit, imageCache, imageStore, drafts,
                       editors,           notices};
    ToolkitLink toolkitLink{
        {toolkit, urls, desktop.workspace, dialogs, scheduler},
        [this] { return MenuItemArray::storedEntries(directories.container, defaults); },
    };
    FrameClock clock{desktop.appearance};
    RenderedPictures pictures;
    RingWindow window{desktop.stage, desktop.blur};
    AppDelegate delegate{window,
                         {directories.container,
                          settings,
                          defaults,
                          items,
                          {desktop.stage, clock, pictures},
                          scheduler,
                          notifications,
                          session},
                         toolkitLink,
                         desktop.appearance};
};

/// Asked first, because the toolkit ends the program with a core dump where there is no display.
bool isDisplayReachable()
{
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool isReachable = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isReachable;
}

int fail(const QString &sentence)
{
    std::fprintf(stderr, "orbita: %s\n", qUtf8Printable(sentence));
    return EXIT_FAILURE;
}

/// What the command starts the program for.
struct Request {
    QString method; ///< of the instance on the bus that does the same; empty for just starting
    QString touchRecording;
    StartReason reason;
};

Request readRequest(const OrbitaApplication &application)
{
    const QCommandLineOption show(QStringLiteral("show"));
    const QCommandLineOption settings(QStringLiteral("settings"));
    const QCommandLineOption touchRecording(QStringLiteral("touch-recording"), {}, QStringLiteral("file"));
    QCommandLineParser parser;
    const QCommandLineOption service(QStringLiteral("service")); // said by the bus
    parser.addOptions({show, settings, service, touchRecording});
    parser.process(application);
    QString method;
    if (parser.isSet(show))
        method = QStringLiteral("Show");
    else if (parser.isSet(settings))
        method = QStringLiteral("ShowSettings");
    return {method, parser.value(touchRecording),
            parser.isSet(service) ? StartReason::BusActivation : StartReason::Command};
}

/// Where another instance was quicker to take the name, it does what this one was started for.
int passOn(const Request &request)
{
    if (!request.touchRecording.isEmpty())
        return fail(
            QStringLiteral("Orbita runs already; a recording can only stand for the touchpads from its start."));
    if (request.reason == StartReason::BusActivation)
        return EXIT_SUCCESS; // the bus hands its call to the instance that has the name
    const QString method = request.method.isEmpty() ? QStringLiteral("ShowSettings") : request.method;
    if (const auto failure = CommandService::callInstance(QDBusConnection::sessionBus(), method))
        return fail(*failure);
    signalReady();
    return EXIT_SUCCESS;
}

int run(OrbitaApplication &application)
{
    const Request request = readRequest(application);
    std::optional<TouchRecording> recording;
    if (!request.touchRecording.isEmpty()) {
        auto loaded = TouchRecording::load(request.touchRecording);
        if (!loaded)
            return fail(loaded.error() + u'.');
        recording = std::move(loaded).value();
    }
    CommandService commands(request.reason);
    const auto registration = commands.registerOn(QDBusConnection::sessionBus());
    if (registration == CommandService::Registration::AlreadyRunning)
        return passOn(request);
    if (registration == CommandService::Registration::NoBus)
        qCWarning(lcApp, "There is no session bus: commands and the companion program are out of reach.");

    Program program(std::move(recording));
    installRingAccessibility();
    program.delegate.follow(commands);
    const bool showsRing = request.method == QLatin1String("Show");
    if (!showsRing)
        program.delegate.listenToTriggers();
    program.delegate.applicationDidFinishLaunching(showsRing ? TakesKeyboard::No : TakesKeyboard::Yes);
    // Not before the event loop runs: until then it is not known who has the keyboard and is to get it back.
    QTimer::singleShot(0, &program.delegate, [&program, &delegate = program.delegate, &request, showsRing] {
        if (showsRing)
            delegate.showRing();
        else if (!request.method.isEmpty())
            delegate.showSettings();
        signalReady();
        QTimer::singleShot(0, &delegate, [&program, &delegate, showsRing] {
            if (showsRing)
                delegate.listenToTriggers();
            program.session.follow(QDBusConnection::systemBus(), QDBusConnection::sessionBus());
            delegate.prepareAtLeisure();
        });
    });
    EndSignals endSignals; // a session that ends sends one
    QObject::connect(&endSignals, &EndSignals::received, &application, &QApplication::quit);
    const int status = application.exec();
    program.delegate.applicationWillTerminate();
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    // Under Wayland the ring is shown through the X server that such sessions offer. What is launched must not inherit
    // that choice.
    const bool choosesPlatform = !qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (choosesPlatform)
        qputenv("QT_QPA_PLATFORM", "xcb");
    if (!isDisplayReachable())
        return fail(QStringLiteral("The X11 display cannot be reached."));
    OrbitaApplication application(argc, argv);
    if (choosesPlatform)
        qunsetenv("QT_QPA_PLATFORM");
    QApplication::setApplicationName(QStringLiteral("orbita"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orbita"));
    QApplication::setDesktopFileName(orbitaNames.bus);
    QApplication::setQuitOnLastWindowClosed(false);
    const int status = run(application);
    if (BackgroundJobs::isAnyRunning())
        std::_Exit(status);
    return status;
}
