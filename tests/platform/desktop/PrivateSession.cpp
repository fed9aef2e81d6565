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

QString path(const QByteArray &name)
{
    return folders().home() + u'/' + QString::fromUtf8(name);
}

QString write(const QByteArray &name, const QByteArray &content)
{
    return folders().write(QString::fromUtf8(name), content);
}

QString install(const QByteArray &id, const QByteArray &content)
{
    return folders().installApplication(QString::fromUtf8(id), content);
}

void associate(const QByteArray &type, const QByteArray &id)
{
    const auto append = [&](const QByteArray &name, const QByteArray &group) {
        const QByteArray before = TemporaryContainer::read(path(name));
        write(name, (before.isEmpty() ? group : before) + type + '=' + id + ".desktop;\n");
    };
    append(".local/share/applications/mimeinfo.cache", "[MIME Cache]\n");
    append(".config/mimeapps.list", "[Default Applications]\n");
}

void clear()
{
    // GIO watches these folders, so they stay.
    for (const char *name : {".local/share/applications", ".local/share", ".config", "files"}) {
        QDir folder(path(name));
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

Probe::Probe(const QByteArray &name)
    : m_program(PrivateSession::write("files/" + name,
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
    for (const QByteArray &line : TemporaryContainer::read(m_report).split('\n')) {
        const qsizetype equals = line.indexOf('=');
        start[line.left(equals)] << QString::fromUtf8(line.mid(equals + 1));
    }
    QFile::remove(m_report);
    return start;
}

} // namespace Orbita
