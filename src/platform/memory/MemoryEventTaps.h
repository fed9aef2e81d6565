#pragma once

#include "platform/EventTap.h"

namespace Orbita {

/// A tap whose source a test holds in its hands.
template <typename Tap>
class MemoryEventTap : public Tap {
public:
    using Tap::Tap;

    [[nodiscard]] bool isEnabled() const override { return m_enabled; }
    bool setEnabled(bool enabled) override
    {
        if (enabled && sourceLost)
            return false;
        m_enabled = enabled;
        return true;
    }
    /// As if the window system had switched the tap off.
    void loseSource() { m_enabled = false; }

    bool sourceLost = false; ///< while true the tap cannot be enabled

private:
    bool m_enabled = false;
};

// Nothing is heard of what happens while a tap is disabled.

class MemoryMouseUpEventTap final : public MemoryEventTap<MouseUpEventTap> {
    Q_OBJECT
public:
    using MemoryEventTap::MemoryEventTap;

    void release()
    {
        if (isEnabled())
            Q_EMIT mouseUp();
    }
};

class MemoryOtherMouseDownEventTap final : public MemoryEventTap<OtherMouseDownEventTap> {
    Q_OBJECT
public:
    using MemoryEventTap::MemoryEventTap;

    void press(int buttonNumber)
    {
        if (isEnabled())
            Q_EMIT otherMouseDown(buttonNumber);
    }
};

class MemoryMouseMovedEventTap final : public MemoryEventTap<MouseMovedEventTap> {
    Q_OBJECT
public:
    using MemoryEventTap::MemoryEventTap;

    void pause(std::chrono::milliseconds duration) override { paused = duration; }
    /// Goes on after a pause.
    void move()
    {
        paused = {};
        if (isEnabled())
            Q_EMIT mouseMoved();
    }

    std::chrono::milliseconds paused{}; ///< what was asked for since the last movement
};

class MemoryTouchEventTap final : public MemoryEventTap<TouchEventTap> {
    Q_OBJECT
public:
    using MemoryEventTap::MemoryEventTap;

    void touch(const Touches &touching)
    {
        if (isEnabled())
            Q_EMIT gesture(touching);
    }
    void pinch()
    {
        if (isEnabled())
            Q_EMIT magnify();
    }
};

/// The four taps that triggers are made of.
struct MemoryEventTaps {
    MemoryMouseUpEventTap mouseUp;
    MemoryOtherMouseDownEventTap otherMouseDown;
    MemoryMouseMovedEventTap mouseMoved;
    MemoryTouchEventTap touch;
};

} // namespace Orbita
