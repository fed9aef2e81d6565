#include "desktop/harness/SessionFolders.h"
#include "desktop/harness/Processes.h"
#include "desktop/harness/Wait.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

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
    for (const char *name : {"LD_LIBRARY_PATH", "QT_PLUGIN_PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "USER", "SHELL"}) {
        const QString variable = QLatin1String(name);
        if (outside.contains(variable))
            environment.insert(variable, outside.value(variable));
    }
    const QString path = outside.value(QStringLiteral("PATH"), QStringLiteral("/usr/local/bin:/usr/bin:/bin"));
    environment.insert(QStringLiteral("PATH"), QCoreApplication::applicationDirPath() + QLatin1Char(':') + path);
    environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("HOME"), home());
    environment.insert(QLatin1String(mark), runtime());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configuration());
    environment.insert(QStringLiteral("XDG_DATA_HOME"), data());
    environment.insert(QStringLiteral("XDG_CACHE_HOME"), cache());
    environment.insert(QStringLiteral("XDG_STATE_HOME"), state());
    environment.insert(QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("x11"));
    // Even where there is no bus: otherwise programs start one of their own.
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=%1/bus").arg(runtime()));
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
    try {
        killProcessesWithEnvironment(mark, QFile::encodeName(m_folders.runtime()));
    } catch (const DesktopFailure &failure) {
        qWarning("%s", failure.what());
    }
}

QList<qint64> SessionProcesses::all() const
{
    return processesWithEnvironment(mark, QFile::encodeName(m_folders.runtime()));
}

} // namespace Orbita
