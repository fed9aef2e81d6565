#pragma once

#include <QString>

namespace Orbita {

/// Where the program keeps its files. Made once at start-up and handed down, so that a test has folders of its own.
struct Directories {
    QString configuration; ///< holds defaults.plist
    QString container;     ///< application-support and library folder in one: menuItems.plist and ImageStore/

    /// $XDG_CONFIG_HOME/orbita and $XDG_DATA_HOME/orbita, created (mode 0700) when missing.
    [[nodiscard]] static Directories standard();
};

} // namespace Orbita
