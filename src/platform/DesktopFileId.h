#pragma once

#include <QString>
#include <QStringList>

namespace Orbita {

/// The XDG applications folders. The first one's files stand in front of the second one's, and so on.
[[nodiscard]] QStringList applicationsFolders();

/// The desktop file id of \a path ("kde4-konsole.desktop" for kde4/konsole.desktop) when it lies in one of \a folders;
/// otherwise empty. No file is looked at.
[[nodiscard]] QString desktopFileId(const QString &path, const QStringList &folders = applicationsFolders());

/// Whether the ".desktop" file at \a path stands for the application that is installed under \a id: it has that id in
/// one of \a folders, or lies in none of them, as a copy on the desktop does, and is named by that id.
[[nodiscard]] bool standsForDesktopFileId(const QString &path, const QString &id, const QStringList &folders);
/// Likewise with the XDG applications folders, which are looked up only where the names allow it.
[[nodiscard]] bool standsForDesktopFileId(const QString &path, const QString &id);

} // namespace Orbita
