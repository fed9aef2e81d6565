#include "support/TemporaryContainer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Orbita {

TemporaryContainer::TemporaryContainer()
    : m_directories{m_folder.filePath(QStringLiteral("config")), m_folder.filePath(QStringLiteral("data"))}
{
    QDir().mkpath(m_directories.configuration);
    QDir().mkpath(m_directories.container);
}

QString TemporaryContainer::write(const QString &name, const QByteArray &content) const
{
    const QString path = m_folder.filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qUtf8Printable(path));
    return path;
}

QByteArray TemporaryContainer::read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace Orbita
