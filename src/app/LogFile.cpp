#include "app/LogFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>

namespace Orbita {

QString logFilePath()
{
    // The rule of the XDG base directory specification; a relative path counts as none.
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::homePath() + QStringLiteral("/.local/state");
    return folder + QStringLiteral("/orbita/orbita.log");
}

int openLogFile()
{
    constexpr qint64 largest = 1024 * 1024; // bytes
    const QFileInfo file(logFilePath());
    // Opening a pipe would wait for its reader.
    if (!QDir().mkpath(file.path()) || (file.exists() && !file.isFile()))
        return -1;
    const int mode = file.size() > largest ? O_TRUNC : 0;
    return open(QFile::encodeName(file.filePath()).constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | mode, 0600);
}

} // namespace Orbita
