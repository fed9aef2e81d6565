#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>

#include <memory>

namespace Orbita {

/// Where the pixels of an Image come from. Immutable; render() may run on any thread.
class ImageSource {
public:
    virtual ~ImageSource() = default;

    /// The picture fitted into \a devicePixels with its aspect ratio kept, as premultiplied ARGB32.
    ///
    /// Never larger than \a devicePixels in either direction. A null image when the picture cannot be read.
    [[nodiscard]] virtual QImage render(QSize devicePixels) const = 0;
};

/// A picture that is drawn when, and as large as, it is needed.
///
/// A value: copies share one source, so keeping many costs little. Safe to hand to another thread.
class Image {
public:
    /// The size in points that the pictures of items have.
    static constexpr QSizeF itemSize{320.0, 320.0};

    /// No picture.
    Image() : m_size(itemSize) {}

    /// The picture file at \a path (SVG, PNG, TIFF, ...), opened only when it is rendered.
    ///
    /// A file that is no regular file, is larger than 32 MiB, has a side of more than 8192 pixels or does not
    /// decode renders as nothing, or as \a fallback where one is given.
    [[nodiscard]] static Image fromFile(const QString &path);
    [[nodiscard]] static Image fromFile(const QString &path, const Image &fallback);
    [[nodiscard]] static Image fromPixels(const QImage &pixels);
    [[nodiscard]] static Image fromSource(std::shared_ptr<const ImageSource> source);

    /// The bundled picture called \a name ("Finder", "Default", "small", ...); null when there is none. Main thread
    /// only.
    [[nodiscard]] static Image named(const QString &name);

    [[nodiscard]] bool isNull() const { return !m_source; }

    /// The picture fitted into \a devicePixels, aspect ratio kept; null when there is none. Any thread.
    /// The texts that a picture file holds besides its pixels come along: QImage::text().
    [[nodiscard]] QImage render(QSize devicePixels) const;

    /// Size in points.
    [[nodiscard]] QSizeF size() const { return m_size; }
    void setSize(QSizeF points) { m_size = points; }

    /// Equal for images that share a source, different otherwise, 0 for no picture. Keys caches of rendered pictures.
    [[nodiscard]] quintptr key() const { return reinterpret_cast<quintptr>(m_source.get()); }
    [[nodiscard]] std::shared_ptr<const ImageSource> source() const { return m_source; }

    friend bool operator==(const Image &a, const Image &b) { return a.m_source == b.m_source; }

private:
    std::shared_ptr<const ImageSource> m_source;
    QSizeF m_size;
};

/// \a image in other colours, as the pixel equations below say, computed when it is rendered:
/// brightness is added to each channel, contrast scales the distance from one half, and saturation
/// blends between the luminance (Rec. 709 weights 0.2126, 0.7152, 0.0722) at 0 and the colour at 1. Equal for equal
/// arguments. Main thread only.
[[nodiscard]] Image colorControlled(const Image &image, float brightness, float contrast, float saturation);

} // namespace Orbita
