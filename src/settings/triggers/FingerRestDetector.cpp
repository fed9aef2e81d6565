#include "settings/triggers/FingerRestDetector.h"

#include <algorithm>
#include <cmath>

namespace Orbita {

namespace {

/// More checks than the fastest touchpad can ask for within restDelay.
constexpr qsizetype maximumChecks = 512;

float distance(QPointF from, QPointF to)
{
    const auto dx = float(from.x() - to.x());
    const auto dy = float(from.y() - to.y());
    return std::sqrt(dx * dx + dy * dy);
}

bool haveRested(const Touches &before, const Touches &now)
{
    if (before.isEmpty() || before.size() != now.size())
        return false;
    float sum = 0.0F;
    for (const Touch &touch : before) {
        const auto same = std::ranges::find(now, touch.identity, &Touch::identity);
        if (same == now.end())
            return false;
        sum += distance(touch.normalizedPosition, same->normalizedPosition);
    }
    return sum / float(before.size()) < FingerRestDetector::restDistance;
}

} // namespace

bool FingerRestDetector::onTouches(int fingers, const Touches &touching)
{
    m_current = touching;
    if (touching.isEmpty())
        return false;
    if (touching.size() == fingers && m_isRestPossible) {
        m_isRestPossible = false;
        if (m_captured.size() == maximumChecks)
            return false;
        m_captured.enqueue(touching);
        return true;
    }
    m_isRestPossible = touching.size() <= fingers;
    return false;
}

void FingerRestDetector::onMagnify()
{
    m_current.clear();
    for (Touches &captured : m_captured)
        captured.clear();
}

bool FingerRestDetector::check()
{
    return !m_captured.isEmpty() && haveRested(m_captured.dequeue(), m_current);
}

} // namespace Orbita
