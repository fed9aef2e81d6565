#include "editors/AutosaveTimer.h"

#include "platform/Scheduler.h"

#include <utility>

namespace Orbita {

namespace {

using namespace std::chrono_literals;

constexpr auto pause = 1s;
constexpr int maximumLooks = 10;

} // namespace

AutosaveTimer::AutosaveTimer(Scheduler &scheduler, std::function<void()> save)
    : m_scheduler(scheduler), m_save(std::move(save))
{
}

void AutosaveTimer::noteChange()
{
    m_hasChanged = true;
    if (std::exchange(m_isWaiting, true))
        return;
    m_looks = 0;
    wait();
}

void AutosaveTimer::wait()
{
    m_hasChanged = false;
    m_scheduler.after(pause, *this, [this] { look(); });
}

void AutosaveTimer::look()
{
    if (m_hasChanged && ++m_looks < maximumLooks) {
        wait();
        return;
    }
    m_isWaiting = false;
    m_save();
}

} // namespace Orbita
