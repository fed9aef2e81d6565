#include "settings/triggers/CircleDetector.h"

#include "base/Angle.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace Orbita {

namespace {

constexpr double smallestSweep = 1.6 * Pi;

/// How far the pointer has swept clockwise about a centre, followed from angle to angle.
class Sweep {
public:
    /// Goes on to \a angle, which is in [0, 2 pi). Returns whether the sweep is a circle now.
    [[nodiscard]] bool advanceTo(double angle)
    {
        if (!m_first)
            m_first = angle;
        if (m_previous && !stepTo(angle)) {
            m_run = 0;
            m_smallestStep = std::numeric_limits<double>::max();
            m_previous.reset();
            return false;
        }
        m_previous = angle;
        ++m_run;
        return m_run >= CircleDetector::fewestSamples && m_smallestStep > CircleDetector::smallestStep
            && travelled(angle) > smallestSweep;
    }

private:
    /// False when \a angle is not ahead.
    [[nodiscard]] bool stepTo(double angle)
    {
        const bool crossesTwelve = *m_previous > 7.0 * Pi / 4.0 && angle < Pi / 4.0;
        double step = angle - *m_previous;
        if (step <= 0.0 && crossesTwelve)
            step += TwoPi;
        if (step <= 0.0)
            return false;
        m_smallestStep = std::min(m_smallestStep, step);
        return true;
    }
    [[nodiscard]] double travelled(double angle) const
    {
        return angle < *m_first ? angle + TwoPi - *m_first : angle - *m_first;
    }

    std::optional<double> m_first; ///< outlasts a break, so that the sweep is measured from the oldest sample on
    std::optional<double> m_previous;
    qsizetype m_run = 0; ///< samples since the last break
    double m_smallestStep = std::numeric_limits<double>::max();
};

} // namespace

bool CircleDetector::isDue(Time now) const
{
    return m_samples.isEmpty() || now - m_samples.last().time >= samplingInterval;
}

bool CircleDetector::onPointer(QPointF position, Time now)
{
    if (!isDue(now))
        return false;
    const auto young = std::ranges::find_if(m_samples, [now](const Sample &s) { return now - s.time <= sampleAge; });
    m_samples.erase(m_samples.begin(), young);
    m_samples.append({position, now});
    if (!isCircle(m_samples))
        return false;
    m_samples.clear();
    return true;
}

bool CircleDetector::isCircle(const Samples &samples)
{
    if (samples.size() < fewestSamples)
        return false;
    QPointF centroid;
    for (const Sample &sample : samples)
        centroid += sample.position;
    centroid /= double(samples.size());

    float sum = 0.0F;
    for (const Sample &sample : samples) {
        const QPointF offset = sample.position - centroid;
        const float distance = std::sqrt(float(QPointF::dotProduct(offset, offset)));
        if (distance < deadRadius)
            return false;
        sum += distance;
    }
    // Also stops here what no number is.
    if (!(sum / float(samples.size()) > smallestRadius))
        return false;

    Sweep sweep;
    return std::ranges::any_of(
        samples, [&](const Sample &sample) { return sweep.advanceTo(clockwiseAngle(sample.position - centroid)); });
}

} // namespace Orbita
