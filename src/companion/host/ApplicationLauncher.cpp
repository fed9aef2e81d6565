#include "platform/Glib.h"

#include "companion/host/ApplicationLauncher.h"

#include "platform/desktop/ApplicationEntry.h"
#include "platform/desktop/DesktopFile.h"
#include "platform/desktop/Launcher.h"

#include <QFile>
#include <QFileInfo>

namespace Orbita {

namespace {

using Entry = GObjectPointer<GDesktopAppInfo>;

/// The name of the action that opens a window or document of \a application; null when it has none.
const char *newWindowAction(GDesktopAppInfo *application)
{
    const char *const *offered = g_desktop_app_info_list_actions(application);
    for (const char *action : {"new-window", "new-document", "new-empty-window"}) {
        if (g_strv_contains(offered, action))
            return action;
    }
    return nullptr;
}

/// \a application as if starting it were doing \a action; null when the action has no command of its own.
Entry entryOfAction(GDesktopAppInfo *application, const char *action)
{
    const auto file = DesktopFile::read(QFile::decodeName(g_desktop_app_info_get_filename(application)));
    if (!file)
        return {};
    const QByteArray group = QByteArray("Desktop Action ") + action;
    const GlibPointer<char> command(
        g_key_file_get_value(file->keyFile(), group.constData(), G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr));
    if (!command)
        return {};
    g_key_file_set_value(file->keyFile(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_EXEC, command.get());
    return Entry(g_desktop_app_info_new_from_keyfile(file->keyFile()));
}

/// Where the application is asked over the bus, no process is started that would have to be made independent of us.
bool isBusActivatable(GDesktopAppInfo *application)
{
    return g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE) != FALSE;
}

} // namespace

Result<void, Workspace::Error> ApplicationLauncher::openUrl(const QUrl &url, const QString &path)
{
    const auto application = applicationEntry(path);
    if (!application)
        return Failure(application.error());
    return launch(application.value().get(), {url.toString(QUrl::FullyEncoded)}, m_notifier);
}

Result<void, Workspace::Error> ApplicationLauncher::openNewWindow(const QString &path)
{
    // Only an entry with a file says what actions it has.
    const auto application = isDesktopFile(path) ? applicationEntry(path) : Failure(Workspace::Error::Unsupported);
    if (!application)
        return Failure(application.error());
    GDesktopAppInfo *info = application.value().get();
    const char *action = g_desktop_app_info_get_filename(info) ? newWindowAction(info) : nullptr;
    if (!action)
        return Failure(Workspace::Error::Unsupported);
    if (isBusActivatable(info)) {
        g_desktop_app_info_launch_action(info, action, nullptr); // does not tell whether it worked
        return {};
    }
    const Entry entry = entryOfAction(info, action);
    return entry ? launch(entry.get(), {}, m_notifier) : Failure(Workspace::Error::LaunchFailed);
}

QString ApplicationLauncher::busNameOf(const QString &path)
{
    const auto application = applicationEntry(path);
    if (!application || !isBusActivatable(application.value().get()))
        return {};
    const char *file = g_desktop_app_info_get_filename(application.value().get());
    return QFileInfo(QFile::decodeName(file)).completeBaseName();
}

} // namespace Orbita
