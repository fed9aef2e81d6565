#include "ring/WindowFade.h"

#include "platform/Stage.h"

#include <algorithm>

namespace Orbita {

WindowFade::WindowFade(QWidget &window, Stage &stage, AnimationClock &clock, QObject *parent)
    : QObject(parent), m_window(window), m_stage(stage), m_clock(clock)
{
}

void WindowFade::setValue(double opacity)
{
    ++m_generation;
    m_course.reset();
    m_finished = nullptr;
    show(opacity);
}

void WindowFade::fadeTo(double opacity, std::function<void()> finished, Animated animated)
{
    ++m_generation;
    m_finished = std::move(finished);
    m_course.reset();
    if (animated == Animated::No || m_clock.duration() == AnimationClock::Time::zero()) {
        show(opacity);
        finish();
        return;
    }
    m_course = Course{m_value, opacity, m_clock.now(), m_clock.duration()};
    if (!std::exchange(m_ticking, true))
        m_clock.animate(this, [this](AnimationClock::Time now) { return m_ticking = step(now); });
}

bool WindowFade::step(AnimationClock::Time now)
{
    if (!m_course)
        return false;
    const double progress = std::clamp((now - m_course->start) / m_course->duration, 0.0, 1.0);
    show(m_course->from + (m_course->to - m_course->from) * eased(progress));
    if (progress < 1.0)
        return true;
    show(m_course->to);
    m_course.reset();
    finish();
    return false;
}

void WindowFade::show(double opacity)
{
    m_value = opacity;
    m_window.setWindowOpacity(opacity);
    m_stage.flush();
}

void WindowFade::finish()
{
    const auto tellOwner = [this, generation = m_generation] {
        if (generation == m_generation && m_finished)
            std::exchange(m_finished, nullptr)();
    };
    // The owner may delete the window, which must not happen inside its own call or frame.
    QMetaObject::invokeMethod(this, tellOwner, Qt::QueuedConnection);
}

} // namespace Orbita
