#include "platform/Workspace.h"

namespace Orbita {

bool isApplicationPath(const QString &path)
{
    return path.endsWith(QLatin1String(".desktop")) || path.endsWith(QLatin1String(".AppImage"))
        || path.contains(QLatin1String(".app"));
}

} // namespace Orbita
