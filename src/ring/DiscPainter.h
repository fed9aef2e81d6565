#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace Orbita {

/// What a see-through window stands before.
enum class Backdrop {
    Blurred, ///< the compositor blends the window with what is behind it, blurred
    Clear,   ///< the compositor blends it with what is behind it as it is
    None,    ///< nothing is blended: what is left see-through is black
};

/// Whether red, green and blue are each above 0.99.
[[nodiscard]] bool countsAsWhite(const QColor &color);
/// Whether red, green and blue are each below 0.01.
[[nodiscard]] bool countsAsBlack(const QColor &color);

/// The tint that a disc keeps when it is given \a tint. Without blur a colour of brightness above 0.2 that is not
/// white becomes darker by 0.2 and every colour but white opaque; "no tint" (an invalid colour) stays none.
[[nodiscard]] QColor tintFor(const QColor &tint, Backdrop backdrop);

/// What fills a disc of \a tint, an invalid colour for none. Opaque where nothing is blended.
[[nodiscard]] QColor discFill(const QColor &tint, Backdrop backdrop);

/// The veil that a blurred backdrop gets beneath the disc, so that it is light behind a white tint and dark behind any
/// other; transparent on other backdrops.
[[nodiscard]] QColor backdropVeil(const QColor &tint, Backdrop backdrop);

/// Paints the disc within \a bounds, with a white outline and, where it is blended, a faint dark one round that.
void paintDisc(QPainter &painter, const QRectF &bounds, const QColor &tint, Backdrop backdrop);

} // namespace Orbita
