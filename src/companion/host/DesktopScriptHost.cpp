#include "platform/Glib.h"

#include "companion/host/DesktopScriptHost.h"

#include "companion/host/ApplicationLauncher.h"
#include "companion/host/ClipboardKeeper.h"
#include "companion/host/EventWait.h"
#include "companion/host/ScriptApplications.h"
#include "companion/host/ShellScripts.h"
#include "companion/script/LineBreaks.h"
#include "platform/desktop/ApplicationIndex.h"
#include "platform/desktop/GioWorkspace.h"
#include "platform/x11/X11OwnWindow.h"
#include "platform/x11/X11RunningApplications.h"
#include "platform/x11/X11StartupNotifier.h"
#include "platform/x11/X11WindowManager.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QRandomGenerator>
#include <QStandardPaths>

#include <cstdio>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr auto patience = 5s; ///< with what a desktop does sooner or never

Failure<ScriptFailure> noDisplay()
{
    return Failure(ScriptFailure{ScriptFailure::general, u"There is no display that this could be shown on."_s});
}

QStandardPaths::StandardLocation locationOf(StandardFolder folder)
{
    switch (folder) {
    case StandardFolder::Home:
        return QStandardPaths::HomeLocation;
    case StandardFolder::Desktop:
        return QStandardPaths::DesktopLocation;
    case StandardFolder::Documents:
        return QStandardPaths::DocumentsLocation;
    case StandardFolder::Downloads:
        return QStandardPaths::DownloadLocation;
    case StandardFolder::Music:
        return QStandardPaths::MusicLocation;
    case StandardFolder::Pictures:
        return QStandardPaths::PicturesLocation;
    case StandardFolder::Movies:
        return QStandardPaths::MoviesLocation;
    case StandardFolder::Temporary:
        break;
    }
    return QStandardPaths::TempLocation;
}

/// What GLib is to send over its own connection leaves by a thread of its own.
void flushLaunches()
{
    const GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus)
        g_dbus_connection_flush_sync(bus.get(), nullptr, nullptr);
}

/// Returns when the bus has delivered what was sent to \a service before, starting that where needed: messages to one
/// receiver keep their order, and the bus forgets those of a sender that has left.
void waitForDelivery(const QString &service)
{
    constexpr auto startPatience = 25s; // the bus says earlier when a service cannot be started
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (service.isEmpty() || !bus.isConnected())
        return;
    flushLaunches();
    const QDBusMessage ping
        = QDBusMessage::createMethodCall(service, u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
    bus.call(ping, QDBus::BlockWithGui, int(std::chrono::milliseconds(startPatience).count()));
}

} // namespace

class DesktopScriptHost::Screen {
public:
    void present(QWindow &window)
    {
        xcb_connection_t *sender = toolkitConnection();
        if (sender == nullptr)
            return;
        windowManager.activate(sender, xWindow(window));
        xcb_flush(sender);
    }

    X11Connection connection;
    X11WindowManager windowManager{connection};
};

class DesktopScriptHost::Applications {
public:
    Applications(Screen &screen, const Options &options)
        : m_screen(screen),
          scripts({m_workspace, m_running, m_launcher, readInstalledApplications, options.quitApplication,
                   [this] { catchUp(); },
                   [](const QString &path) { waitForDelivery(ApplicationLauncher::busNameOf(path)); },
                   [this](const auto &condition) { return waitFor(condition, patience); }})
    {
    }

private:
    void catchUp()
    {
        waitFor([this] { return m_index.isLoaded(); }, patience);
        // Events that the server sent before its answer come with it.
        static_cast<void>(m_screen.connection.serverTime());
        QCoreApplication::processEvents();
    }

    Screen &m_screen;
    X11StartupNotifier m_notifier{m_screen.connection};
    ApplicationLauncher m_launcher{m_notifier};
    GioWorkspace m_workspace{std::make_unique<X11StartupNotifier>(m_screen.connection)};
    ApplicationIndex m_index;
    X11RunningApplications m_running{m_screen.connection, m_screen.windowManager, m_index, {}};

public:
    ScriptApplications scripts;
};

DesktopScriptHost::DesktopScriptHost(Options options)
    : m_options(std::move(options)), m_dialogs([this](QWindow &window) { screen().present(window); })
{
}

