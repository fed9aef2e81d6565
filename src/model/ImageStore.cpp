#include "model/ImageStore.h"

#include "model/Log.h"
#include "platform/AtomicFile.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>

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

Image ImageStore::imageForKey(const QString &key) const
{
    const QString path = filePathForKey(key);
    const QFileInfo file(path);
    // Opening a pipe would wait for ever.
    if (path.isEmpty() || !file.isFile())
        return {};
    const Picture *known = m_pictures.object(key);
    if (known && known->changed == file.lastModified() && known->size == file.size())
        return known->image;
    const Image image = QImageReader(path).canRead() ? Image::fromFile(path) : Image();
    m_pictures.insert(key, new Picture{file.lastModified(), file.size(), image});
    return image;
}

void ImageStore::removeImageForKey(const QString &key) const
{
    m_pictures.remove(key);
    const QString path = filePathForKey(key);
    if (!path.isEmpty())
        QFile::remove(path);
}

} // namespace Orbita
