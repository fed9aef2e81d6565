#pragma once

#include "platform/desktop/shortcuts/Accelerator.h"

namespace Orbita {

/// The combinations that Xfce's settings bind to commands and for its window manager. \a files are the contents of
/// xfce4-keyboard-shortcuts.xml in the folders of the configuration, the least important first. Each property in a
/// file takes the place of that in those before it; a file that is not well-formed is left out.
[[nodiscard]] QList<Accelerator> xfceShortcuts(const QList<QByteArray> &files);

} // namespace Orbita
