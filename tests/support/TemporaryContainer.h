#pragma once

#include "platform/Directories.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace Orbita {

/// Folders of the program's own for one test, removed with it.
class TemporaryContainer {
public:
    TemporaryContainer();

    [[nodiscard]] const Directories &directories() const { return m_directories; }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString itemFile() const { return m_directories.container + QStringLiteral("/menuItems.plist"); }
    [[nodiscard]] QString defaultsFile() const
    {
        return m_directories.configuration + QStringLiteral("/defaults.plist");
    }

    /// Writes \a content to a file called \a name, its folders made as needed, and returns the path.
    QString write(const QString &name, const QByteArray &content) const;
    [[nodiscard]] static QByteArray read(const QString &path);

private:
    QTemporaryDir m_folder;
    Directories m_directories;
};

} // namespace Orbita
