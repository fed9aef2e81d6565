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

void ImageStore::storeImage(const Image &image, const QString &key) const
{
    m_pictures.remove(key);
    const QString path = filePathForKey(key);
    const QByteArray tiff
        = path.isEmpty() ? QByteArray() : tiffRepresentation(image.render({maximumSide, maximumSide}));
    if (tiff.isEmpty())
        return;
    if (!QDir().mkpath(m_folder) || !writeFileAtomically(path, tiff))
        qCWarning(lcModel, "The picture %s could not be saved.", qUtf8Printable(path));
}

Image ImageStore::imageForKey(const QString &key) const
{
    const QString path = filePathForKey(key);
    // Opening a pipe would wait for ever.
    if (path.isEmpty() || !QFileInfo(path).isFile() || !QImageReader(path).canRead())
        return {};
    if (const Image *known = m_pictures.object(key))
        return *known;
    const Image picture = Image::fromFile(path);
    m_pictures.insert(key, new Image(picture));
    return picture;
}

void ImageStore::removeImageForKey(const QString &key) const
{
    m_pictures.remove(key);
    const QString path = filePathForKey(key);
    if (!path.isEmpty())
        QFile::remove(path);
}

} // namespace Orbita
