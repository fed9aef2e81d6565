#include "platform/Glib.h"

#include "platform/desktop/GioUrlHandler.h"

#include "platform/Log.h"
#include "platform/Scheduler.h"
#include "platform/desktop/ApplicationClient.h"
#include "platform/desktop/DefaultApplications.h"
#include "platform/desktop/Launcher.h"
#include "platform/desktop/StartupNotifier.h"

#include <QFile>

#include <algorithm>

namespace Orbita {

namespace {

/// Bytes. Linux takes 128 KiB for one argument; the rest is for what an entry puts round the address.
constexpr qsizetype maximumArgument = 120 * 1024;

QString schemeOf(const QString &url)
{
    return url.left(std::max<qsizetype>(url.indexOf(u':'), 0));
}

/// \a application as a program that its command starts, whatever the bus could do.
GObjectPointer<GDesktopAppInfo> asProgram(GDesktopAppInfo *application)
{
    const GlibPointer<GKeyFile> entry(g_key_file_new());
    const char *path = g_desktop_app_info_get_filename(application);
    if (!path || !g_key_file_load_from_file(entry.get(), path, G_KEY_FILE_NONE, nullptr))
        return {};
    g_key_file_remove_key(entry.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE, nullptr);
    return GObjectPointer<GDesktopAppInfo>(g_desktop_app_info_new_from_keyfile(entry.get()));
}

bool launchProgram(GDesktopAppInfo *application, const QStringList &urls, StartupNotifier &notifier)
{
    const auto program = asProgram(application);
    return program && launch(program.get(), urls, notifier);
}

} // namespace

GioUrlHandler::GioUrlHandler(QDBusConnection bus, Scheduler &scheduler, std::unique_ptr<StartupNotifier> notifier)
    : m_bus(std::move(bus)), m_scheduler(scheduler), m_notifier(std::move(notifier))
{
    Q_ASSERT(m_notifier);
}

GioUrlHandler::~GioUrlHandler() = default;

bool GioUrlHandler::isSchemeHandled(const QString &scheme) const
{
    return schemeHandler(scheme) != nullptr;
}

void GioUrlHandler::openUrl(const QString &url)
{
    std::shared_ptr<GDesktopAppInfo> application = schemeHandler(schemeOf(url));
    if (!application) {
        qCWarning(lcPlatform) << "No program is registered for addresses of the scheme" << schemeOf(url).left(40);
        return;
    }
    const bool isActivatable
        = g_desktop_app_info_get_boolean(application.get(), G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE);
    if (isActivatable && m_bus.isConnected()) {
        const auto start = [this, application] { return launchProgram(application.get(), {}, *m_notifier); };
        client(QFile::decodeName(g_app_info_get_id(G_APP_INFO(application.get()))))
            .open(url, m_notifier->token(), start);
        return;
    }
    if (const qsizetype size = url.toUtf8().size(); size > maximumArgument) {
        qCWarning(lcPlatform) << "An address of" << size << "bytes is too long for the command line of"
                              << g_app_info_get_name(G_APP_INFO(application.get()));
        return;
    }
    launchProgram(application.get(), {url}, *m_notifier);
}

void GioUrlHandler::flush()
{
    for (const auto &[desktopId, client] : m_clients)
        client->flush();
}

ApplicationClient &GioUrlHandler::client(const QString &desktopId)
{
    auto &client = m_clients[desktopId];
    if (!client) {
        const QLatin1String suffix(".desktop");
        Q_ASSERT(desktopId.endsWith(suffix));
        const QString name = desktopId.chopped(suffix.size());
        client = std::make_unique<ApplicationClient>(m_bus, name, m_scheduler);
    }
    return *client;
}

} // namespace Orbita
