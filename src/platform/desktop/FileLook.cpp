#include "platform/desktop/FileLook.h"

#include "platform/desktop/ApplicationEntry.h"
#include "platform/desktop/DesktopFile.h"
#include "platform/desktop/FileInfo.h"
#include "platform/desktop/LaunchTrust.h"

#include <QFileInfo>

namespace Orbita {

namespace {

const QString applicationIcon = QStringLiteral("application-x-executable");

} // namespace

FileLook readFileLook(const QString &path)
{
    FileLook look{path, {}, 0, QFileInfo(path).isDir()};
    if (isLaunchable(path)) {
        const QString own = applicationLook(path).icon;
        if (!own.isEmpty())
            look.iconNames = {own, applicationIcon};
        else if (isDesktopFile(path))
            look.iconNames = {applicationIcon};
    }
    if (look.iconNames.isEmpty()) {
        look.iconNames = fileIconNames(path);
        look.timeOfChange = timeOfChange(path);
    }
    return look;
}

FileLook guessFileLook(const QString &path)
{
    const bool isApplication = path.endsWith(QLatin1String(".desktop")) || path.endsWith(QLatin1String(".AppImage"))
        || path.endsWith(QLatin1String(".app"));
    return {path, isApplication ? QStringList(applicationIcon) : iconNamesForFileName(path), 0, false};
}

} // namespace Orbita
