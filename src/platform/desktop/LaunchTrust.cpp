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
#include <sys/xattr.h>
#include <unistd.h>

namespace Orbita {

namespace {

/// File systems that keep the owner and the mode that each file was given. The others make them up, as those for
/// Windows' disks, for optical discs (a downloaded image of one, too) and for shared folders (SMB, 9p) do, or
/// somebody's program does (FUSE). An unknown one counts among them.
constexpr std::array<quint32, 22> fileSystemsWithModes{
    EXT2_SUPER_MAGIC, // ext3 and ext4 have the same
    BTRFS_SUPER_MAGIC, XFS_SUPER_MAGIC, F2FS_SUPER_MAGIC, NILFS_SUPER_MAGIC, REISERFS_SUPER_MAGIC, JFFS2_SUPER_MAGIC,
    SQUASHFS_MAGIC, EROFS_SUPER_MAGIC_V1, OVERLAYFS_SUPER_MAGIC, ECRYPTFS_SUPER_MAGIC, TMPFS_MAGIC, RAMFS_MAGIC,
    AUTOFS_SUPER_MAGIC, // folders above network homes
    NFS_SUPER_MAGIC, OCFS2_SUPER_MAGIC,
    // The rest are not in linux/magic.h.
    0x01161970, // GFS2, linux/gfs2_ondisk.h
    0x24051905, // UBIFS, fs/ubifs/ubifs.h of the kernel
    0x2fc12fc1, // ZFS, include/sys/fs/zfs.h of OpenZFS
    0x3153464a, // JFS, fs/jfs/jfs_superblock.h of the kernel
    0x61756673, // AUFS, linux/aufs_type.h of its sources
    0xca451a4e, // bcachefs, fs/bcachefs/bcachefs_format.h of its sources
};

bool keepsModes(quint32 fileSystem)
{
    return std::ranges::find(fileSystemsWithModes, fileSystem) != fileSystemsWithModes.end();
}

bool belongsTo(const TrustingUser &user, const FileFacts &file)
{
    return keepsModes(file.fileSystem) && (file.owner == user.id || file.owner == 0);
}

bool isWritableByOthers(const FileFacts &file, const TrustingUser &user)
{
    return (file.mode & S_IWOTH) || ((file.mode & S_IWGRP) && (file.hasAccessList || file.group != user.ownGroup));
}

/// The group of the user's own that systems make for each: it has their name or number, and no other members.
std::optional<gid_t> privateGroupOf(const passwd &user)
{
    const group *entry = getgrgid(user.pw_gid);
    if (!entry)
        return user.pw_gid == user.pw_uid ? std::optional(user.pw_gid) : std::nullopt;
    for (char **member = entry->gr_mem; member && *member; ++member) {
        if (std::strcmp(*member, user.pw_name) != 0)
            return std::nullopt;
    }
    const bool isOwn = user.pw_gid == user.pw_uid || std::strcmp(entry->gr_name, user.pw_name) == 0;
    return isOwn ? std::optional(user.pw_gid) : std::nullopt;
}

TrustingUser currentUser()
{
    const passwd *user = getpwuid(geteuid());
    return {geteuid(), user ? privateGroupOf(*user) : std::nullopt};
}

std::optional<FileFacts> factsOf(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    struct statfs system = {};
    if (::stat(name.constData(), &status) != 0 || ::statfs(name.constData(), &system) != 0)
        return std::nullopt;
    const bool hasAccessList = ::getxattr(name.constData(), "system.posix_acl_access", nullptr, 0) >= 0;
    return FileFacts{quint32(system.f_type), status.st_mode, status.st_uid, status.st_gid, hasAccessList};
}

/// Whether \a folder and all above it are safe. \a folder has no symbolic link in it.
bool areSafeFolders(QDir folder, const TrustingUser &user)
{
    do {
        const auto facts = factsOf(folder.path());
        if (!facts || !isSafeFolder(*facts, user))
            return false;
    } while (folder.cdUp());
    return folder.isRoot(); // otherwise the next one cannot be seen
}

} // namespace

bool isSafeFolder(const FileFacts &folder, const TrustingUser &user)
{
    // The sticky bit leaves what lies there to its owner and the folder's, and neither is a stranger.
    return S_ISDIR(folder.mode) && belongsTo(user, folder)
        && (!isWritableByOthers(folder, user) || (folder.mode & S_ISVTX));
}

bool isSafeProgram(const FileFacts &program, const TrustingUser &user)
{
    return S_ISREG(program.mode) && (program.mode & S_IXUSR) && belongsTo(user, program)
        && !isWritableByOthers(program, user);
}

bool isLaunchable(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    if (isDesktopFile(clean))
        return true;
    const bool isFolder = QFileInfo(clean).isDir();
    return clean.endsWith(QLatin1String(isFolder ? ".app" : ".AppImage"))
        && !ApplicationBundle::read(clean).executable.isEmpty();
}

std::optional<QString> trustedProgram(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    if (!desktopFileId(clean).isEmpty())
        return clean;
    const QString named = isDesktopFile(clean) ? clean : ApplicationBundle::read(clean).executable;
    const QString program = named.isEmpty() ? QString() : QFileInfo(named).canonicalFilePath();
    // What it is, an entry or a program, is told by its name, which may differ from that of a link to it.
    if (program.isEmpty() || isDesktopFile(program) != isDesktopFile(clean))
        return std::nullopt;
    if (!desktopFileId(program).isEmpty())
        return program;
    const TrustingUser user = currentUser();
    const auto facts = factsOf(program);
    const bool isTrusted = facts && isSafeProgram(*facts, user) && areSafeFolders(QFileInfo(program).dir(), user);
    return isTrusted ? std::optional(program) : std::nullopt;
}

} // namespace Orbita
