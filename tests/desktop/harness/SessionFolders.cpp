#include "desktop/harness/SessionFolders.h"
#include "desktop/harness/Processes.h"
#include "desktop/harness/Wait.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>

namespace Orbita {

namespace {

// Every process inherits it, and no other session has the same.
constexpr auto mark = "XDG_RUNTIME_DIR";

} // namespace

// Not below the temporary folder of the test program: paths of sockets must stay short.
SessionFolders::SessionFolders() : m_folder(QStringLiteral("/tmp/desktop-XXXXXX"))
{
    for (const QString &folder : {runtime(), configuration(), data(), cache(), state()}) {
        if (!QDir().mkpath(folder))
            throw DesktopFailure(QStringLiteral("cannot make ") + folder);
    }
    QFile::setPermissions(runtime(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QProcessEnvironment SessionFolders::environment() const
{
    const auto outside = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment environment;
    const auto set = [&](const char *name, const QString &value) { environment.insert(QLatin1String(name), value); };
    for (const char *name : {"LD_LIBRARY_PATH", "QT_PLUGIN_PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "USER", "SHELL"}) {
        if (outside.contains(QLatin1String(name)))
            set(name, outside.value(QLatin1String(name)));
    }
    const QString path = outside.value(QStringLiteral("PATH"), QStringLiteral("/usr/local/bin:/usr/bin:/bin"));
    set("PATH", QCoreApplication::applicationDirPath() + QLatin1Char(':') + path);
    set("LANG", QStringLiteral("C.UTF-8"));
    set("HOME", home());
    set(mark, runtime());
    set("XDG_CONFIG_HOME", configuration());
    set("XDG_DATA_HOME", data());
    set("XDG_CACHE_HOME", cache());
    set("XDG_STATE_HOME", state());
    set("XDG_SESSION_TYPE", QStringLiteral("x11"));
    // Even where there is no bus: otherwise programs start one of their own.
    set("DBUS_SESSION_BUS_ADDRESS", busAddress());
    set("DBUS_SYSTEM_BUS_ADDRESS", systemBusAddress());
    return environment;
}

QString SessionFolders::write(const QString &path, const QByteArray &content) const
{
    const QString absolute = QDir(home()).absoluteFilePath(path);
    QDir().mkpath(QFileInfo(absolute).path());
    QFile file(absolute);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw DesktopFailure(QStringLiteral("cannot write ") + absolute);
    return absolute;
}

QString SessionFolders::installApplication(const QString &id, const QByteArray &entry) const
{
    return write(QStringLiteral("%1/applications/%2.desktop").arg(data(), id), entry);
}

SessionProcesses::~SessionProcesses()
{
    // A process loses its environment some time before it has ended.
    QList<qint64> dying;
    const auto noneLeft = [&] {
        for (const qint64 pid : all()) {
            ::kill(static_cast<pid_t>(pid), SIGKILL);
            if (!dying.contains(pid))
                dying += pid;
        }
        dying.removeIf(hasEnded);
        return dying.isEmpty();
    };
    if (!eventually(noneLeft))
        qWarning("processes of the desktop session outlive it");
}

QList<qint64> SessionProcesses::all() const
{
    return processesWithEnvironment(mark, QFile::encodeName(m_folders.runtime()));
}

} // namespace Orbita
