#include "platform/Glib.h"

#include "platform/desktop/GioWorkspace.h"

#include "base/ProgramNames.h"
#include "platform/DesktopFileId.h"
#include "platform/Log.h"
#include "platform/desktop/ApplicationEntry.h"
#include "platform/desktop/CoreApplications.h"
#include "platform/desktop/DefaultApplications.h"
#include "platform/desktop/DesktopFile.h"
#include "platform/desktop/FileInfo.h"
#include "platform/desktop/FileLook.h"
#include "platform/desktop/FileManagerClient.h"
#include "platform/desktop/LaunchTrust.h"
#include "platform/desktop/Launcher.h"
#include "platform/desktop/StartupNotifier.h"
#include "platform/desktop/ThemeIcons.h"
#include "platform/desktop/Thumbnails.h"

#include <QFile>
#include <QFileInfo>
#include <QMetaMethod>
#include <QStandardPaths>

namespace Orbita {

namespace {

/// An installation is many changes, and at the first of them an entry is not complete yet.
constexpr std::chrono::milliseconds changeDelay{250};
constexpr int maximumIcons = 1024; // remembered ones; there are some hundred applications

QString thumbnailFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/thumbnails");
}

std::optional<QString> pathOf(GDesktopAppInfo *application)
{
    const char *path = application ? g_desktop_app_info_get_filename(application) : nullptr;
    return path ? std::optional(QFile::decodeName(path)) : std::nullopt;
}

} // namespace

GioWorkspace::GioWorkspace(std::unique_ptr<StartupNotifier> notifier, QObject *parent)
    : Workspace(parent),
      m_notifier(std::move(notifier)),
      m_icons(std::make_unique<ThemeIcons>()),
      m_thumbnails(std::make_unique<Thumbnails>(thumbnailFolder())),
      m_fileManager(std::make_unique<FileManagerClient>()),
      m_applicationIcons(maximumIcons)
{
    Q_ASSERT(m_notifier);
    m_changeTimer.setSingleShot(true);
    m_changeTimer.setInterval(changeDelay);
    connect(&m_changeTimer, &QTimer::timeout, this, &GioWorkspace::reportChange);
    connect(m_fileManager.get(), &FileManagerClient::refused, this, [this](const QString &path) {
        const QString folder = QFileInfo(path).isDir() ? path : QFileInfo(path).path();
        if (!openWithDefault(folder))
            qCWarning(lcPlatform) << "There is no file manager to show" << path;
    });
}

GioWorkspace::~GioWorkspace()
{
    if (m_monitor) {
        g_signal_handlers_disconnect_by_data(m_monitor, &m_changeTimer);
        g_object_unref(m_monitor);
    }
}

Result<void, Workspace::Error> GioWorkspace::launchApplication(const QString &path)
{
    const auto application = applicationEntry(path);
    return application ? launch(application.value().get(), {}, *m_notifier) : Failure(application.error());
}

Result<void, Workspace::Error> GioWorkspace::openUrl(const QUrl &url)
{
    if (url.isLocalFile())
        return openFile(url.toLocalFile());
    const auto application = schemeHandler(url.scheme());
    if (!application)
        return Failure(Error::NoApplication);
    return launch(application.get(), {url.toString(QUrl::FullyEncoded)}, *m_notifier);
}

Result<void, Workspace::Error> GioWorkspace::openFile(const QString &path)
{
    if (!QFileInfo::exists(path))
        return Failure(Error::Missing);
    if (!isLaunchable(path))
        return openWithDefault(path);
    const auto program = trustedProgram(path);
    return program ? launchApplication(*program) : Failure(Error::Untrusted);
}

Result<void, Workspace::Error> GioWorkspace::openWithDefault(const QString &path)
{
    const auto application = defaultApplicationForType(contentType(path));
    if (!application)
        return Failure(Error::NoApplication);
    return launch(application.get(), {fileUri(path)}, *m_notifier);
}

Result<void, Workspace::Error> GioWorkspace::openFile(const QString &path, const QString &applicationPath)
{
    if (!QFileInfo::exists(path))
        return Failure(Error::Missing);
    const auto application = applicationEntry(applicationPath);
    if (!application)
        return Failure(application.error());
    return launch(application.value().get(), {fileUri(path)}, *m_notifier);
}

Result<void, Workspace::Error> GioWorkspace::showInFileManager(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return Failure(Error::Missing);
    if (m_fileManager->show(info.absoluteFilePath(), m_notifier->token()))
        return {};
    return openWithDefault(info.isDir() ? path : info.path());
}

QString GioWorkspace::displayName(const QString &path) const
{
    return isLaunchable(path) ? applicationLook(path).name : fileDisplayName(path);
}

Image GioWorkspace::icon(const QString &path) const
{
    if (const Image *known = m_applicationIcons.object(path))
        return *known;
    const Image found = iconOf(readFileLook(path));
    // Only changes in the applications folders are heard of, and only once somebody follows them.
    if (m_monitor && !desktopFileId(path).isEmpty())
        m_applicationIcons.insert(path, new Image(found));
    return found;
}

Image GioWorkspace::iconOf(const FileLook &look) const
{
    const Image icon = m_icons->icon(look.iconNames);
    return look.timeOfChange != 0 ? m_thumbnails->icon(look.path, look.timeOfChange, icon) : icon;
}

std::optional<QString> GioWorkspace::defaultApplicationForFile(const QString &path) const
{
    return pathOf(defaultApplicationForType(contentType(path)).get());
}

QStringList GioWorkspace::applicationsForFile(const QString &path) const
{
    QStringList paths;
    for (const auto &application : applicationsForType(contentType(path))) {
        if (const auto own = pathOf(application.get()))
            paths << *own;
    }
    return paths;
}

std::optional<QString> GioWorkspace::defaultApplicationForScheme(const QString &scheme) const
{
    return pathOf(schemeHandler(scheme).get());
}

std::optional<QString> GioWorkspace::coreApplication(const QString &name) const
{
    if (!m_coreApplications) {
        auto *self = const_cast<GioWorkspace *>(this);
        self->m_coreApplications
            = std::make_unique<CoreApplications>(CoreApplications::bundledTable(), &CoreApplications::lookUp);
        self->startMonitoring(); // what is remembered must not outlive an installation
    }
    return m_coreApplications->find(name);
}

void GioWorkspace::connectNotify(const QMetaMethod &signal)
{
    if (signal == QMetaMethod::fromSignal(&Workspace::applicationsChanged))
        QMetaObject::invokeMethod(this, &GioWorkspace::startMonitoring, Qt::QueuedConnection);
}

void GioWorkspace::startMonitoring()
{
    if (!m_monitor) {
        m_monitor = g_app_info_monitor_get();
        const auto changed = +[](QTimer *timer) { timer->start(); };
        g_signal_connect_swapped(m_monitor, "changed", G_CALLBACK(changed), &m_changeTimer);
    }
    // GIO watches the applications folders only from a look-up until their next change.
    const GObjectPointer<GDesktopAppInfo> any(g_desktop_app_info_new(orbitaNames.desktopId().toUtf8().constData()));
}

void GioWorkspace::reportChange()
{
    m_icons->clear();
    m_applicationIcons.clear();
    if (m_coreApplications)
        m_coreApplications->clear();
    startMonitoring();
    Q_EMIT applicationsChanged();
}

} // namespace Orbita
