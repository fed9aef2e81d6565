#pragma once

#include "platform/Glib.h"

#include "base/Result.h"
#include "platform/Workspace.h"

#include <QString>

namespace Orbita {

/// The application at \a path, ready to be launched.
///
/// A ".desktop" file of an XDG applications folder is taken by its id, so that D-Bus activation is honoured and a
/// file of the user's own in front of it counts; any other one is taken as it stands. For an AppImage, an "X.app"
/// folder or any executable file an entry is made up.
/// Error::Missing without such a file, Error::LaunchFailed when it says nothing that could be started.
[[nodiscard]] Result<GObjectPointer<GDesktopAppInfo>, Workspace::Error> applicationEntry(const QString &path);

/// What the user sees of an application.
struct ApplicationLook {
    QString name;
    QString icon; ///< name of a theme icon or an absolute path; empty when unknown
};

/// The look of the application at \a path, also when it could not be launched.
[[nodiscard]] ApplicationLook applicationLook(const QString &path);

} // namespace Orbita
