#include "platform/desktop/DesktopFile.h"

#include "platform/BoundedRead.h"
#include "platform/DesktopFileId.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace Orbita {

namespace {

constexpr qsizetype maximumNameLength = 200; // characters; a title bubble shows fewer

QString localeText(GKeyFile *file, const char *key)
{
    const GlibPointer<char> text(g_key_file_get_locale_string(file, G_KEY_FILE_DESKTOP_GROUP, key, nullptr, nullptr));
    return QString::fromUtf8(text.get()).simplified();
}

/// The files in or below \a folder whose id is \a id: each dash in it may stand for a folder.
QStringList filesWithId(const QString &folder, const QString &id)
{
    QStringList files;
    const QString direct = folder + u'/' + id;
    if (QFileInfo::exists(direct))
        files << direct;
    for (qsizetype dash = id.indexOf(u'-', 1); dash > 0; dash = id.indexOf(u'-', dash + 1)) {
        const QString below = folder + u'/' + id.left(dash);
        if (QFileInfo(below).isDir())
            files << filesWithId(below, id.mid(dash + 1));
    }
    return files;
}

} // namespace

bool DesktopFile::isReadable(const QString &path)
{
    // Opening a pipe or a device would wait for ever.
    const QFileInfo info(path);
    return info.isFile() && info.isReadable() && info.size() <= maximumSize;
}

std::optional<DesktopFile> DesktopFile::read(const QString &path)
{
    const auto content = readRegularFile(path, maximumSize);
    if (!content)
        return std::nullopt;
    GlibPointer<GKeyFile> keyFile(g_key_file_new());
    if (!g_key_file_load_from_data(keyFile.get(), content->constData(), gsize(content->size()),
                                   G_KEY_FILE_KEEP_TRANSLATIONS, nullptr)
        || !g_key_file_has_group(keyFile.get(), G_KEY_FILE_DESKTOP_GROUP))
        return std::nullopt;
    return DesktopFile(std::move(keyFile));
}

QString DesktopFile::name() const
{
    return localeText(m_keyFile.get(), G_KEY_FILE_DESKTOP_KEY_NAME).left(maximumNameLength);
}

QString DesktopFile::icon() const
{
    return localeText(m_keyFile.get(), G_KEY_FILE_DESKTOP_KEY_ICON);
}

bool isDesktopFile(const QString &path)
{
    return path.endsWith(QLatin1String(".desktop")) && !QFileInfo(path).isDir();
}

bool isSafeToLookUp(const QString &id)
{
    const QStringList folders = applicationsFolders();
    return std::ranges::all_of(folders, [&id](const QString &folder) {
        return std::ranges::all_of(filesWithId(folder, id), &DesktopFile::isReadable);
    });
}

std::vector<InstalledDesktopFile> installedDesktopFiles()
{
    std::vector<InstalledDesktopFile> files;
    QSet<QString> taken;
    for (const QString &folder : applicationsFolders()) {
        const QDir root(folder);
        // No name filter: it would bring in the regular expressions, which take a quarter of a megabyte.
        QDirIterator walk(folder, QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
        while (walk.hasNext()) {
            const QString path = walk.next();
            const QString id = root.relativeFilePath(path).replace(u'/', u'-');
            if (!isDesktopFile(path) || taken.contains(id))
                continue;
            taken.insert(id);
            if (DesktopFile::isReadable(path))
                files.push_back({id, path});
        }
    }
    return files;
}

} // namespace Orbita
