#pragma once

#include <QString>

namespace Orbita {

/// What /proc tells about a process of this user.
struct ProcessFacts {
    qint64 processIdentifier = 0; ///< 0 when there is none
    quint64 startTime = 0;        ///< in clock ticks since the machine started; orders processes by age
    QString executablePath;       ///< empty when it cannot be read
    QString launchedDesktopFile;  ///< path of the desktop file that this very process was launched from, or empty

    friend bool operator==(const ProcessFacts &, const ProcessFacts &) = default;
};

/// Reads the facts of \a processIdentifier. The facts of no process when it has ended or is another user's, since a
/// number that comes from a container means nothing here and mostly names a process of the system.
[[nodiscard]] ProcessFacts readProcessFacts(qint64 processIdentifier);

} // namespace Orbita
