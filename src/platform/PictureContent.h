#pragma once

#include <QByteArray>
#include <QImage>

/// Drawing what a picture file holds. Any content is fine; any thread.
namespace Orbita {

/// Whether \a content looks like an SVG document, compressed or not. One with an unusual beginning does not.
[[nodiscard]] bool isSvg(const QByteArray &content);

/// The SVG document in \a content fitted into \a devicePixels; a null image when it is none that is safe to draw.
[[nodiscard]] QImage renderSvg(const QByteArray &content, QSize devicePixels);

/// The bitmap in \a content made smaller where it does not fit into \a devicePixels; a null image when it is of no
/// known format, does not decode or has a side of more than 8192 pixels. Texts that stand beside the pixels come
/// along: QImage::text().
[[nodiscard]] QImage renderBitmap(const QByteArray &content, QSize devicePixels);

/// \a pixels as premultiplied ARGB32, made smaller in their proportions where they do not fit into \a devicePixels.
[[nodiscard]] QImage scaledToFit(const QImage &pixels, QSize devicePixels);

} // namespace Orbita
