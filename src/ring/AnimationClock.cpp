#include "ring/AnimationClock.h"

#include <QEasingCurve>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace Orbita {

namespace {

constexpr double slowestRate = 30.0; // frames each second
constexpr double fastestRate = 144.0;

QEasingCurve makeCurve()
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.25, 0.1}, {0.25, 1.0}, {1.0, 1.0});
    return curve;
}

int frameInterval() // milliseconds
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return int(1000.0 / std::clamp(screen ? screen->refreshRate() : 60.0, slowestRate, fastestRate));
}

} // namespace

double eased(double progress)
{
    static const QEasingCurve curve = makeCurve();
    return curve.valueForProgress(progress);
}

AnimationClock::AnimationClock(const DesktopAppearance &appearance, QObject *parent)
    : QObject(parent), m_appearance(appearance)
{
}

AnimationClock::Time AnimationClock::duration() const
{
    return m_appearance.isMotionReduced() ? Time::zero() : defaultDuration;
}

void AnimationClock::animate(QObject *context, Step step)
{
    const bool wasTicking = isTicking();
    m_animations.push_back({context, std::move(step)});
    if (!wasTicking)
        setTicking(true);
}

void AnimationClock::tick()
{
    const Time time = now();
    // A step may begin another animation, so the list must not be walked while steps run.
    std::vector<Animation> running = std::exchange(m_animations, {});
    std::erase_if(running, [time](const Animation &each) { return !each.context || !each.step(time); });
    std::move(m_animations.begin(), m_animations.end(), std::back_inserter(running));
    m_animations = std::move(running);
    if (!isTicking())
        setTicking(false);
}

FrameClock::FrameClock(const DesktopAppearance &appearance, QObject *parent) : AnimationClock(appearance, parent)
{
    m_elapsed.start();
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &FrameClock::tick);
}

AnimationClock::Time FrameClock::now() const
{
    return std::chrono::nanoseconds(m_elapsed.nsecsElapsed());
}

void FrameClock::setTicking(bool ticking)
{
    if (ticking)
        m_timer.start(frameInterval());
    else
        m_timer.stop();
}

} // namespace Orbita
