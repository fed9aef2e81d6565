#pragma once

#include "platform/desktop/Glib.h"

#include <QString>

#include <optional>

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

/// The desktop file id of \a path ("kde4-konsole.desktop" for kde4/konsole.desktop) when it lies in one of the XDG
/// applications folders; otherwise empty.
[[nodiscard]] QString desktopFileId(const QString &path);

} // namespace Orbita
