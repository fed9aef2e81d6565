#include "settings/triggers/FingerSpreadDetector.h"

#include <cmath>
#include <limits>

namespace Orbita {

namespace {

/// \a touching is not empty.
float spreadOf(const Touches &touching)
{
    QPointF centroid;
    for (const Touch &touch : touching)
        centroid += touch.normalizedPosition;
    centroid /= double(touching.size());
    float sum = 0.0F;
    for (const Touch &touch : touching) {
        const QPointF offset = touch.normalizedPosition - centroid;
        sum += std::sqrt(float(QPointF::dotProduct(offset, offset)));
    }
    return sum / float(touching.size());
}

} // namespace

bool FingerSpreadDetector::onTouches(int fingers, const Touches &touching)
{
    if (touching.isEmpty() || touching.size() != fingers) {
        m_startDistance = 0.0F;
        return false;
    }
    const float spread = spreadOf(touching);
    if (!std::isfinite(spread)) // a pad gone mad
        return false;
    if (m_startDistance == 0.0F) {
        m_startDistance = spread;
        return false;
    }
    if (double(spread) <= double(m_startDistance) * requiredGrowth)
        return false;
    m_startDistance = std::numeric_limits<float>::max();
    return true;
}

} // namespace Orbita
