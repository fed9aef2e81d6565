#include "desktop/harness/Processes.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace Orbita {

namespace {

QByteArray readProcessFile(qint64 pid, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The fields of /proc/PID/stat from the third on, the state; empty if there is no such process.
QList<QByteArray> statusFields(qint64 pid)
{
    // The second field is the name in parentheses and may hold blanks and parentheses.
    const QByteArray status = readProcessFile(pid, "stat");
    return status.isEmpty() ? QList<QByteArray>() : status.mid(status.lastIndexOf(')') + 2).split(' ');
}

} // namespace

bool hasEnded(qint64 pid)
{
    const QByteArray state = statusFields(pid).value(0);
    return state.isEmpty() || state == "Z" || state == "X";
}

QList<qint64> processesWithEnvironment(const QByteArray &variable, const QByteArray &value)
{
    const QByteArray entry = variable + '=' + value;
    QList<qint64> found;
    for (const QString &name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        const qint64 pid = name.toLongLong();
        if (pid > 0 && pid != getpid() && readProcessFile(pid, "environ").split('\0').contains(entry))
            found += pid;
    }
    return found;
}

} // namespace Orbita
