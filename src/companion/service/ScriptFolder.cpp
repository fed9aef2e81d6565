#include "companion/service/ScriptFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryFile>

#include <sys/stat.h>
#include <unistd.h>

namespace Orbita {

namespace {

/// Whether \a path is now a folder that is nobody else's to read or to change.
bool isPrivateFolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    mkdir(name.constData(), 0700);
    struct stat found {};
    return lstat(name.constData(), &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == getuid()
        && (found.st_mode & 077) == 0;
}

} // namespace

ScriptFolder::ScriptFolder()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    m_path = runtime + QStringLiteral("/orbita-toolkit");
    if (!runtime.startsWith(u'/') || !isPrivateFolder(m_path))
        m_path = m_temporary.emplace().path();
    QDir folder(m_path);
    for (const QString &file : folder.entryList({QStringLiteral("script-*")}, QDir::Files | QDir::Hidden))
        folder.remove(file);
}

std::unique_ptr<QTemporaryFile> ScriptFolder::write(const QString &script) const
{
    auto file = std::make_unique<QTemporaryFile>(m_path + QStringLiteral("/script-XXXXXX"));
    const QByteArray bytes = script.toUtf8();
    if (!file->open() || file->write(bytes) != bytes.size() || !file->flush())
        return nullptr;
    file->close();
    return file;
}

} // namespace Orbita
