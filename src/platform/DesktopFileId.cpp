#include "platform/DesktopFileId.h"

#include <QDir>
#include <QStandardPaths>

namespace Orbita {

QStringList applicationsFolders()
{
    return QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}

QString desktopFileId(const QString &path, const QStringList &folders)
{
    const QString clean = QDir::cleanPath(path);
    for (const QString &folder : folders) {
        const QString prefix = QDir::cleanPath(folder) + u'/';
        if (clean.startsWith(prefix))
            return clean.mid(prefix.size()).replace(u'/', u'-');
    }
    return {};
}

bool standsForDesktopFileId(const QString &path, const QString &id, const QStringList &folders)
{
    const QString installed = desktopFileId(path, folders);
    return id == (installed.isEmpty() ? path.section(u'/', -1) : installed);
}

bool standsForDesktopFileId(const QString &path, const QString &id)
{
    // A shown ring compares each of its entries with each application that runs.
    return id.endsWith(path.section(u'/', -1)) && standsForDesktopFileId(path, id, applicationsFolders());
}

} // namespace Orbita
