#pragma once

#include <QByteArray>

namespace Orbita {

/// The SVG document in \a content, unpacked when it is compressed, its dashed lines whole; empty when it is none that is
/// safe to draw.
///
/// A safe one makes the renderer open no file and end in good time: It is at most 8 MiB large. It refers to nothing but
/// its own elements, bitmaps that stand within it, and where its links lead. Its elements are nested at most 200 deep,
/// counting through references; they are at most 200,000, and none is drawn within itself or too often. Attributes,
/// entities, texts and styles are bounded as well, and no line is dashed. Any thread.
[[nodiscard]] QByteArray safeSvg(const QByteArray &content);

/// Whether \a document, which is not compressed, is safe by the rules above.
[[nodiscard]] bool isSafeSvg(const QByteArray &document);

} // namespace Orbita
