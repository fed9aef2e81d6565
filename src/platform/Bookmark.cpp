#include "platform/Bookmark.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace Orbita::Bookmark {

namespace {

constexpr quint32 magic = 0x4f724231; // "OrB1"

/// What stays the same when a file is renamed or written to.
struct Identity {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 birth = 0; ///< nanoseconds since 1970, 0 where the file system does not keep it
    friend bool operator==(const Identity &, const Identity &) = default;
};

struct Content {
    Identity identity;
    QByteArray path; ///< absolute, in the encoding of file names
};

std::optional<Identity> identityAt(int folder, const char *name)
{
    struct statx status = {};
    if (::statx(folder, name, AT_SYMLINK_NOFOLLOW, STATX_INO | STATX_BTIME, &status) != 0)
        return {};
    Identity identity{makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_ino, 0};
    if (status.stx_mask & STATX_BTIME)
        identity.birth = qint64(status.stx_btime.tv_sec) * 1'000'000'000 + status.stx_btime.tv_nsec;
    return identity;
}

std::optional<Content> parse(const QByteArray &bookmark)
{
    constexpr qsizetype maximumSize = PATH_MAX + 64;
    if (bookmark.size() > maximumSize)
        return {};
    QDataStream stream(bookmark);
    stream.setVersion(QDataStream::Qt_6_4);
    quint32 start = 0;
    Content content;
    stream >> start >> content.identity.device >> content.identity.inode >> content.identity.birth >> content.path;
    if (stream.status() != QDataStream::Ok || !stream.atEnd() || start != magic || !content.path.startsWith('/')
        || content.path.contains('\0'))
        return {};
    return content;
}

/// Finds the file that \a content is about under another name in its folder.
Result<QByteArray, Error> findRenamed(const Content &content)
{
    const QByteArray path = content.path.first(qMax<qsizetype>(content.path.lastIndexOf('/'), 1));
    const auto close = [](DIR *folder) { ::closedir(folder); };
    const std::unique_ptr<DIR, decltype(close)> folder(::opendir(path.constData()), close);
    if (!folder)
        return Failure(Error::Unreachable);
    errno = 0;
    while (const dirent *entry = ::readdir(folder.get())) {
        // The listing tells the inode, so that only a likely entry costs a look at the file itself.
        if (entry->d_ino == content.identity.inode
            && identityAt(::dirfd(folder.get()), entry->d_name) == content.identity)
            return path + (path.endsWith('/') ? "" : "/") + entry->d_name;
        errno = 0;
    }
    const bool isReadToItsEnd = errno == 0;
    const auto self = identityAt(::dirfd(folder.get()), ".");
    // Where a drive was mounted, its empty mount point remains.
    const bool isSameDevice = self && self->device == content.identity.device;
    return Failure(isReadToItsEnd && isSameDevice ? Error::Missing : Error::Unreachable);
}

/// Whether nothing has the name \a path, as opposed to something that cannot be seen.
bool isNameFree(const QByteArray &path)
{
    struct stat status = {};
    return ::lstat(path.constData(), &status) != 0 && errno == ENOENT;
}

} // namespace

Result<QByteArray, Error> create(const QString &path)
{
    const QByteArray absolute = QFile::encodeName(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    const std::optional<Identity> identity = identityAt(AT_FDCWD, absolute.constData());
    if (path.isEmpty() || !identity || !QFileInfo::exists(path))
        return Failure(Error::Missing);
    QByteArray bookmark;
    QDataStream stream(&bookmark, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << magic << identity->device << identity->inode << identity->birth << absolute;
    return bookmark;
}

std::optional<QString> originalPath(const QByteArray &bookmark)
{
    const std::optional<Content> content = parse(bookmark);
    return content ? std::optional(QFile::decodeName(content->path)) : std::nullopt;
}

Result<Resolved, Error> resolve(const QByteArray &bookmark)
{
    const std::optional<Content> content = parse(bookmark);
    if (!content)
        return Failure(Error::Malformed);
    if (QFileInfo::exists(QFile::decodeName(content->path))) {
        const bool isSame = identityAt(AT_FDCWD, content->path.constData()) == content->identity;
        return Resolved{QFile::decodeName(content->path), !isSame};
    }
    if (!isNameFree(content->path))
        return Failure(Error::Unreachable);
    const auto found = findRenamed(*content);
    if (!found)
        return Failure(found.error());
    const QString path = QFile::decodeName(*found);
    if (!QFileInfo::exists(path))
        return Failure(Error::Unreachable);
    return Resolved{path, true};
}

} // namespace Orbita::Bookmark
