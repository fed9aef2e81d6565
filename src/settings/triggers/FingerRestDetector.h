#pragma once

#include "platform/Touch.h"

#include <QQueue>

#include <chrono>

namespace Orbita {

/// Finds out whether a number of fingers rests on a touchpad: whether they are where they were restDelay ago.
///
/// Its owner keeps the time: for each check that onTouches() asks for it calls check() once, restDelay later. Checks
/// may overlap. They are the detector's only memory of time, so it can be left alone and used again at any moment.
class FingerRestDetector {
public:
    static constexpr std::chrono::milliseconds restDelay{300};
    /// How far fingers that rest may have moved on average, less than which they rest; the pad's sides are 1 long.
    static constexpr float restDistance = 0.025F;

    /// The pad is now touched by \a touching. Returns whether check() is to be called restDelay from now, which may be
    /// when there are \a fingers of them: for every other such event in a row, beginning with the second.
    /// No fingers at all let every check come out false that is still to be made on those before.
    [[nodiscard]] bool onTouches(int fingers, const Touches &touching);
    /// The fingers pinch, so they do not rest: every check that is still to be made on them comes out false.
    void onMagnify();
    /// Makes the oldest check that was asked for: whether the same fingers touch the pad now as then, and rested.
    [[nodiscard]] bool check();

private:
    QQueue<Touches> m_captured; ///< what touched the pad when each check was asked for, the oldest first
    Touches m_current;
    bool m_isRestPossible = false; ///< the next event with the right number of fingers asks for a check
};

} // namespace Orbita
