#pragma once

#include "ring/RingItem.h"
#include "ring/ViewFlip.h"

class QPainter;

namespace Orbita {

class RenderedPictures;

/// How many device pixels the longer side of the item's picture takes where the item belongs.
[[nodiscard]] int pictureSide(const RingItem &item, double devicePixelRatio);

/// Paints \a item where it is seen now, with \a painter in widget points. \a flip leads from the ring's space to them.
void paintRingItem(QPainter &painter, const RingItem &item, const ViewFlip &flip, RenderedPictures &pictures);

} // namespace Orbita
