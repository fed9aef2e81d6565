#include "platform/Glib.h"

#include "platform/desktop/GioUrlHandler.h"

#include "platform/Log.h"
#include "platform/Scheduler.h"
#include "platform/desktop/ApplicationClient.h"
#include "platform/desktop/DefaultApplications.h"
#include "platform/desktop/DesktopFile.h"
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

const QString entrySuffix = QStringLiteral(".desktop");

QStringList busNames(const QList<ProgramNames> &programs)
{
    QStringList names;
    for (const ProgramNames &program : programs)
        names.append(program.bus);
    return names;
}

} // namespace

/// Who opens the addresses of a scheme.
struct GioUrlHandler::Recipient {
    QString busName;                        ///< Empty where it is not called over the bus.
    std::shared_ptr<GDesktopAppInfo> entry; ///< Null where the bus alone knows it.
};

GioUrlHandler::GioUrlHandler(QDBusConnection bus, Scheduler &scheduler, std::unique_ptr<StartupNotifier> notifier,
                             QList<ProgramNames> ownPrograms)
    : m_bus(std::move(bus)),
      m_scheduler(scheduler),
      m_notifier(std::move(notifier)),
      m_ownPrograms(std::move(ownPrograms)),
      m_callableNames(m_bus, busNames(m_ownPrograms))
{
    Q_ASSERT(m_notifier);
}

GioUrlHandler::~GioUrlHandler() = default;

bool GioUrlHandler::isSchemeHandled(const QString &scheme) const
{
    return recipientOf(scheme).has_value();
}

const ProgramNames *GioUrlHandler::ownProgram(const QString &scheme) const
{
    const auto found = std::ranges::find(m_ownPrograms, scheme, &ProgramNames::scheme);
    return found != m_ownPrograms.end() ? &*found : nullptr;
}

std::optional<GioUrlHandler::Recipient> GioUrlHandler::recipientOf(const QString &scheme) const
{
    if (const ProgramNames *own = ownProgram(scheme)) {
        GObjectPointer<GDesktopAppInfo> entry;
        if (isSafeToLookUp(own->desktopId()))
            entry.reset(g_desktop_app_info_new(own->desktopId().toUtf8().constData()));
        if (entry || m_callableNames.contains(own->bus))
            return Recipient{own->bus, std::move(entry)};
    }
    auto entry = schemeHandler(scheme);
    if (!entry)
        return std::nullopt;
    QString busName;
    if (g_desktop_app_info_get_boolean(entry.get(), G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE)) {
        const QString id = QFile::decodeName(g_app_info_get_id(G_APP_INFO(entry.get())));
        Q_ASSERT(id.endsWith(entrySuffix));
        busName = id.chopped(entrySuffix.size());
    }
    return Recipient{busName, std::move(entry)};
}

void GioUrlHandler::openUrl(const QString &url)
{
    const auto recipient = recipientOf(schemeOf(url));
    if (!recipient) {
        qCWarning(lcPlatform) << "No program is registered for addresses of the scheme" << schemeOf(url).left(40);
    } else if (!recipient->busName.isEmpty() && m_bus.isConnected()) {
        const auto start
            = [this, entry = recipient->entry] { return entry && launchProgram(entry.get(), {}, *m_notifier); };
        client(recipient->busName).open(url, m_notifier->token(), start);
    } else {
        openByCommand(url, *recipient);
    }
}

void GioUrlHandler::openByCommand(const QString &url, const Recipient &recipient)
{
    const char *name = g_app_info_get_name(G_APP_INFO(recipient.entry.get()));
    const QString scheme = schemeOf(url);
    const qsizetype size = url.toUtf8().size();
    if (ownProgram(scheme) && url != scheme + u':')
        qCWarning(lcPlatform) << "A message is not sent to" << name
                              << "because only its command line could carry it, which every process can read.";
    else if (size > maximumArgument)
        qCWarning(lcPlatform) << "An address of" << size << "bytes is too long for the command line of" << name;
    else
        launchProgram(recipient.entry.get(), {url}, *m_notifier);
}

void GioUrlHandler::flush()
{
    for (const auto &[name, client] : m_clients)
        client->flush();
}

ApplicationClient &GioUrlHandler::client(const QString &busName)
{
    auto &client = m_clients[busName];
    if (!client)
        client = std::make_unique<ApplicationClient>(m_bus, busName, m_scheduler, ApplicationClient::Starts::Yes);
    return *client;
}

} // namespace Orbita
