#include "model/AppMenuItem.h"

#include "model/CachedIcon.h"
#include "model/ItemServices.h"
#include "model/StoredText.h"
#include "platform/Workspace.h"

#include <QFileInfo>

namespace Orbita {

namespace {

bool isDesktopFile(const QString &path)
{
    return path.endsWith(QLatin1String(".desktop"));
}

} // namespace

std::shared_ptr<AppMenuItem> AppMenuItem::fromPath(const QString &path, ItemServices &services)
{
    auto file = BookmarkedPath::fromPath(path);
    return file ? std::make_shared<AppMenuItem>(services.workspace.displayName(path), *std::move(file), services)
                : nullptr;
}

MenuItem::Pointer AppMenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    auto file = BookmarkedPath::fromDictionary(dictionary);
    return file ? std::make_shared<AppMenuItem>(storedText(dictionary, "name"), *std::move(file), services) : nullptr;
}

AppMenuItem::AppMenuItem(QString name, BookmarkedPath file, ItemServices &services)
    : ApplicationMenuItem(services), m_name(std::move(name)), m_file(std::move(file))
{
}

QString AppMenuItem::identity() const
{
    return QStringLiteral("AppMenuItem") + m_file.path;
}

Image AppMenuItem::image() const
{
    return cachedIcon(identity(), m_file.path, m_services);
}

bool AppMenuItem::representsRunningApplication(const RunningApplication &application) const
{
    // A desktop file holds no executable: it is the application when it has the same desktop file id, wherever the
    // copy lies that the user added.
    if (isDesktopFile(m_file.path))
        return application.bundlePath == m_file.path
            || (isDesktopFile(application.bundlePath)
                && QFileInfo(application.bundlePath).fileName() == QFileInfo(m_file.path).fileName());
    return application.bundlePath == m_file.path || bundleHoldsExecutable(m_file.path, application.executablePath);
}

std::optional<QVariantMap> AppMenuItem::dictionaryRepresentation() const
{
    return m_file.dictionary(QStringLiteral("AppMenuItem"), m_name);
}

} // namespace Orbita
