#pragma once

#include <QString>

namespace Orbita {

/// The names by which the desktop and other programs reach one of this project's programs.
struct ProgramNames {
    QString bus;    ///< The name on the session bus.
    QString scheme; ///< The scheme of the addresses that it opens, without the colon.

    [[nodiscard]] QString desktopId() const { return bus + QStringLiteral(".desktop"); }
};

inline const ProgramNames orbitaNames{QStringLiteral("org.orbita.Orbita"), QStringLiteral("orbita-com")};
inline const ProgramNames toolkitNames{QStringLiteral("org.orbita.Toolkit"), QStringLiteral("orbita-toolkit-com")};

} // namespace Orbita
