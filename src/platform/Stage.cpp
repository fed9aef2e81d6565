#include "platform/Stage.h"

namespace Orbita {

QRectF Stage::flipped(const QRectF &rect, double mainHeight)
{
    return {rect.x(), mainHeight - rect.y() - rect.height(), rect.width(), rect.height()};
}

QPointF Stage::flipped(QPointF point, double mainHeight)
{
    return {point.x(), mainHeight - point.y()};
}

} // namespace Orbita
