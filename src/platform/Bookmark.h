#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

namespace Orbita::Bookmark {

enum class Error {
    Malformed, ///< The bytes are no bookmark.
    Missing,   ///< What it stood for is gone.
};

struct Resolved {
    QString path;         ///< absolute
    bool isStale = false; ///< found under another name: a new bookmark should take this one's place
};

/// Bytes that stand for the file or folder at \a path: its path, device, inode and time of birth. A symbolic link
/// stands for itself. Error::Missing where \a path leads to nothing.
[[nodiscard]] Result<QByteArray, Error> create(const QString &path);

/// Finds what \a bookmark stands for: at its path, or, after a rename, by device, inode and time of birth in the
/// same folder. The time of birth, where the file system keeps one, tells a renamed file from a new one that was
/// given the inode of a removed one.
/// A path that now holds another file than at creation (an update replaced it) still resolves, and is stale.
[[nodiscard]] Result<Resolved, Error> resolve(const QByteArray &bookmark);

} // namespace Orbita::Bookmark
