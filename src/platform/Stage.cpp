#include "platform/Stage.h"

namespace Orbita {

QPointF Stage::fromDesktop(QPointF point) const
{
    const QRectF main = mainScreenOnDesktop();
    return {point.x() - main.left(), main.bottom() - point.y()};
}

QPointF Stage::toDesktop(QPointF point) const
{
    const QRectF main = mainScreenOnDesktop();
    return {point.x() + main.left(), main.bottom() - point.y()};
}

QRectF Stage::fromDesktop(const QRectF &rect) const
{
    return {fromDesktop(rect.bottomLeft()), rect.size()};
}

QRectF Stage::toDesktop(const QRectF &frame) const
{
    return {toDesktop(frame.bottomLeft()), frame.size()};
}

} // namespace Orbita
