#include "ring/RoundedRegion.h"

#include <QPainterPath>

namespace Orbita {

QRegion roundedRegion(QSize size, int inset)
{
    QPainterPath path;
    path.addRoundedRect(QRectF(QPointF(), size).adjusted(inset, inset, -inset, -inset), panelCornerRadius,
                        panelCornerRadius);
    return QRegion(path.toFillPolygon().toPolygon());
}

} // namespace Orbita
