#include "platform/desktop/ApplicationEntry.h"

#include "platform/DesktopFileId.h"
#include "platform/desktop/ApplicationBundle.h"
#include "platform/desktop/DesktopFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Orbita {

namespace {

using Entry = GObjectPointer<GDesktopAppInfo>;

Entry installedEntry(const QString &path)
{
    const QString id = desktopFileId(path);
    return id.isEmpty() || !isSafeToLookUp(id) ? Entry() : Entry(g_desktop_app_info_new(id.toUtf8().constData()));
}

Entry entryFromFile(const QString &path)
{
    if (!path.startsWith(u':'))
        return Entry(g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData()));
    const auto bundled = DesktopFile::read(path);
    return bundled ? Entry(g_desktop_app_info_new_from_keyfile(bundled->keyFile())) : Entry();
}

Entry entryForProgram(const QString &program, const QString &name)
{
    const GlibPointer<char> quoted(g_shell_quote(QFile::encodeName(program).constData()));
    // A percent sign begins a field code.
    const QByteArray command = QByteArray(quoted.get()).replace('%', "%%");
    GAppInfo *info = g_app_info_create_from_commandline(command.constData(), name.toUtf8().constData(),
                                                        G_APP_INFO_CREATE_NONE, nullptr);
    return Entry(reinterpret_cast<GDesktopAppInfo *>(info));
}

QString baseName(const QString &path)
{
    QString name = QFileInfo(QDir::cleanPath(path)).fileName();
    for (const QLatin1String suffix : {QLatin1String(".desktop"), QLatin1String(".AppImage"), QLatin1String(".app")}) {
        if (name.endsWith(suffix) && name.size() > suffix.size())
            return name.chopped(suffix.size());
    }
    return name;
}

/// The file that describes the application: the user's own in front of an installed one, one inside a folder.
QString descriptionOf(const QString &path)
{
    if (!isDesktopFile(path))
        return ApplicationBundle::read(path).desktopFile;
    const Entry installed = DesktopFile::isReadable(path) ? installedEntry(path) : Entry();
    const char *inForce = installed ? g_desktop_app_info_get_filename(installed.get()) : nullptr;
    return inForce ? QFile::decodeName(inForce) : path;
}

} // namespace

Result<GObjectPointer<GDesktopAppInfo>, Workspace::Error> applicationEntry(const QString &path)
{
    if (!QFileInfo::exists(path))
        return Failure(Workspace::Error::Missing);
    Entry entry;
    if (!isDesktopFile(path)) {
        const QString program = ApplicationBundle::read(path).executable;
        if (!program.isEmpty())
            entry = entryForProgram(program, baseName(path));
    } else if (DesktopFile::isReadable(path)) {
        entry = installedEntry(path);
        if (!entry)
            entry = entryFromFile(path);
    }
    // Hidden means deleted, which GIO sees only when it looks an entry up by its id.
    if (!entry || g_desktop_app_info_get_is_hidden(entry.get()))
        return Failure(Workspace::Error::LaunchFailed);
    return entry;
}

ApplicationLook applicationLook(const QString &path)
{
    ApplicationLook look;
    if (const auto description = DesktopFile::read(descriptionOf(path)))
        look = {description->name(), description->icon()};
    if (look.name.isEmpty())
        look.name = baseName(path);
    if (!isDesktopFile(path)) {
        const QString own = ApplicationBundle::read(path).icon;
        if (!own.isEmpty())
            look.icon = own;
    }
    return look;
}

} // namespace Orbita
