#pragma once

#include "platform/desktop/DesktopCatalog.h"

#include <QString>

#include <optional>
#include <vector>

namespace Orbita {

/// The name of the application of the desktop file at \a path as it stands there, in no language; may be empty.
[[nodiscard]] QString untranslatedName(const QString &path);

/// The path of the application that a script calls \a name among \a installed, whatever the case of its letters.
///
/// Asked in this order, an earlier entry before a later one: what the user calls it, its untranslated name, its desktop
/// id with or without ".desktop". "Name.app" is "Name".
[[nodiscard]] std::optional<QString> applicationNamed(const QString &name, const std::vector<DesktopEntry> &installed);

} // namespace Orbita
