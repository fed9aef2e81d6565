#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace Orbita::Bookmark {

enum class Error {
    Malformed,   ///< The bytes are no bookmark.
    Missing,     ///< What it stood for was removed: its folder can be read, and lies on the same device as it did.
    Unreachable, ///< Whether it is still there cannot be told: its drive is not mounted, or its folder may not be read.
};

struct Resolved {
    QString path;         ///< absolute
    bool isStale = false; ///< found under another name: a new bookmark should take this one's place
};

/// Bytes that stand for the file or folder at \a path: its path, device, inode and time of birth. A symbolic link
/// stands for itself. Error::Missing where \a path leads to nothing.
[[nodiscard]] Result<QByteArray, Error> create(const QString &path);

/// The absolute path that \a bookmark was made of; nothing for other bytes. Asks no disk.
[[nodiscard]] std::optional<QString> originalPath(const QByteArray &bookmark);

/// Finds what \a bookmark stands for: at its path, or, after a rename, by device, inode and time of birth in the
/// same folder. The time of birth, where the file system keeps one, tells a renamed file from a new one that was
/// given the inode of a removed one.
/// A path that now holds another file than at creation (an update replaced it) still resolves, and is stale. A link
/// that leads to nothing is unreachable: where it leads may come back. Waits for the disk, which may take for ever on a
/// network.
[[nodiscard]] Result<Resolved, Error> resolve(const QByteArray &bookmark);

} // namespace Orbita::Bookmark
