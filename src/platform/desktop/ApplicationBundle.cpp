#include "platform/desktop/ApplicationBundle.h"

#include "platform/desktop/DesktopFile.h"

#include <QDir>
#include <QFileInfo>

namespace Orbita {

namespace {

bool isProgram(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() && info.isExecutable();
}

QString programOf(const QDir &folder)
{
    const QString name = QFileInfo(folder.path()).completeBaseName();
    const QStringList candidates{QStringLiteral("AppRun"), name, QStringLiteral("bin/") + name,
                                 QStringLiteral("Contents/MacOS/") + name};
    for (const QString &candidate : candidates) {
        if (isProgram(folder.filePath(candidate)))
            return folder.filePath(candidate);
    }
    return {};
}

QString iconOf(const QDir &folder, const QString &desktopFile)
{
    if (QFileInfo(folder.filePath(QStringLiteral(".DirIcon"))).isFile())
        return folder.filePath(QStringLiteral(".DirIcon"));
    const auto description = DesktopFile::read(desktopFile);
    const QString name = description ? description->icon() : QString();
    if (name.isEmpty() || name.contains(u'/'))
        return {};
    for (const QString &suffix : {QStringLiteral(".svg"), QStringLiteral(".png"), QStringLiteral(".xpm")}) {
        if (QFileInfo(folder.filePath(name + suffix)).isFile())
            return folder.filePath(name + suffix);
    }
    return {};
}

} // namespace

ApplicationBundle ApplicationBundle::read(const QString &path)
{
    ApplicationBundle bundle;
    const QString clean = QDir::cleanPath(path);
    if (!QFileInfo(clean).isDir()) {
        if (isProgram(clean))
            bundle.executable = clean;
        return bundle;
    }
    if (!clean.endsWith(QLatin1String(".app")))
        return bundle;
    const QDir folder(clean);
    const QStringList descriptions = folder.entryList({QStringLiteral("*.desktop")}, QDir::Files, QDir::Name);
    bundle.executable = programOf(folder);
    if (!descriptions.isEmpty())
        bundle.desktopFile = folder.filePath(descriptions.first());
    bundle.icon = iconOf(folder, bundle.desktopFile);
    return bundle;
}

} // namespace Orbita
