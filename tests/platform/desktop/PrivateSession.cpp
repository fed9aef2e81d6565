#include "PrivateSession.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

namespace Orbita {

namespace PrivateSession {

QString path(const QString &name)
{
    return QDir::homePath() + u'/' + name;
}

QString write(const QString &name, const QByteArray &content)
{
    const QString file = path(name);
    QDir().mkpath(QFileInfo(file).path());
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size())
        qFatal("cannot write %s", qUtf8Printable(file));
    return file;
}

QString install(const QString &id, const QByteArray &content)
{
    return write(QStringLiteral("data/applications/") + id, content);
}

void associate(const QString &type, const QString &id)
{
    const auto append = [&](const QString &name, const char *group) {
        QFile file(path(name));
        const QByteArray before = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray(group);
        write(name, before + type.toUtf8() + '=' + id.toUtf8() + ";\n");
    };
    append(QStringLiteral("data/applications/mimeinfo.cache"), "[MIME Cache]\n");
    append(QStringLiteral("config/mimeapps.list"), "[Default Applications]\n");
}

void clear()
{
    // GIO watches these folders, so they stay.
    for (const char *name : {"data/applications", "data", "config", "files"}) {
        QDir folder(path(QLatin1String(name)));
        folder.mkpath(QStringLiteral("."));
        for (const QFileInfo &entry :
             folder.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)) {
            if (!entry.isDir() || entry.isSymLink())
                QFile::remove(entry.filePath());
            else if (entry.fileName() != QLatin1String("applications"))
                QDir(entry.filePath()).removeRecursively();
        }
    }
}

} // namespace PrivateSession

bool waitUntil(const std::function<bool()> &condition)
{
    QTimer tick; // the condition may be about another process, which wakes nobody here
    tick.start(10);
    const QDeadlineTimer bound(30'000);
    while (!condition()) {
        if (bound.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

Probe::Probe(const QString &name)
    : m_program(PrivateSession::path(QStringLiteral("files/") + name)), m_report(m_program + QStringLiteral(".report"))
{
    PrivateSession::write(QStringLiteral("files/") + name,
                          "#!/bin/sh\n"
                          "report=\"$0.report\"\n"
                          "{ for a in \"$@\"; do printf 'argument=%s\\n' \"$a\"; done\n"
                          "printf 'process=%s\\n' $$; read -r pid name state parent group session rest </proc/$$/stat\n"
                          "printf 'session=%s\\n' \"$session\"\n"
                          "for d in /proc/$$/fd/*; do printf 'file=%s\\n' \"${d##*/}\"; done\n"
                          "/usr/bin/env | /bin/sed 's/^/environment:/'; } >\"$report.new\"\n"
                          "/bin/mv \"$report.new\" \"$report\"\n");
    QFile(m_program).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QByteArray Probe::desktopFile(const QByteArray &exec, const QByteArray &more) const
{
    const QByteArray command = QByteArray(exec).replace("%p", QFile::encodeName(m_program));
    return "[Desktop Entry]\nType=Application\nName=Probe\nName[de]=Sonde\nExec=" + command + "\n" + more + "\n";
}

bool Probe::wasStarted() const
{
    return QFile::exists(m_report);
}

std::optional<Probe::Start> Probe::waitForStart() const
{
    if (!waitUntil([this] { return wasStarted(); }))
        return std::nullopt;
    QFile report(m_report);
    if (!report.open(QIODevice::ReadOnly))
        return std::nullopt;
    Start start;
    for (const QString &line : QString::fromUtf8(report.readAll()).split(u'\n')) {
        const QString value = line.section(u'=', 1);
        if (line.startsWith(QLatin1String("argument=")))
            start.arguments << value;
        else if (line.startsWith(QLatin1String("process=")))
            start.process = value.toLongLong();
        else if (line.startsWith(QLatin1String("session=")))
            start.session = value.toLongLong();
        else if (line.startsWith(QLatin1String("file=")))
            start.openFiles << value;
        else if (line.startsWith(QLatin1String("environment:")))
            start.environment.insert(line.section(u'=', 0, 0).mid(12), value);
    }
    QFile::remove(m_report);
    return start;
}

} // namespace Orbita
