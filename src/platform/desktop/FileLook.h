#pragma once

#include <QString>
#include <QStringList>

namespace Orbita {

/// What the picture of a file or application is chosen by.
struct FileLook {
    QString path;
    QStringList iconNames;   ///< of theme icons, or absolute paths; the best first
    qint64 timeOfChange = 0; ///< nanoseconds since 1970 where a thumbnail may stand for the file, else 0
    bool isDirectory = false;

    friend bool operator==(const FileLook &, const FileLook &) = default;
};

/// The look of the file or application at \a path. Waits for its disk. Any thread.
[[nodiscard]] FileLook readFileLook(const QString &path);

/// The look that a file called \a path probably has, told from its name alone. Asks no disk.
[[nodiscard]] FileLook guessFileLook(const QString &path);

} // namespace Orbita
