#include "platform/Glib.h"

#include "platform/desktop/FileInfo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace Orbita {

namespace {

using Info = GObjectPointer<GFileInfo>;

Info query(const QString &path, const char *attributes)
{
    const GObjectPointer<GFile> file(g_file_new_for_path(QFile::encodeName(path).constData()));
    return Info(g_file_query_info(file.get(), attributes, G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
}

QStringList iconNames(GIcon *icon)
{
    QStringList names;
    if (!icon || !G_IS_THEMED_ICON(icon))
        return names;
    const char *const *all = g_themed_icon_get_names(G_THEMED_ICON(icon));
    for (int i = 0; all[i]; ++i)
        names << QString::fromUtf8(all[i]);
    return names;
}

} // namespace

QString fileUri(const QString &path)
{
    // GLib encodes the bytes of the name, whatever they are; QUrl could only encode text.
    const QByteArray absolute = QFile::encodeName(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    const GlibPointer<char> uri(g_filename_to_uri(absolute.constData(), nullptr, nullptr));
    return QString::fromUtf8(uri.get());
}

QString fileDisplayName(const QString &path)
{
    const Info info = query(path, G_FILE_ATTRIBUTE_STANDARD_DISPLAY_NAME);
    const char *name = info ? g_file_info_get_display_name(info.get()) : nullptr;
    return name ? QString::fromUtf8(name) : QFileInfo(QDir::cleanPath(path)).fileName();
}

QStringList fileIconNames(const QString &path)
{
    // Only a folder has an icon by its place (home, downloads); for a file GIO would read its first bytes.
    if (QFileInfo(path).isDir()) {
        const Info info = query(path, G_FILE_ATTRIBUTE_STANDARD_ICON);
        return iconNames(info ? g_file_info_get_icon(info.get()) : nullptr);
    }
    const Info info = query(path, G_FILE_ATTRIBUTE_STANDARD_FAST_CONTENT_TYPE);
    const char *type
        = info ? g_file_info_get_attribute_string(info.get(), G_FILE_ATTRIBUTE_STANDARD_FAST_CONTENT_TYPE) : nullptr;
    if (!type)
        return {};
    const GObjectPointer<GIcon> icon(g_content_type_get_icon(type));
    return iconNames(icon.get());
}

QStringList iconNamesForFileName(const QString &path)
{
    const GlibPointer<char> type(g_content_type_guess(QFile::encodeName(path).constData(), nullptr, 0, nullptr));
    const GObjectPointer<GIcon> icon(g_content_type_get_icon(type.get()));
    return iconNames(icon.get());
}

qint64 timeOfChange(const QString &path)
{
    constexpr qint64 nanoseconds = 1'000'000'000;
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return 0;
    return status.st_mtim.tv_sec * nanoseconds + status.st_mtim.tv_nsec;
}

QString contentType(const QString &path)
{
    const Info info = query(path, G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE);
    return info ? QString::fromUtf8(g_file_info_get_content_type(info.get())) : QString();
}

} // namespace Orbita
