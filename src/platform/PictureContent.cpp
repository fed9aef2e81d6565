#include "platform/PictureContent.h"

#include "platform/SvgContent.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSet>
#include <QSvgRenderer>

#include <mutex>

namespace Orbita {

namespace {

constexpr int maximumSide = 8192; // pixels

bool isLarge(QSize pixels)
{
    return qint64(pixels.width()) * pixels.height() > 4096 * 4096;
}

bool isWithinLimits(QSize pixels)
{
    return pixels.width() <= maximumSide && pixels.height() <= maximumSide;
}

/// What is drawn by ourselves and by no other program: an image plug-in may start one for a format such as EPS.
bool isKnownFormat(const QByteArray &format)
{
    static const QSet<QByteArray> known{"png", "jpg", "jpeg", "gif", "bmp", "ico",  "icns", "tif",  "tiff", "webp",
                                        "xpm", "xbm", "ppm",  "pgm", "pbm", "avif", "heic", "heif", "jxl",  "jp2"};
    return known.contains(format);
}

/// Lets the decoder shrink while it reads where it can, so that a photo does not need its full size in memory.
void shrinkWhileReading(QImageReader &reader, QSize natural, QSize devicePixels)
{
    if (reader.format() != "jpeg" && reader.format() != "jpg")
        return;
    const bool isTurned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize bounds = isTurned ? devicePixels.transposed() : devicePixels;
    if (natural.width() > bounds.width() || natural.height() > bounds.height())
        reader.setScaledSize(natural.scaled(bounds, Qt::KeepAspectRatio).expandedTo({1, 1}));
}

} // namespace

bool isSvg(const QByteArray &content)
{
    QBuffer buffer;
    buffer.setData(content);
    return QImageReader(&buffer).format().startsWith("svg");
}

QImage renderSvg(const QByteArray &content, QSize devicePixels)
{
    const QByteArray document = safeSvg(content);
    QSvgRenderer renderer;
    if (document.isEmpty() || !renderer.load(document))
        return {};
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QSize natural = renderer.defaultSize();
    if (natural.isEmpty())
        natural = devicePixels;
    QImage canvas(natural.scaled(devicePixels, Qt::KeepAspectRatio).expandedTo({1, 1}),
                  QImage::Format_ARGB32_Premultiplied);
    if (canvas.isNull())
        return {};
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    renderer.render(&painter, QRectF(QPointF(), canvas.size()));
    return canvas;
}

QImage renderBitmap(const QByteArray &content, QSize devicePixels)
{
    QBuffer buffer;
    buffer.setData(content);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    if (!isKnownFormat(reader.format()))
        return {};
    const QSize natural = reader.size();
    if (!isWithinLimits(natural))
        return {};
    // A picture at the limit needs half a gigabyte for a moment; several at once would be too much. Nobody waits here
    // for a disk: the content is in memory.
    static std::mutex oneLargePicture;
    std::unique_lock lock(oneLargePicture, std::defer_lock);
    if (!natural.isValid() || isLarge(natural))
        lock.lock();
    shrinkWhileReading(reader, natural, devicePixels);
    const QImage pixels = reader.read();
    return pixels.isNull() || !isWithinLimits(pixels.size()) ? QImage() : scaledToFit(pixels, devicePixels);
}

QImage scaledToFit(const QImage &pixels, QSize devicePixels)
{
    if (pixels.width() <= devicePixels.width() && pixels.height() <= devicePixels.height())
        return pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QSize fitted = pixels.size().scaled(devicePixels, Qt::KeepAspectRatio).expandedTo({1, 1});
    // Colours of transparent pixels must not bleed into the edges, so alpha is multiplied in before scaling.
    return pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace Orbita
