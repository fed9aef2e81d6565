#include "platform/Directories.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace Orbita {

namespace {

QString privateFolder(QStandardPaths::StandardLocation location)
{
    const QString parent = QStandardPaths::writableLocation(location);
    const QString path = parent + QStringLiteral("/orbita");
    if (QFileInfo::exists(path))
        return path;
    QDir().mkpath(parent);
    QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

} // namespace

Directories Directories::standard()
{
    return {privateFolder(QStandardPaths::GenericConfigLocation), privateFolder(QStandardPaths::GenericDataLocation)};
}

} // namespace Orbita
