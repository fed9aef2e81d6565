#include "ring/BubblePlacement.h"

#include <QTransform>

#include <algorithm>

namespace Orbita {

namespace {

constexpr double labelMargin = 5.0; // left and right of the text, part of the label
constexpr double bezelWidth = 5.0;  // between label and outline
constexpr double bezelHeight = 4.0;
constexpr double arrowHeight = 8.0;
constexpr double arrowHalfWidth = 11.0;
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
    // Drawn for a bubble below its item, whose arrow points up, and turned over for one above.
    const QRectF body = bodyIn(window, BubbleEdge::Bottom);
    const double tip = body.top() - arrowHeight;
    const double corner = 2 * cornerRadius;
    QPainterPath outline(QPointF(body.left() + cornerRadius, body.top()));
    outline.lineTo(arrow - arrowHalfWidth, body.top());
    // Curves that leave the body level and meet in the tip look softer than straight sides.
    outline.cubicTo({arrow - arrowHalfWidth * 0.5, body.top()}, {arrow - 2.5, tip}, {arrow, tip});
    outline.cubicTo({arrow + 2.5, tip}, {arrow + arrowHalfWidth * 0.5, body.top()},
                    {arrow + arrowHalfWidth, body.top()});
    outline.arcTo(body.right() - corner, body.top(), corner, corner, 90, -90);
    outline.arcTo(body.right() - corner, body.bottom() - corner, corner, corner, 0, -90);
    outline.arcTo(body.left(), body.bottom() - corner, corner, corner, 270, -90);
    outline.arcTo(body.left(), body.top(), corner, corner, 180, -90);
    outline.closeSubpath();
    return edge == BubbleEdge::Bottom ? outline : QTransform(1, 0, 0, -1, 0, window.height()).map(outline);
}

QRectF bubbleLabel(QSizeF window, BubbleEdge edge)
{
    return bodyIn(window, edge).adjusted(bezelWidth, bezelHeight, -bezelWidth, -bezelHeight);
}

} // namespace Orbita
