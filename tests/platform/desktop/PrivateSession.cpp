#include "PrivateSession.h"

#include "support/TemporaryContainer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Orbita {

namespace PrivateSession {

const SessionFolders &folders()
{
    static const SessionFolders folders;
    return folders;
}

QString path(const QString &name)
{
    return folders().home() + u'/' + name;
}

QString write(const QString &name, const QByteArray &content)
{
    return folders().write(name, content);
}

QString install(const QString &id, const QByteArray &content)
{
    return folders().installApplication(id, content);
}

void associate(const QString &type, const QString &id)
{
    const auto append = [&](const QString &name, const QByteArray &group) {
        const QByteArray before = TemporaryContainer::read(path(name));
        write(name, (before.isEmpty() ? group : before) + QStringLiteral("%1=%2.desktop;\n").arg(type, id).toUtf8());
    };
    append(QStringLiteral(".local/share/applications/mimeinfo.cache"), "[MIME Cache]\n");
    append(QStringLiteral(".config/mimeapps.list"), "[Default Applications]\n");
}

void clear()
{
    // GIO watches these folders, so they stay.
    for (const char *name : {".local/share/applications", ".local/share", ".config", "files"}) {
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

Probe::Probe(const QString &name)
    : m_program(PrivateSession::write(QStringLiteral("files/") + name,
                                      "#!/bin/sh\n"
                                      "{ for a in \"$@\"; do printf 'argument=%s\\n' \"$a\"; done\n"
                                      "read -r pid name state parent group session rest </proc/$$/stat\n"
                                      "printf 'process=%s\\nsession=%s\\n' $$ \"$session\"\n"
                                      "for d in /proc/$$/fd/*; do printf 'file=%s\\n' \"${d##*/}\"; done\n"
                                      "/usr/bin/env; } >\"$0.new\"\n"
                                      "/bin/mv \"$0.new\" \"$0.report\"\n")),
      m_report(m_program + QStringLiteral(".report"))
{
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

Probe::Start Probe::waitForStart() const
{
    waitUntil([this] { return wasStarted(); }, m_program + QStringLiteral(" was started"));
    Start start;
    for (const QString &line : QString::fromUtf8(TemporaryContainer::read(m_report)).split(u'\n'))
        start[line.section(u'=', 0, 0)] << line.section(u'=', 1);
    QFile::remove(m_report);
    return start;
}

} // namespace Orbita
