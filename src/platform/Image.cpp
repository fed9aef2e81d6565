#include "platform/Image.h"

#include "platform/BoundedRead.h"
#include "platform/PictureContent.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <tuple>

// Resources in a static library are only found after this, which must not stand in a namespace.
static void initializeResources()
{
    Q_INIT_RESOURCE(resources);
}

namespace Orbita {

namespace {

constexpr qint64 maximumFileSize = 32 * 1024 * 1024; // bytes

QImage renderFile(const QString &path, QSize devicePixels)
{
    const auto content = readRegularFile(path, maximumFileSize);
    if (!content)
        return {};
    // A drawing may begin with anything that XML allows, so its name counts as well.
    const QString suffix = QFileInfo(path).suffix().toLower();
    const bool isNamedSvg = suffix == QLatin1String("svg") || suffix == QLatin1String("svgz");
    return isNamedSvg || isSvg(*content) ? renderSvg(*content, devicePixels) : renderBitmap(*content, devicePixels);
}

class FileSource final : public ImageSource {
public:
    FileSource(QString path, Image fallback) : m_path(std::move(path)), m_fallback(std::move(fallback)) {}

    QImage render(QSize devicePixels) const override
    {
        const QImage pixels = renderFile(m_path, devicePixels);
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
    const auto found = known.constFind(name);
    if (found != known.cend())
        return *found;
    const QString path = QStringLiteral(":/images/%1.svg").arg(name);
    return QFile::exists(path) ? *known.insert(name, fromFile(path)) : Image();
}

QImage Image::render(QSize devicePixels) const
{
    return m_source && !devicePixels.isEmpty() ? m_source->render(devicePixels) : QImage();
}

Image colorControlled(const Image &image, float brightness, float contrast, float saturation)
{
    if (image.isNull())
        return image;
    // The same picture in the same colours is one source, as long as anybody holds it, so that what was rendered of it
    // is found again.
    using Key = std::tuple<const ImageSource *, float, float, float>;
    static std::map<Key, std::weak_ptr<const ImageSource>> known;
    std::erase_if(known, [](const auto &entry) { return entry.second.expired(); });
    auto &remembered = known[{image.source().get(), brightness, contrast, saturation}];
    auto source = remembered.lock();
    if (!source) {
        source = std::make_shared<ColorControlledSource>(image, ColorControls{brightness, contrast, saturation});
        remembered = source;
    }
    Image result = Image::fromSource(std::move(source));
    result.setSize(image.size());
    return result;
}

} // namespace Orbita
