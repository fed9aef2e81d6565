#include "platform/memory/MemoryWorkspace.h"

#include <QFileInfo>

#include <utility>

namespace Orbita {

Result<void, Workspace::Error> MemoryWorkspace::perform(const QString &action)
{
    if (const auto error = std::exchange(nextError, std::nullopt))
        return Failure(*error);
    actions.append(action);
    return {};
}

Result<void, Workspace::Error> MemoryWorkspace::launchApplication(const QString &path)
{
    return perform(QStringLiteral("launch ") + path);
}

Result<void, Workspace::Error> MemoryWorkspace::openUrl(const QUrl &url)
{
    return perform(QStringLiteral("open ") + url.toString());
}

Result<void, Workspace::Error> MemoryWorkspace::openFile(const QString &path)
{
    return perform(QStringLiteral("open ") + path);
}

Result<void, Workspace::Error> MemoryWorkspace::openFile(const QString &path, const QString &applicationPath)
{
    return perform(QStringLiteral("open %1 with %2").arg(path, applicationPath));
}

Result<void, Workspace::Error> MemoryWorkspace::showInFileManager(const QString &path)
{
    return perform(QStringLiteral("show ") + path);
}

QString MemoryWorkspace::displayName(const QString &path) const
{
    return displayNames.value(path, QFileInfo(path).completeBaseName());
}

Image MemoryWorkspace::icon(const QString &path) const
{
    ++iconRequests;
    const auto planted = icons.constFind(path);
    return planted != icons.cend() ? *planted : Image::named(QStringLiteral("Default"));
}

std::optional<QString> MemoryWorkspace::defaultApplicationForFile(const QString &path) const
{
    const QStringList handlers = fileHandlers.value(path);
    return handlers.isEmpty() || !hasDefaultHandlers ? std::nullopt : std::optional(handlers.first());
}

QStringList MemoryWorkspace::applicationsForFile(const QString &path) const
{
    return fileHandlers.value(path);
}

std::optional<QString> MemoryWorkspace::defaultApplicationForScheme(const QString &scheme) const
{
    const auto found = schemeHandlers.constFind(scheme);
    return found != schemeHandlers.cend() ? std::optional(*found) : std::nullopt;
}

std::optional<QString> MemoryWorkspace::coreApplication(const QString &name) const
{
    const auto found = coreApplications.constFind(name);
    return found != coreApplications.cend() ? std::optional(*found) : std::nullopt;
}

} // namespace Orbita
