#include "model/ImageStore.h"

#include "model/Log.h"
#include "model/StoredText.h"
#include "platform/AtomicFile.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>

#include <algorithm>
#include <utility>

namespace Orbita {

namespace {

QByteArray tiffRepresentation(const QImage &pixels)
{
    constexpr int lzw = 1;
    QBuffer buffer;
    QImageWriter writer(&buffer, "tiff");
    writer.setCompression(lzw);
    // Other formats with alpha come back rounded.
    return writer.write(pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied)) ? buffer.data() : QByteArray();
}

/// Whether \a entry, or a part of it, is shown with the picture of \a key. As deep as property lists go.
bool namesPicture(const QVariant &entry, const QString &key)
{
    const auto names = [&key](const QVariant &part) { return namesPicture(part, key); };
    if (entry.typeId() == QMetaType::QVariantList)
        return std::ranges::any_of(entry.toList(), names);
    if (entry.typeId() != QMetaType::QVariantMap)
        return false;
    const QVariantMap dictionary = entry.toMap();
    return storedText(dictionary, "imageKey") == key || std::ranges::any_of(dictionary, names);
}

} // namespace

ImageStore::ImageStore(const QString &libraryFolder) : m_folder(libraryFolder + QStringLiteral("/ImageStore")) {}

QString ImageStore::filePathForKey(const QString &key) const
{
    if (key.isEmpty() || key.contains(QLatin1Char('/')) || key.contains(QChar(u'\0')))
        return {};
    return QStringLiteral("%1/%2.tif").arg(m_folder, key);
}

bool ImageStore::storeImage(const Image &image, const QString &key) const
{
    m_pictures.remove(key);
    const QString path = filePathForKey(key);
    const QByteArray tiff
        = path.isEmpty() ? QByteArray() : tiffRepresentation(image.render({maximumSide, maximumSide}));
    if (!tiff.isEmpty() && QDir().mkpath(m_folder) && writeFileAtomically(path, tiff))
        return true;
    qCWarning(lcModel, "The picture %s could not be saved.", qUtf8Printable(forLog(path)));
    return false;
}

Image ImageStore::imageForKey(const QString &key, const Image &fallback) const
{
    const QString path = filePathForKey(key);
    const QFileInfo file(path);
    // Opening a pipe would wait for ever.
    if (path.isEmpty() || !file.isFile())
        return fallback;
    const Picture *known = m_pictures.object(key);
    if (known && known->changed == file.lastModified() && known->size == file.size() && known->fallback == fallback)
        return known->image;
    const Image image = QImageReader(path).canRead() ? Image::fromFile(path, fallback) : fallback;
    m_pictures.insert(key, new Picture{file.lastModified(), file.size(), fallback, image});
    return image;
}

void ImageStore::removeImageForKey(const QString &key) const
{
    m_pictures.remove(key);
    const QString path = filePathForKey(key);
    if (!path.isEmpty())
        QFile::remove(path);
}

void ImageStore::discardImageForKey(const QString &key)
{
    m_discarded.insert(key);
}

void ImageStore::removeDiscarded(const QVariantList &saved)
{
    for (const QString &key : std::exchange(m_discarded, {})) {
        if (!namesPicture(saved, key))
            removeImageForKey(key);
    }
}

} // namespace Orbita
