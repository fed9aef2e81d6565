#include "platform/desktop/FileLook.h"

#include "platform/desktop/ApplicationEntry.h"
#include "platform/desktop/DesktopFile.h"
#include "platform/desktop/FileInfo.h"
#include "platform/desktop/LaunchTrust.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace Orbita {

namespace {

const QString applicationIcon = QStringLiteral("application-x-executable");

/// When the regular file at \a path was changed, in nanoseconds since 1970; 0 when there is none.
qint64 timeOfChange(const QString &path)
{
    constexpr qint64 nanoseconds = 1'000'000'000;
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return 0;
    return status.st_mtim.tv_sec * nanoseconds + status.st_mtim.tv_nsec;
}

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
