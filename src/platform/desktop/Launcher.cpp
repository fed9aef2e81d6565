#include "platform/desktop/Launcher.h"

#include "platform/Log.h"
#include "platform/desktop/MemoryLimit.h"
#include "platform/desktop/StartupNotifier.h"

#include <QFile>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Orbita {

namespace {

/// GIO asks the launch context for the id of an application that knows about startup notification.
struct LaunchContext {
    GAppLaunchContext parent;
    char *startupId;
};

struct LaunchContextClass {
    GAppLaunchContextClass parent;
};

G_DEFINE_TYPE(LaunchContext, launch_context, G_TYPE_APP_LAUNCH_CONTEXT)

char *startupIdOf(GAppLaunchContext *context, GAppInfo *, GList *)
{
    return g_strdup(reinterpret_cast<LaunchContext *>(context)->startupId);
}

void finalizeLaunchContext(GObject *object)
{
    g_free(reinterpret_cast<LaunchContext *>(object)->startupId);
    G_OBJECT_CLASS(launch_context_parent_class)->finalize(object);
}

void launch_context_class_init(LaunchContextClass *type)
{
    type->parent.get_startup_notify_id = startupIdOf;
    reinterpret_cast<GObjectClass *>(type)->finalize = finalizeLaunchContext;
}

void launch_context_init(LaunchContext *) {}

GObjectPointer<GAppLaunchContext> makeContext(const QByteArray &startupId, const QByteArray &token)
{
    auto *context = static_cast<LaunchContext *>(g_object_new(launch_context_get_type(), nullptr));
    if (!startupId.isEmpty())
        context->startupId = g_strdup(startupId.constData());
    // Those that we were started with ourselves have served.
    g_app_launch_context_unsetenv(&context->parent, "DESKTOP_STARTUP_ID");
    g_app_launch_context_unsetenv(&context->parent, "XDG_ACTIVATION_TOKEN");
    if (!token.isEmpty())
        g_app_launch_context_setenv(&context->parent, "XDG_ACTIVATION_TOKEN", token.constData());
    return GObjectPointer<GAppLaunchContext>(&context->parent);
}

/// Whoever reads our pipe may leave, and an application that writes to it then is killed. Files, terminals and the
/// journal's socket stay. Only async-signal-safe calls.
void leavePipes()
{
    const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
        struct stat status;
        if (null >= 0 && ::fstat(stream, &status) == 0 && S_ISFIFO(status.st_mode))
            ::dup2(null, stream);
    }
}

/// Runs in the child between fork and exec: only async-signal-safe calls.
void becomeIndependent(gpointer)
{
    leavePipes();
    restoreMemoryLimit();
    for (int number = 1; number < NSIG; ++number)
        std::signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    setsid();
}

QString text(GDesktopAppInfo *application, const char *key)
{
    const GlibPointer<char> value(g_desktop_app_info_get_string(application, key));
    return QString::fromUtf8(value.get());
}

/// Made-up entries have no file, and only a file's entry can say that it knows about startup notification.
bool knowsStartupNotification(GDesktopAppInfo *application)
{
    return g_app_info_get_id(G_APP_INFO(application)) || g_desktop_app_info_get_filename(application)
        ? g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_STARTUP_NOTIFY)
        : false;
}

Launchee launcheeOf(GDesktopAppInfo *application)
{
    GAppInfo *info = G_APP_INFO(application);
    return {QString::fromUtf8(g_app_info_get_name(info)), QFile::decodeName(g_app_info_get_executable(info)),
            QFile::decodeName(g_desktop_app_info_get_filename(application)),
            text(application, G_KEY_FILE_DESKTOP_KEY_STARTUP_WM_CLASS), text(application, G_KEY_FILE_DESKTOP_KEY_ICON)};
}

} // namespace

Result<void, Workspace::Error> launch(GDesktopAppInfo *application, const QStringList &uris, StartupNotifier &notifier)
{
    std::unique_ptr<StartupSequence> sequence;
    if (knowsStartupNotification(application))
        sequence = notifier.begin(launcheeOf(application));
    const auto context = sequence ? makeContext(sequence->id(), sequence->id()) : makeContext({}, notifier.token());

    GList *list = nullptr;
    for (const QString &uri : uris)
        list = g_list_append(list, g_strdup(uri.toUtf8().constData()));
    GlibError error;
    const bool isLaunched
        = g_desktop_app_info_launch_uris_as_manager(application, list, context.get(), G_SPAWN_SEARCH_PATH,
                                                    becomeIndependent, nullptr, nullptr, nullptr, error.out());
    g_list_free_full(list, g_free);
    if (isLaunched)
        return {};
    qCWarning(lcPlatform).noquote() << "Cannot launch" << g_app_info_get_name(G_APP_INFO(application)) << "-"
                                    << error.message();
    if (sequence)
        sequence->cancel();
    return Failure(Workspace::Error::LaunchFailed);
}

} // namespace Orbita
