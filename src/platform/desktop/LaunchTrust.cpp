#include "platform/desktop/LaunchTrust.h"

#include "platform/desktop/ApplicationBundle.h"
#include "platform/desktop/DesktopFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace Orbita {

bool isLaunchable(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    if (isDesktopFile(clean))
        return true;
    const bool isFolder = QFileInfo(clean).isDir();
    return clean.endsWith(QLatin1String(isFolder ? ".app" : ".AppImage"))
        && !ApplicationBundle::read(clean).executable.isEmpty();
}

bool isTrusted(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    if (!desktopFileId(clean).isEmpty())
        return true;
    const QString program = isDesktopFile(clean) ? clean : ApplicationBundle::read(clean).executable;
    struct stat status = {};
    if (program.isEmpty() || ::stat(QFile::encodeName(program).constData(), &status) != 0)
        return false;
    const bool isOurs = status.st_uid == ::geteuid() || status.st_uid == 0;
    return S_ISREG(status.st_mode) && (status.st_mode & S_IXUSR) && isOurs && !(status.st_mode & S_IWOTH);
}

} // namespace Orbita
