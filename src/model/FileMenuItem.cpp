#include "model/FileMenuItem.h"

#include "model/CachedIcon.h"
#include "model/ItemServices.h"
#include "model/Log.h"
#include "model/StoredText.h"
#include "model/WorkspaceFailure.h"

#include <QCollator>
#include <QFileInfo>

#include <algorithm>

namespace Orbita {

namespace {

/// \a applicationPaths by what the user calls the applications.
QStringList sortedByDisplayName(const QStringList &applicationPaths, const Workspace &workspace)
{
    struct Application {
        QString name;
        QString path;
    };
    std::vector<Application> applications; // each name is read from a file
    for (const QString &path : applicationPaths)
        applications.push_back({workspace.displayName(path), path});
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::ranges::stable_sort(applications, [&collator](const Application &a, const Application &b) {
        return collator.compare(a.name, b.name) < 0;
    });
    QStringList sorted;
    for (const Application &application : applications)
        sorted << application.path;
    return sorted;
}

} // namespace

std::shared_ptr<FileMenuItem> FileMenuItem::fromPath(const QString &path, ItemServices &services)
{
    auto file = BookmarkedPath::fromPath(path);
    return file ? std::make_shared<FileMenuItem>(services.workspace.displayName(path), *std::move(file), services)
                : nullptr;
}

MenuItem::Pointer FileMenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    auto file = BookmarkedPath::fromDictionary(dictionary);
    return file ? std::make_shared<FileMenuItem>(storedText(dictionary, "name"), *std::move(file), services) : nullptr;
}

FileMenuItem::FileMenuItem(QString name, BookmarkedPath file, ItemServices &services)
    : m_name(std::move(name)), m_file(std::move(file)), m_services(services)
{
}

bool FileMenuItem::isDirectory() const
{
    return QFileInfo(m_file.path).isDir();
}

Image FileMenuItem::image() const
{
    if (isDirectory())
        return cachedIcon(identity(), m_file.path, m_services);
    // A document's picture changes with what it holds, so the desktop is asked each time. That is cheap, and the
    // answer is the same picture as long as nothing changed.
    Image icon = m_services.workspace.icon(m_file.path);
    icon.setSize(Image::itemSize);
    return icon;
}

void FileMenuItem::open()
{
    const QFileInfo info(m_file.path);
    if (!info.exists())
        return;
    logFailure(info.isDir() ? m_services.workspace.showInFileManager(m_file.path)
                            : m_services.workspace.openFile(m_file.path),
               QStringLiteral("%1 could not be opened").arg(forLog(m_file.path)));
}

QStringList FileMenuItem::openWithAppPaths() const
{
    const auto byDefault = m_services.workspace.defaultApplicationForFile(m_file.path);
    QStringList others = m_services.workspace.applicationsForFile(m_file.path);
    if (!byDefault)
        return others;
    others.removeAll(*byDefault);
    return QStringList(*byDefault) + sortedByDisplayName(others, m_services.workspace);
}

void FileMenuItem::openWithAppPath(const QString &applicationPath)
{
    openFileWith(m_file.path, applicationPath, m_services.workspace);
}

std::optional<QVariantMap> FileMenuItem::dictionaryRepresentation() const
{
    return m_file.dictionary(QStringLiteral("FileMenuItem"), m_name);
}

} // namespace Orbita
