#include "platform/desktop/Thumbnails.h"

#include "platform/BoundedRead.h"
#include "platform/PictureContent.h"
#include "platform/desktop/FileInfo.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QFile>
#include <QImageReader>
#include <QStringList>

#include <sys/stat.h>

#include <algorithm>
#include <vector>

namespace Orbita {

namespace {

constexpr int maximumKnown = 256; // files; a ring shows fewer
constexpr qint64 nanoseconds = 1'000'000'000;
constexpr qint64 maximumSize = 32 * 1024 * 1024; // bytes
const QByteArray pngMagic = QByteArrayLiteral("\x89PNG\r\n\x1a\n");
const QString uriKey = QStringLiteral("Thumb::URI");
const QString timeKey = QStringLiteral("Thumb::MTime");

/// A folder of thumbnails, with the longest side in pixels that they have.
struct Folder {
    const char *name;
    int side;
};
constexpr std::array folders{Folder{"normal", 128}, Folder{"large", 256}, Folder{"x-large", 512},
                             Folder{"xx-large", 1024}};

struct Thumbnail {
    QString path;
    int side = 0;
};

class ThumbnailSource final : public ImageSource {
public:
    ThumbnailSource(std::vector<Thumbnail> thumbnails, QString uri, qint64 seconds, Image typeIcon)
        : m_thumbnails(std::move(thumbnails)),
          m_uri(std::move(uri)),
          m_time(QString::number(seconds)),
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
            const QImage pixels = read(thumbnail.path, devicePixels);
            if (!pixels.isNull())
                return pixels;
        }
        return m_typeIcon.render(devicePixels);
    }

private:
    /// Null when the file at \a path is no thumbnail of the very file as it is now.
    QImage read(const QString &path, QSize devicePixels) const
    {
        auto content = readRegularFile(path, maximumSize);
        if (!content || !content->startsWith(pngMagic))
            return {};
        QByteArray bytes = std::move(content).value();
        QBuffer buffer(&bytes);
        QImageReader reader(&buffer, "png");
        // Most programs write the texts before the pixels, which then need not be decoded in vain.
        const auto isOther = [&reader](const QString &key, const QString &wanted) {
            const QString text = reader.text(key);
            return !text.isEmpty() && text != wanted;
        };
        if (!reader.canRead() || isOther(uriKey, m_uri) || isOther(timeKey, m_time))
            return {};
        const QImage pixels = renderBitmap(bytes, devicePixels);
        return pixels.text(uriKey) == m_uri && pixels.text(timeKey) == m_time ? pixels : QImage();
    }

    std::vector<Thumbnail> m_thumbnails; ///< the smallest first
    QString m_uri;
    QString m_time; ///< when the file was changed
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
        times[i + 1] = Orbita::timeOfChange(file);
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
