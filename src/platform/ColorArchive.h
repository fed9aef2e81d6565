#pragma once

#include <QByteArray>
#include <QColor>

#include <optional>

/// The legacy typed-stream archive (header "streamtyped", version 4, system version 1000) of one colour.
namespace Orbita::ColorArchive {

/// The archive of \a color: calibrated RGB with four floats, or calibrated white with two for grey colours.
[[nodiscard]] QByteArray encode(const QColor &color);

/// The colour in \a archive; nothing when it is no archive of one colour. Untrusted input is fine.
[[nodiscard]] std::optional<QColor> decode(const QByteArray &archive);

} // namespace Orbita::ColorArchive
