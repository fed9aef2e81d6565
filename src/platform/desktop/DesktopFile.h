#pragma once

#include "platform/Glib.h"

#include <QString>

#include <optional>
#include <vector>

namespace Orbita {

/// The text of a ".desktop" file, whether what it starts is there or not.
class DesktopFile {
public:
    static constexpr qint64 maximumSize = 1024 * 1024; ///< bytes; real ones have some ten thousand

    /// Reads the file at \a path, which may be a bundled one (":/..."). Nothing when it is no regular file, is
    /// larger than maximumSize or is no key file with a "Desktop Entry" group.
    [[nodiscard]] static std::optional<DesktopFile> read(const QString &path);

    /// Whether the file at \a path is one that is safe to hand to GLib: regular, readable and of bounded size.
    [[nodiscard]] static bool isReadable(const QString &path);

    /// The name in the user's language on one line; empty when there is none.
    [[nodiscard]] QString name() const;
    /// The name of a theme icon or an absolute path; empty when there is none.
    [[nodiscard]] QString icon() const;
    [[nodiscard]] GKeyFile *keyFile() const { return m_keyFile.get(); }

private:
    explicit DesktopFile(GlibPointer<GKeyFile> keyFile) : m_keyFile(std::move(keyFile)) {}

    GlibPointer<GKeyFile> m_keyFile;
};

/// Whether \a path names a ".desktop" file and no folder; the file need not be there.
[[nodiscard]] bool isDesktopFile(const QString &path);

/// Whether every file of the XDG applications folders that has the id \a id is safe to hand to GLib. Which of them is
/// the one in force, GLib decides, and it opens that one unchecked.
[[nodiscard]] bool isSafeToLookUp(const QString &id);

/// A file of an XDG applications folder that no other one stands in front of.
struct InstalledDesktopFile {
    QString id;
    QString path;
};

/// The files in force that are safe to hand to GLib, in no particular order. Opens none of them. Any thread.
[[nodiscard]] std::vector<InstalledDesktopFile> installedDesktopFiles();

} // namespace Orbita
