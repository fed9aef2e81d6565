#pragma once

#include <QByteArray>
#include <QString>

namespace Orbita {

/// The SVG document in the file at \a path, unpacked when it is compressed; empty when it cannot be read or is unsafe
/// to draw: larger than 8 MiB, nested deeper than 200 elements (counting through references), drawing more than
/// 200,000 elements or any of them within itself, or showing a picture from another file.
[[nodiscard]] QByteArray readSvg(const QString &path);

/// Whether drawing \a document is safe by the rules above. Any input is fine.
[[nodiscard]] bool isSafeSvg(const QByteArray &document);

} // namespace Orbita
