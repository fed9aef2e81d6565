#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QSizeF>

namespace Orbita {

/// Which side of an item its bubble stands on, as the user sees it.
enum class BubbleEdge { Bottom, Top };

/// Where a title bubble stands. Global points, y upwards.
struct BubblePlacement {
    QRectF frame; ///< of the window: the body, the arrow and room for the shadow all round
    BubbleEdge edge = BubbleEdge::Bottom;
    double arrow = 0.0; ///< the x of the arrow's tip, from the left of the frame
};

/// Room for the shadow round the body, points.
inline constexpr double bubbleShadow = 10.0;

/// The bubble for a label of size \a text at \a item: below it, or above it where the screen ends; moved sideways as
/// far as it takes to stay on \a screen.
[[nodiscard]] BubblePlacement placeBubble(QSizeF text, const QRectF &item, const QRectF &screen);

/// The outline of body and arrow in the window, points, y downwards.
[[nodiscard]] QPainterPath bubbleOutline(QSizeF window, BubbleEdge edge, double arrow);
/// Where the label stands in the window.
[[nodiscard]] QRectF bubbleLabel(QSizeF window, BubbleEdge edge);

} // namespace Orbita
