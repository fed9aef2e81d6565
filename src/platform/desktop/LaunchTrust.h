#pragma once

#include <QString>

#include <optional>

#include <sys/types.h>

namespace Orbita {

/// What the system says of a file or a folder.
struct FileFacts {
    quint32 fileSystem = 0; ///< the type, as statfs() gives it
    mode_t mode = 0;        ///< with the kind of file
    uid_t owner = 0;
    gid_t group = 0;
    bool hasAccessList = false; ///< then the group's rights in the mode are the most that anybody named in it has
};

/// For whom trust is judged.
struct TrustingUser {
    uid_t id = 0;
    std::optional<gid_t> ownGroup{}; ///< the group in which nobody else is, where there is one
};

/// Whether the folder \a folder keeps what lies in it for \a user: it belongs to them or root, and others may not
/// write it, or, by the sticky bit, not replace what belongs to somebody else. Modes count on file systems alone that
/// keep them; elsewhere no folder is safe.
[[nodiscard]] bool isSafeFolder(const FileFacts &folder, const TrustingUser &user);
/// Likewise for a regular file: it is marked executable, belongs to \a user or root, and others may not write it.
[[nodiscard]] bool isSafeProgram(const FileFacts &program, const TrustingUser &user);

/// Whether opening \a path means starting it: it is a ".desktop" file, an AppImage or an "X.app" folder with a program.
/// A document may lie in a folder whose name looks like an application.
[[nodiscard]] bool isLaunchable(const QString &path);

/// What is started by opening the launchable \a path; nothing where that may not be started, as a download or an
/// attachment must not be.
///
/// The answer is \a path itself where it lies in an XDG applications folder. Elsewhere it is the file that says or is
/// what is run (the ".desktop" file, the AppImage, the program in the folder) without any symbolic link on the way to
/// it; it is a safe program, and so are all the folders above. Thus nobody else can put something in its place between
/// this judgement and the start.
[[nodiscard]] std::optional<QString> trustedProgram(const QString &path);

} // namespace Orbita
