#include "platform/Image.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <array>
#include <cmath>

// Resources in a static library are only found after this, which must not stand in a namespace.
static void initializeResources()
{
    Q_INIT_RESOURCE(resources);
}

namespace Orbita {

namespace {

constexpr qint64 maximumFileSize = 32 * 1024 * 1024; // bytes
constexpr int maximumSide = 8192;                    // pixels

QImage renderSvg(const QString &path, QSize devicePixels)
{
    QSvgRenderer renderer(path);
    if (!renderer.isValid())
        return {};
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

QImage scaledToFit(const QImage &pixels, QSize devicePixels)
{
    const QImage premultiplied = pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (pixels.width() <= devicePixels.width() && pixels.height() <= devicePixels.height())
        return premultiplied;
    return premultiplied.scaled(devicePixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QImage renderBitmap(const QString &path, QSize devicePixels)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize natural = reader.size();
    if (natural.width() > maximumSide || natural.height() > maximumSide)
        return {};
    QImage pixels = reader.read();
    if (pixels.isNull() || std::max(pixels.width(), pixels.height()) > maximumSide)
        return {};
    return scaledToFit(pixels, devicePixels);
}

class FileSource final : public ImageSource {
public:
    FileSource(QString path, Image fallback) : m_path(std::move(path)), m_fallback(std::move(fallback)) {}

    QImage render(QSize devicePixels) const override
    {
        const QFileInfo info(m_path);
        QImage pixels;
        // Opening a pipe or a device would wait for ever.
        if (info.isFile() && info.size() <= maximumFileSize) {
            const QString suffix = info.suffix().toLower();
            const bool isSvg = suffix == QLatin1String("svg") || suffix == QLatin1String("svgz");
            pixels = isSvg ? renderSvg(m_path, devicePixels) : renderBitmap(m_path, devicePixels);
        }
        return pixels.isNull() ? m_fallback.render(devicePixels) : pixels;
    }

private:
    QString m_path;
    Image m_fallback;
};

class PixelSource final : public ImageSource {
public:
    explicit PixelSource(QImage pixels) : m_pixels(std::move(pixels)) {}
    QImage render(QSize devicePixels) const override { return scaledToFit(m_pixels, devicePixels); }

private:
    QImage m_pixels;
};

struct ColorControls {
    float brightness;
    float contrast;
    float saturation;

    QRgb apply(QRgb premultiplied) const
    {
        const QRgb pixel = qUnpremultiply(premultiplied);
        std::array<float, 3> channels{float(qRed(pixel)) / 255.0F, float(qGreen(pixel)) / 255.0F,
                                      float(qBlue(pixel)) / 255.0F};
        const float luminance = 0.2126F * channels[0] + 0.7152F * channels[1] + 0.0722F * channels[2];
        for (float &channel : channels) {
            channel = luminance + (channel - luminance) * saturation + brightness;
            channel = std::clamp((channel - 0.5F) * contrast + 0.5F, 0.0F, 1.0F);
        }
        const auto byte = [](float channel) { return int(std::lround(channel * 255.0F)); };
        return qPremultiply(qRgba(byte(channels[0]), byte(channels[1]), byte(channels[2]), qAlpha(pixel)));
    }
};

class ColorControlledSource final : public ImageSource {
public:
    ColorControlledSource(Image image, ColorControls controls) : m_image(std::move(image)), m_controls(controls) {}

    QImage render(QSize devicePixels) const override
    {
        QImage pixels = m_image.render(devicePixels);
        for (int y = 0; y < pixels.height(); ++y) {
            auto *line = reinterpret_cast<QRgb *>(pixels.scanLine(y));
            std::transform(line, line + pixels.width(), line, [this](QRgb pixel) { return m_controls.apply(pixel); });
        }
        return pixels;
    }

private:
    Image m_image;
    ColorControls m_controls;
};

} // namespace

Image Image::fromFile(const QString &path)
{
    return fromFile(path, Image());
}

Image Image::fromFile(const QString &path, const Image &fallback)
{
    return fromSource(std::make_shared<FileSource>(path, fallback));
}

Image Image::fromPixels(const QImage &pixels)
{
    return pixels.isNull() ? Image() : fromSource(std::make_shared<PixelSource>(pixels));
}

Image Image::fromSource(std::shared_ptr<const ImageSource> source)
{
    Image image;
    image.m_source = std::move(source);
    return image;
}

Image Image::named(const QString &name)
{
    initializeResources();
    // One source per name, so that every item that shows a picture shares its rendered forms.
    static QHash<QString, Image> known;
    auto found = known.find(name);
    if (found == known.end()) {
        const QString path = QStringLiteral(":/images/%1.svg").arg(name);
        found = known.insert(name, QFile::exists(path) ? fromFile(path) : Image());
    }
    return *found;
}

QImage Image::render(QSize devicePixels) const
{
    return m_source && !devicePixels.isEmpty() ? m_source->render(devicePixels) : QImage();
}

Image colorControlled(const Image &image, float brightness, float contrast, float saturation)
{
    if (image.isNull())
        return image;
    Image result = Image::fromSource(
        std::make_shared<ColorControlledSource>(image, ColorControls{brightness, contrast, saturation}));
    result.setSize(image.size());
    return result;
}

} // namespace Orbita
