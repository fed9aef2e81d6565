#include "platform/desktop/ThemeIcons.h"

#include "platform/desktop/IconFile.h"
#include "platform/desktop/IconTheme.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <private/qiconloader_p.h>

#include <algorithm>

namespace Orbita {

namespace {

constexpr int maximumFound = 1024; // names; an entry is small, but files come with any number of them

Image defaultIcon()
{
    return Image::named(QStringLiteral("Default"));
}

class ThemeIconSource final : public ImageSource {
public:
    ThemeIconSource(std::vector<IconFile> files, Image fallback)
        : m_files(std::move(files)), m_fallback(std::move(fallback))
    {
    }

    QImage render(QSize devicePixels) const override
    {
        constexpr int maximumAttempts = 4; // damaged files are rare, and each costs time
        const int side = std::min(devicePixels.width(), devicePixels.height());
        int attempts = 0;
        for (const IconFile &file : nearestFirst(m_files, side)) {
            if (attempts++ == maximumAttempts)
                break;
            const QImage pixels = Image::fromFile(file.path).render(devicePixels);
            if (!pixels.isNull())
                return pixels;
        }
        return m_fallback.render(devicePixels);
    }

private:
    std::vector<IconFile> m_files;
    Image m_fallback;
};

IconFile iconFile(const QIconLoaderEngineEntry &entry)
{
    const QIconDirInfo &folder = entry.dir;
    IconFile file{entry.filename,   IconFile::Type::Threshold,     folder.size, folder.minSize, folder.maxSize,
                  folder.threshold, std::max<int>(folder.scale, 1)};
    if (folder.type == QIconDirInfo::Fixed)
        file.type = IconFile::Type::Fixed;
    else if (folder.type == QIconDirInfo::Scalable)
        file.type = IconFile::Type::Scalable;
    return file;
}

std::vector<IconFile> themeFiles(const QString &name)
{
    const QThemeIconInfo found = QIconLoader::instance()->loadIcon(name);
    std::vector<IconFile> files;
    for (const auto &entry : found.entries)
        files.push_back(iconFile(*entry));
    return files;
}

QString pixmapFile(const QString &name)
{
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        for (const QString &suffix : {QStringLiteral(".svg"), QStringLiteral(".png"), QStringLiteral(".xpm")}) {
            const QString path = folder + QStringLiteral("/pixmaps/") + name + suffix;
            if (QFileInfo(path).isFile())
                return path;
        }
    }
    return {};
}

/// "name.png" is no name of a theme icon, but many ".desktop" files say so.
QString withoutSuffix(const QString &name)
{
    for (const QLatin1String suffix : {QLatin1String(".png"), QLatin1String(".svg"), QLatin1String(".xpm")}) {
        if (name.endsWith(suffix))
            return name.chopped(suffix.size());
    }
    return name;
}

Image find(const QString &name)
{
    if (QDir::isAbsolutePath(name))
        return Image::fromFile(name, defaultIcon());
    const QString themeName = withoutSuffix(name);
    if (themeName.isEmpty() || themeName.contains(u'/'))
        return {};
    std::vector<IconFile> files = themeFiles(themeName);
    if (!files.empty())
        return Image::fromSource(std::make_shared<ThemeIconSource>(std::move(files), defaultIcon()));
    const QString pixmap = pixmapFile(themeName);
    return pixmap.isEmpty() ? Image() : Image::fromFile(pixmap, defaultIcon());
}

} // namespace

ThemeIcons::ThemeIcons() : m_found(maximumFound) {}

Image ThemeIcons::icon(const QStringList &names)
{
    if (!m_isThemeInUse) {
        useDesktopIconTheme();
        m_isThemeInUse = true;
    }
    for (const QString &name : names) {
        if (!m_found.contains(name))
            m_found.insert(name, new Image(find(name)));
        const Image &image = *m_found.object(name);
        if (!image.isNull())
            return image;
    }
    return defaultIcon();
}

} // namespace Orbita
