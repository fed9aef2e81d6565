#pragma once

#include "platform/desktop/shortcuts/Accelerator.h"

namespace Orbita {

/// The combinations that \a content, that of KDE's kglobalshortcutsrc, binds now. What it cannot read it leaves out.
[[nodiscard]] QList<Accelerator> kdeShortcuts(const QByteArray &content);

} // namespace Orbita
