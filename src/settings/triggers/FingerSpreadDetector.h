#pragma once

#include "platform/Touch.h"

namespace Orbita {

/// Finds out whether a number of fingers spreads apart on a touchpad, at any speed. The spread is the mean distance of
/// the fingers from their centroid.
class FingerSpreadDetector {
public:
    /// How many times the spread that was measured first the spread has to exceed.
    static constexpr double requiredGrowth = 1.5;

    /// The pad is now touched by \a touching. Returns whether \a fingers have just spread apart, which they can do
    /// once: another number of touching fingers, which may be none, has to come in between.
    [[nodiscard]] bool onTouches(int fingers, const Touches &touching);

private:
    float m_startDistance = 0.0F; ///< the spread measured first; 0 before that; the largest number after spreading
};

} // namespace Orbita
