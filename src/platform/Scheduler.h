#pragma once

#include <chrono>
#include <functional>

class QObject;

namespace Orbita {

/// Does things later.
class Scheduler {
public:
    virtual ~Scheduler() = default;

    /// Calls \a action once, \a delay from now, from the event loop; not at all when \a context is gone by then.
    virtual void after(std::chrono::milliseconds delay, QObject &context, std::function<void()> action) = 0;
};

/// Goes by the clock of the machine.
class TimerScheduler final : public Scheduler {
public:
    void after(std::chrono::milliseconds delay, QObject &context, std::function<void()> action) override;
};

} // namespace Orbita
