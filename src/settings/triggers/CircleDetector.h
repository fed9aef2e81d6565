#pragma once

#include <QPointF>
#include <QVarLengthArray>

#include <chrono>

namespace Orbita {

/// Finds out whether the pointer draws a circle, clockwise and within a second.
///
/// A circle is at least five steps from one sample of the pointer to the next, each forward by more than smallestStep
/// about the centroid of all samples of the last second, that together lead further than smallestSweep away from the
/// oldest of those samples. The samples are more than smallestRadius from the centroid on average, and none is nearer
/// to it than deadRadius.
class CircleDetector {
public:
    using Time = std::chrono::steady_clock::time_point;

    static constexpr std::chrono::milliseconds samplingInterval{50};
    static constexpr std::chrono::milliseconds sampleAge{1000};
    static constexpr qsizetype fewestSamples = 6;
    static constexpr float smallestRadius = 20.0F; ///< points
    static constexpr float deadRadius = 5.0F;      ///< points
    static constexpr double smallestStep = 0.15;   ///< radians

    /// Whether a sample of the pointer taken at \a now counts: samplingInterval has passed since the last that did.
    [[nodiscard]] bool isDue(Time now) const;
    /// The pointer is at \a position (in points, y upwards) at \a now, which is never before the last time. Returns
    /// whether that completes a circle; the next one is then drawn afresh. Ignored when no sample is due.
    [[nodiscard]] bool onPointer(QPointF position, Time now);

private:
    struct Sample {
        QPointF position;
        Time time;
    };
    /// As many as fit in sampleAge, both ends included.
    using Samples = QVarLengthArray<Sample, sampleAge / samplingInterval + 1>;

    [[nodiscard]] static bool isCircle(const Samples &samples);

    Samples m_samples; ///< the oldest first
};

} // namespace Orbita
