#include "settings/triggers/FingerSpreadDetector.h"

#include <cmath>
#include <limits>

namespace Orbita {

bool FingerSpreadDetector::onTouches(int fingers, const Touches &touching)
{
    if (touching.isEmpty() || touching.size() != fingers) {
        m_startDistance = 0.0F;
        return false;
    }
    const float now = spread(touching);
    if (!std::isfinite(now)) // a pad gone mad
        return false;
    if (m_startDistance == 0.0F) {
        m_startDistance = now;
        return false;
    }
    if (double(now) <= double(m_startDistance) * requiredGrowth)
        return false;
    m_startDistance = std::numeric_limits<float>::max();
    return true;
}

} // namespace Orbita
