#pragma once

#include "platform/Glib.h"

#include <QSettings>
#include <QStringList>

#include <memory>

namespace Orbita {

/// The names in XDG_CURRENT_DESKTOP, the most particular first.
[[nodiscard]] QStringList currentDesktops();

/// The settings of GNOME's "interface" schema that other desktops use as well; null where it is not installed.
/// Asking a GSettings for a key that its schema lacks ends the program: ask hasKey() first.
[[nodiscard]] GObjectPointer<GSettings> openInterfaceSettings();
[[nodiscard]] bool hasKey(GSettings *settings, const char *key);

/// The path of KDE's shared settings file, whether it is there or not.
[[nodiscard]] QString kdeGlobalsPath();

/// An ini-style settings file of another program, for reading; null when it is no regular file of sane size.
[[nodiscard]] std::unique_ptr<QSettings> openSettingsFile(const QString &path);

} // namespace Orbita
