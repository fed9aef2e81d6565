#include "model/AppMenuItem.h"

#include "model/CachedIcon.h"
#include "model/ItemServices.h"
#include "model/StoredText.h"
#include "model/WorkspaceFailure.h"
#include "platform/DesktopFileId.h"
#include "platform/Workspace.h"

namespace Orbita {

namespace {

bool isDesktopFile(const QString &path)
{
    return path.endsWith(QLatin1String(".desktop"));
}

} // namespace

std::shared_ptr<AppMenuItem> AppMenuItem::fromPath(const QString &path, ItemServices &services)
{
    auto file = BookmarkedFile::fromPath(path, services);
    return file ? std::make_shared<AppMenuItem>(services.workspace.displayName(path), *std::move(file), services)
                : nullptr;
}

MenuItem::Pointer AppMenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    auto file = BookmarkedFile::fromDictionary(dictionary, services);
    return file ? std::make_shared<AppMenuItem>(storedText(dictionary, "name"), *std::move(file), services) : nullptr;
}

AppMenuItem::AppMenuItem(QString name, BookmarkedFile file, ItemServices &services)
    : ApplicationMenuItem(services), m_name(std::move(name)), m_file(std::move(file))
{
}

QString AppMenuItem::identity() const
{
    return QStringLiteral("AppMenuItem") + m_file.path();
}

Image AppMenuItem::image() const
{
    return cachedIcon(identity(), m_file, m_services);
}

void AppMenuItem::open()
{
    if (!activateRunning())
        m_file.whenPresent(m_name, [&workspace = m_services.workspace](const KnownFile &file) {
            launchApplication(file.path, workspace);
        });
}

void AppMenuItem::openPath(const QString &path)
{
    m_file.whenPresent(m_name, [path, &workspace = m_services.workspace](const KnownFile &file) {
        openFileWith(path, file.path, workspace);
    });
}

bool AppMenuItem::representsRunningApplication(const RunningApplication &application) const
{
    const QString own = m_file.path();
    if (application.bundlePath == own)
        return true;
    // A desktop file holds no executable: it is the application that is installed under its desktop file id.
    if (isDesktopFile(own))
        return isDesktopFile(application.bundlePath)
            && standsForDesktopFileId(own, application.bundleIdentifier + QStringLiteral(".desktop"));
    return bundleHoldsExecutable(own, application.executablePath);
}

std::optional<QVariantMap> AppMenuItem::dictionaryRepresentation() const
{
    return m_file.dictionary(QStringLiteral("AppMenuItem"), m_name);
}

} // namespace Orbita
