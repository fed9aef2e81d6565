#include "ring/BubblePlacement.h"

#include <algorithm>

namespace Orbita {

namespace {

constexpr double labelMargin = 5.0; // left and right of the text, part of the label
constexpr double bezelWidth = 5.0;  // between label and outline
constexpr double bezelHeight = 4.0;
constexpr double arrowHeight = 7.0;
constexpr double arrowHalfWidth = 8.0;
constexpr double cornerRadius = 7.0;

/// The rounded body in the window, y downwards.
QRectF bodyIn(QSizeF window, BubbleEdge edge)
{
    QRectF body = QRectF(QPointF(), window).adjusted(bubbleShadow, bubbleShadow, -bubbleShadow, -bubbleShadow);
    // The arrow points at the item, so it stands on the far side of the edge's name.
    if (edge == BubbleEdge::Bottom)
        body.setTop(body.top() + arrowHeight);
    else
        body.setBottom(body.bottom() - arrowHeight);
    return body;
}

} // namespace

BubblePlacement placeBubble(QSizeF text, const QRectF &item, const QRectF &screen)
{
    const QSizeF body(text.width() + 2 * (labelMargin + bezelWidth), text.height() + 2 * bezelHeight);
    const double height = body.height() + arrowHeight;
    const bool fitsBelow = item.y() - height >= screen.y();
    const double bottom = fitsBelow ? item.y() - height : item.y() + item.height();
    const double center = item.x() + item.width() * 0.5;
    // A body wider than the screen keeps its beginning in sight.
    const double rightmost = std::max(screen.x(), screen.x() + screen.width() - body.width());
    const double left = std::clamp(center - body.width() * 0.5, screen.x(), rightmost);
    const double farthest = cornerRadius + arrowHalfWidth; // of the tip from the body's ends
    const double arrow = std::clamp(center - left, farthest, std::max(farthest, body.width() - farthest));
    const QRectF outline(left, bottom, body.width(), height);
    return {outline.adjusted(-bubbleShadow, -bubbleShadow, bubbleShadow, bubbleShadow),
            fitsBelow ? BubbleEdge::Bottom : BubbleEdge::Top, arrow + bubbleShadow};
}

QPainterPath bubbleOutline(QSizeF window, BubbleEdge edge, double arrow)
{
    const QRectF body = bodyIn(window, edge);
    const bool pointsUp = edge == BubbleEdge::Bottom;
    const double base = pointsUp ? body.top() : body.bottom();
    const double tip = pointsUp ? base - arrowHeight : base + arrowHeight;
    QPainterPath outline;
    outline.addRoundedRect(body, cornerRadius, cornerRadius);
    QPainterPath triangle(QPointF(arrow - arrowHalfWidth, base));
    // Curves that leave the body level and meet in the tip look softer than straight sides.
    triangle.cubicTo({arrow - arrowHalfWidth * 0.4, base}, {arrow - 1.5, tip}, {arrow, tip});
    triangle.cubicTo({arrow + 1.5, tip}, {arrow + arrowHalfWidth * 0.4, base}, {arrow + arrowHalfWidth, base});
    triangle.closeSubpath();
    return outline.united(triangle);
}

QRectF bubbleLabel(QSizeF window, BubbleEdge edge)
{
    return bodyIn(window, edge).adjusted(bezelWidth, bezelHeight, -bezelWidth, -bezelHeight);
}

} // namespace Orbita
