#include "editors/DroppedPicture.h"

#include <QFileInfo>
#include <QMimeData>
#include <QTemporaryFile>
#include <QUrl>

#include <algorithm>
#include <array>

namespace Orbita {

namespace {

constexpr QSize kept{1024, 1024}; // device pixels: three times the size of an item, for sharp screens
constexpr qsizetype longestName = 60;
constexpr qsizetype largestData = 32 * 1024 * 1024; // bytes, as of files

/// What programs offer copied pictures as, the best first.
constexpr std::array<const char *, 7> pictureTypes{
    "image/png", "image/svg+xml", "image/tiff", "image/webp", "image/jpeg", "image/bmp", "image/gif",
};

std::optional<QString> localFile(const QMimeData &data)
{
    const QList<QUrl> urls = data.urls();
    const auto found = std::ranges::find_if(urls, &QUrl::isLocalFile);
    return found == urls.end() ? std::nullopt : std::optional(found->toLocalFile());
}

std::optional<QString> pictureType(const QMimeData &data)
{
    const auto found
        = std::ranges::find_if(pictureTypes, [&data](const char *type) { return data.hasFormat(QLatin1String(type)); });
    return found == pictureTypes.end() ? std::nullopt : std::optional(QString(QLatin1String(*found)));
}

Image imageAt(const QString &path)
{
    return Image::fromPixels(Image::fromFile(path).render(kept));
}

/// Through a file, so that it is decoded with the same care.
Image imageFrom(const QByteArray &bytes)
{
    QTemporaryFile file;
    const bool isWritten
        = bytes.size() <= largestData && file.open() && file.write(bytes) == bytes.size() && file.flush();
    return isWritten ? imageAt(file.fileName()) : Image();
}

QString unusable(const QString &what)
{
    return QStringLiteral("%1 cannot be used: a picture must be undamaged, of a common format, at most 32 MB large and "
                          "at most 8192 pixels wide and high.")
        .arg(what);
}

/// Why there was no picture in the file at \a path. To be asked afterwards, as the file may vanish at any time.
QString refusalOfFile(const QString &path)
{
    QString name = QFileInfo(path).fileName();
    if (name.size() > longestName)
        name = name.left(longestName) + u'…';
    if (!QFileInfo::exists(path))
        return QStringLiteral("“%1” is not there any more.").arg(name);
    if (!QFileInfo(path).isReadable())
        return QStringLiteral("“%1” may not be read.").arg(name);
    return unusable(QStringLiteral("“%1”").arg(name));
}

} // namespace

QStringList pictureNamePatterns()
{
    return QStringLiteral("*.png *.jpg *.jpeg *.svg *.svgz *.tif *.tiff *.webp *.gif *.bmp *.ico *.icns *.xpm")
        .split(u' ');
}

bool mayHoldPicture(const QMimeData &data)
{
    return pictureType(data) || localFile(data);
}

std::optional<GivenPicture> givenPicture(const QMimeData &data)
{
    // A file comes first: beside it, file managers offer its icon as picture data.
    if (const auto path = localFile(data))
        return *path;
    if (const auto type = pictureType(data))
        return data.data(*type);
    return std::nullopt;
}

Result<Image, QString> readPicture(const GivenPicture &given)
{
    const auto *path = std::get_if<QString>(&given);
    Image image = path ? imageAt(*path) : imageFrom(std::get<QByteArray>(given));
    if (!image.isNull())
        return image;
    return Failure(path ? refusalOfFile(*path) : unusable(QStringLiteral("What was given")));
}

} // namespace Orbita
