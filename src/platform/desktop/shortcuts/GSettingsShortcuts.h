#pragma once

#include "platform/desktop/shortcuts/Accelerator.h"

namespace Orbita {

/// The combinations that the settings of GNOME ("GNOME"), Cinnamon ("X-Cinnamon") and MATE ("MATE") bind now. Nothing
/// for any other \a desktop, or when none of its schemas is installed.
[[nodiscard]] std::optional<QList<Accelerator>> gsettingsShortcuts(const QString &desktop);

} // namespace Orbita
