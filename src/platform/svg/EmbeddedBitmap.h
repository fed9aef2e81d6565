#pragma once

#include <QStringView>

#include <optional>

namespace Orbita {

/// How many pixels the bitmap has that stands within \a address ("data:image/png;base64,..."), of which \a most are
/// fine. Nothing when it is another address, has more or does not decode: what is no bitmap, renderers may take for an
/// SVG document or the name of a file. Any thread.
[[nodiscard]] std::optional<qint64> embeddedPixels(QStringView address, qint64 most);

} // namespace Orbita
