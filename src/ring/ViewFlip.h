#pragma once

#include <QPointF>
#include <QRectF>

namespace Orbita {

/// Between the ring's space (y upwards) and the widget's (y downwards), both ways. The only place where y turns over.
struct ViewFlip {
    double height = 0.0; ///< of the view, points

    [[nodiscard]] QPointF operator()(QPointF point) const { return {point.x(), height - point.y()}; }
    [[nodiscard]] QRectF operator()(const QRectF &rect) const
    {
        return {rect.x(), height - rect.y() - rect.height(), rect.width(), rect.height()};
    }
};

} // namespace Orbita