DesktopScriptHost::~DesktopScriptHost() = default;

DesktopScriptHost::Screen &DesktopScriptHost::screen()
{
    if (!m_screen)
        m_screen = std::make_unique<Screen>();
    return *m_screen;
}

ScriptApplications &DesktopScriptHost::applications()
{
    if (!m_applications)
        m_applications = std::make_unique<Applications>(screen(), m_options);
    return m_applications->scripts;
}

void DesktopScriptHost::showProblem(const ProblemReport &report)
{
    m_dialogs.showProblem(report);
}

ScriptResult<DialogReply> DesktopScriptHost::displayDialog(const DialogRequest &request)
{
    return hasDisplay() ? m_dialogs.displayDialog(request) : noDisplay();
}

ScriptResult<std::optional<QStringList>> DesktopScriptHost::chooseFromList(const ListRequest &request)
{
    return hasDisplay() ? m_dialogs.chooseFromList(request) : noDisplay();
}

ScriptResult<QStringList> DesktopScriptHost::chooseFiles(const FileRequest &request)
{
    return hasDisplay() ? m_dialogs.chooseFiles(request) : noDisplay();
}

ScriptResult<void> DesktopScriptHost::displayNotification(const QString &text, const QString &title,
                                                          const QString &subtitle)
{
    const QString body = subtitle.isEmpty() ? text : subtitle + u'\n' + text;
    m_notifications.notify(title.isEmpty() ? u"Orbita"_s : title, body);
    // The program may end right after this. Calls that wait for their answer are children of who makes them.
    waitFor([this] { return m_notifications.findChildren<QDBusPendingCallWatcher *>().isEmpty(); }, patience);
    return {};
}

ScriptResult<void> DesktopScriptHost::activate(const QString &application)
{
    return applications().activate(application);
}

ScriptResult<void> DesktopScriptHost::launch(const QString &application)
{
    return applications().launch(application);
}

ScriptResult<void> DesktopScriptHost::quit(const QString &application)
{
    return applications().quit(application);
}

ScriptResult<bool> DesktopScriptHost::isRunning(const QString &application)
{
    return applications().isRunning(application);
}

ScriptResult<void> DesktopScriptHost::makeNewDocument(const QString &application)
{
    return applications().makeNewDocument(application);
}

ScriptResult<void> DesktopScriptHost::open(const QString &application, const QStringList &paths)
{
    return applications().open(application, paths);
}

ScriptResult<void> DesktopScriptHost::openLocation(const QString &application, const QString &url)
{
    return applications().openLocation(application, url);
}

ScriptResult<void> DesktopScriptHost::reveal(const QString &path)
{
    auto shown = applications().reveal(path);
    if (shown)
        waitForDelivery(u"org.freedesktop.FileManager1"_s);
    return shown;
}

ScriptResult<QString> DesktopScriptHost::doShellScript(const QString &command)
{
    return runShellScript(command);
}

void DesktopScriptHost::delay(double seconds)
{
    waitSeconds(seconds);
}

void DesktopScriptHost::beep(int count)
{
    constexpr double spacing = 0.4; // seconds; closer ones sound as one
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            waitSeconds(spacing);
        QApplication::beep();
    }
    QCoreApplication::processEvents(); // sends what was only noted down
}

ScriptResult<void> DesktopScriptHost::say(const QString &text)
{
    return speak(text);
}

ScriptResult<QString> DesktopScriptHost::clipboard()
{
    return hasDisplay() ? clipboardText() : noDisplay();
}

ScriptResult<void> DesktopScriptHost::setClipboard(const QString &text)
{
    return hasDisplay() ? setClipboardText(text, m_options.clipboardKeeper) : noDisplay();
}

ScriptResult<QString> DesktopScriptHost::pathTo(StandardFolder folder)
{
    const QString path = QStandardPaths::writableLocation(locationOf(folder));
    if (path.isEmpty())
        return Failure(ScriptFailure{ScriptFailure::notFound, u"There is no such folder on this system."_s});
    return path;
}

QDateTime DesktopScriptHost::currentDate()
{
    return QDateTime::currentDateTime();
}

double DesktopScriptHost::randomNumber()
{
    return QRandomGenerator::global()->generateDouble();
}

void DesktopScriptHost::log(const QString &text)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(withLineFeeds(text)));
}

} // namespace Orbita
