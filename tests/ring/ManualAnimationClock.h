#pragma once

#include "platform/memory/MemoryStage.h"
#include "ring/AnimationClock.h"

namespace Orbita {

/// Made before the clock that looks at it.
struct PlantedAppearance {
    MemoryDesktopAppearance appearance;
};

/// A clock that goes only when a test says so.
class ManualAnimationClock final : public PlantedAppearance, public AnimationClock {
public:
    ManualAnimationClock() : AnimationClock(appearance) {}

    [[nodiscard]] Time now() const override { return m_now; }
    /// Lets time pass and shows one frame, if anything moves.
    void advance(Time time)
    {
        m_now += time;
        if (m_ticking)
            tick();
    }
    /// Whether a timer would be running.
    [[nodiscard]] bool ticks() const { return m_ticking; }

protected:
    void setTicking(bool ticking) override { m_ticking = ticking; }

private:
    Time m_now{100.0};
    bool m_ticking = false;
};

} // namespace Orbita
