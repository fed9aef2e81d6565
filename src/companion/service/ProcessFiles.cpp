#include "companion/service/ProcessFiles.h"

#include "platform/BoundedRead.h"

#include <QFile>
#include <QFileInfo>

namespace Orbita::ProcessFiles {

namespace {

QString path(qint64 process, const char *name)
{
    return QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String(name));
}

QByteArray content(const QString &path)
{
    QFile file(path);
    constexpr qint64 maximum = 256 * 1024; // more than any environment that a launcher hands on
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ? readAtMost(file, maximum) : QByteArray();
}

} // namespace

QList<QByteArray> statusValues(qint64 process, const QByteArray &key)
{
    for (const QByteArray &line : content(path(process, "status")).split('\n')) {
        if (line.startsWith(key + ':'))
            return line.mid(key.size() + 1).simplified().split(' ');
    }
    return {};
}

QString executableName(qint64 process)
{
    QString name = QFileInfo(QFile::symLinkTarget(path(process, "exe"))).fileName();
    // So the kernel marks a program that was replaced, by an update for instance, while it runs.
    if (name.endsWith(QLatin1String(" (deleted)")))
        name.chop(10);
    return name;
}

QByteArray environmentValue(qint64 process, const QByteArray &variable)
{
    for (const QByteArray &line : content(path(process, "environ")).split('\0')) {
        if (line.startsWith(variable + '='))
            return line.mid(variable.size() + 1);
    }
    return {};
}

bool isOrStarted(qint64 process, qint64 descendant)
{
    while (descendant > 1 && descendant != process)
        descendant = statusValues(descendant, "PPid").value(0).toLongLong();
    return descendant == process;
}

} // namespace Orbita::ProcessFiles
