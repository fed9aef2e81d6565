#pragma once

#include <QString>
#include <QStringList>

namespace Orbita {

/// The encoded "file:" URI of \a path, whatever bytes its name has.
[[nodiscard]] QString fileUri(const QString &path);

/// The name of the file at \a path as the desktop shows it.
[[nodiscard]] QString fileDisplayName(const QString &path);

/// The names of theme icons for the file at \a path, best first, told from its name alone so that no file is opened.
[[nodiscard]] QStringList fileIconNames(const QString &path);

/// The names of theme icons for files that are called like \a path, best first. Asks no disk.
[[nodiscard]] QStringList iconNamesForFileName(const QString &path);

/// When the regular file at \a path was changed, in nanoseconds since 1970; 0 when there is none.
[[nodiscard]] qint64 timeOfChange(const QString &path);

/// The content type of the file at \a path, from its name and, where that is not enough, its first bytes.
/// Empty when there is no such file.
[[nodiscard]] QString contentType(const QString &path);

} // namespace Orbita
