#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace Orbita {

/// A file that an entry refers to: the bookmark that is stored, and where it leads now.
struct BookmarkedPath {
    QByteArray bookmarkData;
    QString path;

    /// Nothing, and logged, when there is no file at \a path.
    [[nodiscard]] static std::optional<BookmarkedPath> fromPath(const QString &path);
    /// Resolves "bookmarkData" of \a dictionary; a stale bookmark is replaced by a fresh one. Nothing, and logged with
    /// the dictionary's "class", when there is none or when it leads nowhere.
    [[nodiscard]] static std::optional<BookmarkedPath> fromDictionary(const QVariantMap &dictionary);
    /// The stored form of an entry of the class \a className for this file.
    [[nodiscard]] QVariantMap dictionary(const QString &className, const QString &name) const;
};

} // namespace Orbita
