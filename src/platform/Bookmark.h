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

/// Bytes that stand for the file or folder at \a path: its path, device and inode. Error::Missing without one.
[[nodiscard]] Result<QByteArray, Error> create(const QString &path);

/// Finds what \a bookmark stands for: at its path, or, after a rename, by device and inode in the same folder.
/// A path that now holds another file than at creation (an update replaced it) still resolves, and is stale.
[[nodiscard]] Result<Resolved, Error> resolve(const QByteArray &bookmark);

} // namespace Orbita::Bookmark
