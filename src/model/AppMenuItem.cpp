#include "model/AppMenuItem.h"

#include "model/BookmarkedPath.h"
#include "model/CachedIcon.h"
#include "model/ItemServices.h"
#include "model/StoredText.h"

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
    if (!file)
        return {};
    return std::make_shared<AppMenuItem>(services.workspace.displayName(path), file->bookmarkData, file->path,
                                         services);
}

MenuItem::Pointer AppMenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    auto file = BookmarkedPath::fromDictionary(dictionary);
    if (!file)
        return {};
    return std::make_shared<AppMenuItem>(storedText(dictionary, "name"), file->bookmarkData, file->path, services);
}

AppMenuItem::AppMenuItem(QString name, QByteArray bookmarkData, QString path, ItemServices &services)
    : ApplicationMenuItem(services),
      m_name(std::move(name)),
      m_bookmarkData(std::move(bookmarkData)),
      m_path(std::move(path))
{
}

QString AppMenuItem::identity() const
{
    return QStringLiteral("AppMenuItem") + m_path;
}

Image AppMenuItem::image() const
{
    return cachedIcon(identity(), m_path, m_services);
}

bool AppMenuItem::representsRunningApplication(const RunningApplication &application) const
{
    // A desktop file holds no executable: it is the application when it has the same desktop file id, wherever the
    // copy lies that the user added.
    if (isDesktopFile(m_path))
        return application.bundlePath == m_path
            || (isDesktopFile(application.bundlePath)
                && QFileInfo(application.bundlePath).fileName() == QFileInfo(m_path).fileName());
    return application.bundlePath == m_path || bundleHoldsExecutable(m_path, application.executablePath);
}

std::optional<QVariantMap> AppMenuItem::dictionaryRepresentation() const
{
    return QVariantMap{{QStringLiteral("class"), QStringLiteral("AppMenuItem")},
                       {QStringLiteral("name"), m_name},
                       {QStringLiteral("bookmarkData"), m_bookmarkData}};
}

} // namespace Orbita
