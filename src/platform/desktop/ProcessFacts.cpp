#include "platform/desktop/ProcessFacts.h"

#include "platform/BoundedRead.h"

#include <QFile>
#include <QFileInfo>
#include <QList>

#include <unistd.h>

#include <array>
#include <climits>

namespace Orbita {

namespace {

/// More than any environment that a launcher hands on.
constexpr qint64 MaxEnvironment = 256 * 1024;

QByteArray content(const QString &path, qint64 limit)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ? readAtMost(file, limit) : QByteArray();
}

quint64 startTimeFrom(const QByteArray &stat)
{
    // The name of the program, in parentheses, may hold anything; the start is field 22, the 20th behind it.
    const auto end = stat.lastIndexOf(')');
    return end < 0 ? 0 : stat.mid(end + 2).split(' ').value(19).toULongLong();
}

QString executableOf(const QString &folder)
{
    std::array<char, PATH_MAX> target;
    const auto size
        = readlink(QFile::encodeName(folder + QLatin1String("/exe")).constData(), target.data(), target.size());
    if (size <= 0)
        return {};
    QString path = QFile::decodeName(QByteArray(target.data(), size));
    // So the kernel marks a program that was replaced, by an update for instance, while it runs.
    if (path.endsWith(QLatin1String(" (deleted)")))
        path.chop(10);
    return path;
}

QString launchedDesktopFile(const QByteArray &environment, qint64 processIdentifier)
{
    QString path;
    bool isOwn = false;
    for (const QByteArray &variable : environment.split('\0')) {
        if (variable.startsWith("GIO_LAUNCHED_DESKTOP_FILE="))
            path = QFile::decodeName(variable.mid(26));
        else if (variable.startsWith("GIO_LAUNCHED_DESKTOP_FILE_PID="))
            isOwn = variable.mid(30).toLongLong() == processIdentifier; // children inherit both variables
    }
    return isOwn ? path : QString();
}

} // namespace

ProcessFacts readProcessFacts(qint64 processIdentifier)
{
    const QString folder = QStringLiteral("/proc/%1").arg(processIdentifier);
    const QFileInfo info(folder);
    if (processIdentifier <= 0 || !info.exists() || info.ownerId() != getuid())
        return {};
    ProcessFacts facts;
    facts.processIdentifier = processIdentifier;
    facts.startTime = startTimeFrom(content(folder + QLatin1String("/stat"), 4096));
    facts.executablePath = executableOf(folder);
    facts.launchedDesktopFile
        = launchedDesktopFile(content(folder + QLatin1String("/environ"), MaxEnvironment), processIdentifier);
    return facts;
}

} // namespace Orbita
