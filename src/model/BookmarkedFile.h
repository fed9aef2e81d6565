#pragma once

#include "platform/FileLookup.h"

#include <QVariantMap>

#include <functional>
#include <optional>

namespace Orbita {

struct ItemServices;

/// A file that an entry refers to by a bookmark. What it tells is what was seen last; only making one of a path waits
/// for a disk.
class BookmarkedFile {
public:
    /// Nothing, and logged, when there is no file at \a path.
    [[nodiscard]] static std::optional<BookmarkedFile> fromPath(const QString &path, ItemServices &services);
    /// The file of the "bookmarkData" of \a dictionary, which is looked at anew in the background. Nothing, and logged,
    /// when there is no bookmark.
    [[nodiscard]] static std::optional<BookmarkedFile> fromDictionary(const QVariantMap &dictionary,
                                                                      ItemServices &services);

    [[nodiscard]] QString path() const { return known().path; }
    [[nodiscard]] bool isDirectory() const { return isPresent() && known().isDirectory; }
    [[nodiscard]] bool isPresent() const { return known().presence == KnownFile::Presence::Present; }
    /// Whether nothing speaks against opening it: it is there, or nobody has looked yet.
    [[nodiscard]] bool isAvailable() const;
    /// Whether it was removed for good, by a look that is over, and is not merely on a drive that is not mounted.
    [[nodiscard]] bool isGone() const;
    /// Whether its disk is being asked, so that nobody should wait for it.
    [[nodiscard]] bool isBeingLookedAt() const;
    /// Its picture when it was seen last; null before that.
    [[nodiscard]] Image icon() const { return known().icon; }
    /// What to call an entry called \a name: its name, and where it cannot be opened, why.
    [[nodiscard]] QString title(const QString &name) const;

    /// Looks at the file and, where it is there, calls \a action with what was seen, perhaps later. Otherwise the user
    /// is told that what is called \a name cannot be opened, and why.
    void whenPresent(const QString &name, const std::function<void(const KnownFile &)> &action) const;

    /// The stored form of an entry of the class \a className for this file; with a fresh bookmark where the old one was
    /// stale.
    [[nodiscard]] QVariantMap dictionary(const QString &className, const QString &name) const;

private:
    BookmarkedFile(QByteArray bookmark, ItemServices &services) : m_bookmark(std::move(bookmark)), m_services(services)
    {
    }
    [[nodiscard]] KnownFile known() const;

    QByteArray m_bookmark; ///< as it was stored
    std::reference_wrapper<ItemServices> m_services;
};

} // namespace Orbita
