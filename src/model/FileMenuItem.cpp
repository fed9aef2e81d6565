#include "model/FileMenuItem.h"

#include "model/CachedIcon.h"
#include "model/ItemServices.h"
#include "model/Log.h"
#include "model/StoredText.h"
#include "model/WorkspaceFailure.h"

#include <QCollator>

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
    auto file = BookmarkedFile::fromPath(path, services);
    return file ? std::make_shared<FileMenuItem>(services.workspace.displayName(path), *std::move(file), services)
                : nullptr;
}

MenuItem::Pointer FileMenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    auto file = BookmarkedFile::fromDictionary(dictionary, services);
    return file ? std::make_shared<FileMenuItem>(storedText(dictionary, "name"), *std::move(file), services) : nullptr;
}

FileMenuItem::FileMenuItem(QString name, BookmarkedFile file, ItemServices &services)
    : m_name(std::move(name)), m_file(std::move(file)), m_services(services)
{
}

Image FileMenuItem::image() const
{
    if (isDirectory())
        return cachedIcon(identity(), m_file, m_services);
    // A document's picture changes with what it holds, so it is not kept in the cache.
    Image icon = m_file.icon();
    icon.setSize(Image::itemSize);
    return icon;
}

void FileMenuItem::open()
{
    m_file.whenPresent(m_name, [&workspace = m_services.workspace](const KnownFile &file) {
        logFailure(file.isDirectory ? workspace.showInFileManager(file.path) : workspace.openFile(file.path),
                   QStringLiteral("%1 could not be opened").arg(forLog(file.path)));
    });
}

QStringList FileMenuItem::openWithAppPaths() const
{
    if (!m_file.isPresent() || m_file.isBeingLookedAt()) // the type is read from the file
        return {};
    const QString path = m_file.path();
    const auto byDefault = m_services.workspace.defaultApplicationForFile(path);
    QStringList others = m_services.workspace.applicationsForFile(path);
    if (!byDefault)
        return others;
    others.removeAll(*byDefault);
    return QStringList(*byDefault) + sortedByDisplayName(others, m_services.workspace);
}

void FileMenuItem::openWithAppPath(const QString &applicationPath)
{
    m_file.whenPresent(m_name, [applicationPath, &workspace = m_services.workspace](const KnownFile &file) {
        openFileWith(file.path, applicationPath, workspace);
    });
}

std::optional<QVariantMap> FileMenuItem::dictionaryRepresentation() const
{
    return m_file.dictionary(QStringLiteral("FileMenuItem"), m_name);
}

} // namespace Orbita
