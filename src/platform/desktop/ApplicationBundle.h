#pragma once

#include <QString>

namespace Orbita {

/// What an application that is no ".desktop" file is made of. Each part may be missing (empty).
///
/// A file that may be executed, an AppImage for instance, is started as it is. A folder "X.app" is started by the first
/// executable file among "AppRun", "X", "bin/X" and "Contents/MacOS/X" in it; the first ".desktop" file at its top, by
/// name, describes it, and ".DirIcon" or the file that the description's icon names at its top is its icon.
struct ApplicationBundle {
    QString executable;
    QString desktopFile;
    QString icon;

    [[nodiscard]] static ApplicationBundle read(const QString &path);
};

} // namespace Orbita
