#include "ring/RoundedRegion.h"

#include <algorithm>
#include <cmath>

namespace Orbita {

namespace {

/// How far the edge at \a y, points below the top of a corner of \a radius, stands off from the side.
double cornerIndent(double y, double radius)
{
    const double fromCentre = std::max(radius - y, 0.0);
    return radius - std::sqrt(std::max(radius * radius - fromCentre * fromCentre, 0.0));
}

} // namespace

QRegion roundedRegion(QSize size, int inset)
{
    // Row by row: a polygon of whole numbers would cut the corners unevenly.
    const QRect body = QRect(QPoint(), size).adjusted(inset, inset, -inset, -inset);
    const double radius = std::min({panelCornerRadius, body.width() / 2.0, body.height() / 2.0});
    QRegion region;
    for (int row = 0; row < body.height(); ++row) {
        const int toNearestEdge = std::min(row, body.height() - 1 - row);
        if (toNearestEdge >= radius) {
            // All rows between the corners at once.
            const int between = body.height() - 2 * row;
            region += QRect(body.left(), body.top() + row, body.width(), between);
            row += between - 1;
            continue;
        }
        const int indent = int(std::ceil(cornerIndent(toNearestEdge + 0.5, radius) - 0.5));
        region += QRect(body.left() + indent, body.top() + row, body.width() - 2 * indent, 1);
    }
    return region;
}

} // namespace Orbita
