#pragma once

#include <QByteArray>
#include <QString>

namespace Orbita {

/// Replaces the content of the file at \a path: a temporary file beside it is written, flushed to the disk and
/// renamed over it, then the folder is flushed. True on success; otherwise the old content stands.
/// A symbolic link is followed, so that what it points to is replaced and the link stays. New files get mode 0600.
[[nodiscard]] bool writeFileAtomically(const QString &path, const QByteArray &content);

/// Renames the file at \a path to "NAME.damaged-<time>" in its folder, a counter added where that name is taken.
/// Returns the new path once it is on the disk, or an empty string when the file could not be renamed; it is then left
/// untouched.
[[nodiscard]] QString setAsideDamagedFile(const QString &path);

/// As setAsideDamagedFile(), but copies, so that \a path stays as it is. The copy is on the disk before this returns:
/// what is written to \a path next cannot overtake it. Where a file that was set aside before holds the same, that one
/// is returned instead of another copy.
[[nodiscard]] QString copyAsideDamagedFile(const QString &path);

} // namespace Orbita
