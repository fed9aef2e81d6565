#include "platform/desktop/Thumbnails.h"

#include "platform/desktop/FileInfo.h"

#include <QCryptographicHash>
#include <QFile>
#include <QStringList>

#include <sys/stat.h>

#include <algorithm>
#include <vector>

namespace Orbita {

namespace {

constexpr int maximumKnown = 256; // files; a ring shows fewer
constexpr qint64 nanoseconds = 1'000'000'000;

/// A folder of thumbnails, with the longest side in pixels that they have.
struct Folder {
    const char *name;
    int side;
};
constexpr std::array folders{Folder{"normal", 128}, Folder{"large", 256}, Folder{"x-large", 512},
                             Folder{"xx-large", 1024}};

/// When the thumbnail at \a path was changed, in nanoseconds since 1970; 0 when there is none.
qint64 timeOfThumbnail(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return 0;
    return status.st_mtim.tv_sec * nanoseconds + status.st_mtim.tv_nsec;
}

struct Thumbnail {
    QString path;
    int side = 0;
};

class ThumbnailSource final : public ImageSource {
public:
    ThumbnailSource(std::vector<Thumbnail> thumbnails, QString uri, qint64 seconds, Image typeIcon)
        : m_thumbnails(std::move(thumbnails)),
          m_uri(std::move(uri)),
          m_seconds(seconds),
          m_typeIcon(std::move(typeIcon))
    {
    }

    QImage render(QSize devicePixels) const override
    {
        const int wanted = std::min(devicePixels.width(), devicePixels.height());
        // The least that is large enough, then larger ones, then the largest of the others.
        std::vector<Thumbnail> bestFirst = m_thumbnails;
        const auto smaller
            = std::stable_partition(bestFirst.begin(), bestFirst.end(),
                                    [wanted](const Thumbnail &thumbnail) { return thumbnail.side >= wanted; });
        std::reverse(smaller, bestFirst.end());
        for (const Thumbnail &thumbnail : bestFirst) {
            const QImage pixels = Image::fromFile(thumbnail.path).render(devicePixels);
            if (!pixels.isNull() && isValid(pixels))
                return pixels;
        }
        return m_typeIcon.render(devicePixels);
    }

private:
    /// Whether it was made of the very file, as it is now.
    bool isValid(const QImage &pixels) const
    {
        return pixels.text(QStringLiteral("Thumb::URI")) == m_uri
            && pixels.text(QStringLiteral("Thumb::MTime")) == QString::number(m_seconds);
    }

    std::vector<Thumbnail> m_thumbnails; ///< the smallest first
    QString m_uri;
    qint64 m_seconds; ///< the file's time of change
    Image m_typeIcon;
};

} // namespace

Thumbnails::Thumbnails(QString root) : m_root(std::move(root)), m_known(maximumKnown) {}

Image Thumbnails::icon(const QString &path, qint64 timeOfChange, const Image &typeIcon)
{
    Times times{timeOfChange};
    const QString uri = fileUri(path);
    const QString name = QString::fromLatin1(QCryptographicHash::hash(uri.toUtf8(), QCryptographicHash::Md5).toHex());
    std::vector<Thumbnail> thumbnails;
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const QString file = QStringLiteral("%1/%2/%3.png").arg(m_root, QLatin1String(folders[i].name), name);
        times[i + 1] = timeOfThumbnail(file);
        if (times[i + 1] != 0)
            thumbnails.push_back({file, folders[i].side});
    }
    if (thumbnails.empty())
        return typeIcon;
    const Known *known = m_known.object(path);
    if (known && known->times == times && known->typeIcon == typeIcon)
        return known->image;
    const Image image = Image::fromSource(
        std::make_shared<ThumbnailSource>(std::move(thumbnails), uri, times[0] / nanoseconds, typeIcon));
    m_known.insert(path, new Known{times, typeIcon, image});
    return image;
}

} // namespace Orbita
