#pragma once

#include <QColor>

namespace Orbita {

/// The grey level of \a color, 0 black to 1 white, with the weights of ITU-R BT.601.
[[nodiscard]] double greyLevel(const QColor &color);

/// Whether what stands on a disc of \a tint has to be dark to be seen: its grey level is above 0.66.
[[nodiscard]] bool isLightTint(const QColor &tint);

/// The colour of running dots and captions on a disc of \a tint: black or white.
[[nodiscard]] QColor highlightColorOn(const QColor &tint);

/// The resting colour of the close button on a disc of \a tint: dark grey or white.
[[nodiscard]] QColor closeButtonColorOn(const QColor &tint);

} // namespace Orbita
