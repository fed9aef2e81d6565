#include "platform/desktop/DesktopFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace Orbita {

namespace {

constexpr qsizetype maximumNameLength = 200; // characters; a title bubble shows fewer

QString localeText(GKeyFile *file, const char *key)
{
    const GlibPointer<char> text(g_key_file_get_locale_string(file, G_KEY_FILE_DESKTOP_GROUP, key, nullptr, nullptr));
    return QString::fromUtf8(text.get()).simplified();
}

} // namespace

bool DesktopFile::isReadable(const QString &path)
{
    // Opening a pipe or a device would wait for ever.
    const QFileInfo info(path);
    return info.isFile() && info.isReadable() && info.size() <= maximumSize;
}

std::optional<DesktopFile> DesktopFile::read(const QString &path)
{
    QFile file(path);
    if (!isReadable(path) || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray content = file.read(maximumSize);
    GlibPointer<GKeyFile> keyFile(g_key_file_new());
    if (!g_key_file_load_from_data(keyFile.get(), content.constData(), gsize(content.size()),
                                   G_KEY_FILE_KEEP_TRANSLATIONS, nullptr)
        || !g_key_file_has_group(keyFile.get(), G_KEY_FILE_DESKTOP_GROUP))
        return std::nullopt;
    return DesktopFile(std::move(keyFile));
}

QString DesktopFile::name() const
{
    return localeText(m_keyFile.get(), G_KEY_FILE_DESKTOP_KEY_NAME).left(maximumNameLength);
}

QString DesktopFile::icon() const
{
    return localeText(m_keyFile.get(), G_KEY_FILE_DESKTOP_KEY_ICON);
}

QString desktopFileId(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        const QString prefix = QDir::cleanPath(folder) + u'/';
        if (clean.startsWith(prefix))
            return clean.mid(prefix.size()).replace(u'/', u'-');
    }
    return {};
}

} // namespace Orbita
