#pragma once

#include <QString>

namespace Orbita {

/// Whether opening \a path means starting it: it is a ".desktop" file, an AppImage or an "X.app" folder with a program.
/// A document may lie in a folder whose name looks like an application.
[[nodiscard]] bool isLaunchable(const QString &path);

/// Whether the launchable \a path may be started by opening it, as a download or an attachment must not be: it lies in
/// an XDG applications folder, or the file that would say or be what is run (the ".desktop" file, the AppImage, the
/// program in the folder) is marked executable, belongs to this user or root, and others may neither write it nor
/// replace it or a folder round it. On file systems that do not keep modes nothing is trusted.
[[nodiscard]] bool isTrusted(const QString &path);

} // namespace Orbita
