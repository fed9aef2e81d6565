#include "platform/Touch.h"

#include <cmath>

namespace Orbita {

float spread(const Touches &touches)
{
    QPointF centroid;
    for (const Touch &touch : touches)
        centroid += touch.normalizedPosition;
    centroid /= double(touches.size());
    float sum = 0.0F;
    for (const Touch &touch : touches) {
        const QPointF offset = touch.normalizedPosition - centroid;
        sum += std::sqrt(float(QPointF::dotProduct(offset, offset)));
    }
    return sum / float(touches.size());
}

} // namespace Orbita
