#include "platform/desktop/LaunchTrust.h"

#include "platform/DesktopFileId.h"
#include "platform/desktop/ApplicationBundle.h"
#include "platform/desktop/DesktopFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cstring>

#include <grp.h>
#include <linux/magic.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace Orbita {

namespace {

/// Whether the user is alone in the group \a group: it has the user's own name or number, as systems make one for each.
bool isOwnGroup(gid_t group)
{
    const passwd *user = getpwuid(geteuid());
    if (!user || user->pw_gid != group)
        return false;
    const struct group *entry = getgrgid(group);
    return group == user->pw_uid || (entry && std::strcmp(entry->gr_name, user->pw_name) == 0);
}

bool isWritableByOthers(const struct stat &status)
{
    return (status.st_mode & S_IWOTH) || ((status.st_mode & S_IWGRP) && !isOwnGroup(status.st_gid));
}

/// Whether anybody may put something else in the place of what lies in the folder \a path, or of a folder round it.
bool isReplaceableByAnybody(QDir folder)
{
    do {
        struct stat status = {};
        if (::stat(QFile::encodeName(folder.path()).constData(), &status) != 0
            || ((status.st_mode & S_IWOTH) && !(status.st_mode & S_ISVTX)))
            return true;
    } while (folder.cdUp());
    return false;
}

/// Whether the file at \a path has a mode of its own. Elsewhere all files have the one that they were mounted with.
bool hasMode(const QByteArray &path)
{
    // From linux/magic.h, and from the sources of Linux for the two systems for NTFS.
    constexpr std::array<decltype(statfs::f_type), 4> modeless{MSDOS_SUPER_MAGIC, EXFAT_SUPER_MAGIC, 0x5346544e,
                                                               0x7366746e};
    struct statfs system = {};
    return ::statfs(path.constData(), &system) == 0 && std::ranges::find(modeless, system.f_type) == modeless.end();
}

} // namespace

bool isLaunchable(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    if (isDesktopFile(clean))
        return true;
    const bool isFolder = QFileInfo(clean).isDir();
    return clean.endsWith(QLatin1String(isFolder ? ".app" : ".AppImage"))
        && !ApplicationBundle::read(clean).executable.isEmpty();
}

bool isTrusted(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    if (!desktopFileId(clean).isEmpty())
        return true;
    const QString program = isDesktopFile(clean) ? clean : ApplicationBundle::read(clean).executable;
    const QFileInfo file(QFileInfo(program).canonicalFilePath());
    const QByteArray name = QFile::encodeName(file.filePath());
    struct stat status = {};
    if (program.isEmpty() || ::stat(name.constData(), &status) != 0)
        return false;
    const bool isOurs = status.st_uid == ::geteuid() || status.st_uid == 0;
    return S_ISREG(status.st_mode) && (status.st_mode & S_IXUSR) && isOurs && !isWritableByOthers(status)
        && hasMode(name) && !isReplaceableByAnybody(file.dir());
}

} // namespace Orbita
