#pragma once

#include "platform/Glib.h"

#include <QSettings>
#include <QStringList>

#include <memory>

namespace Orbita {

/// The names in XDG_CURRENT_DESKTOP, the most particular first.
[[nodiscard]] QStringList currentDesktops();

/// The schema called \a id; null where it is not installed. Asking GSettings for one that is not ends the program.
[[nodiscard]] GlibPointer<GSettingsSchema> installedSchema(const char *id);
/// The settings of the schema called \a id, at \a path when the schema has no place of its own. Null where it is not
/// installed, when both have a place or none has, and when \a path is no path of settings ("/a/b/").
[[nodiscard]] GObjectPointer<GSettings> openSettings(const char *id, const QString &path = {});
/// The settings of GNOME's "interface" schema that other desktops use as well; null where it is not installed.
[[nodiscard]] GObjectPointer<GSettings> openInterfaceSettings();
/// Asking a GSettings for a key that its schema lacks ends the program: ask this first.
[[nodiscard]] bool hasKey(GSettings *settings, const char *key);

/// The path of KDE's shared settings file, whether it is there or not.
[[nodiscard]] QString kdeGlobalsPath();

/// An ini-style settings file of another program, for reading; null when it is no regular file of sane size.
[[nodiscard]] std::unique_ptr<QSettings> openSettingsFile(const QString &path);

} // namespace Orbita
