#pragma once

#include "platform/DesktopAppearance.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <functional>
#include <vector>

namespace Orbita {

/// Whether things glide to their new state or take it at once.
enum class Animated { No, Yes };

/// The course of an animation from 0 to 1 at \a progress in [0, 1]: quick away, gently in.
[[nodiscard]] double eased(double progress);

/// Drives every animation of the rings. Ticks only while something moves, so a standing ring costs nothing.
class AnimationClock : public QObject {
    Q_OBJECT
public:
    using Time = std::chrono::duration<double>; ///< seconds since some fixed moment

    /// How long a movement takes where nothing else is said.
    static constexpr Time defaultDuration{0.25};

    /// Hears the time of a frame and answers whether it wants the next one.
    using Step = std::function<bool(Time now)>;

    /// \a appearance says whether animations are to be left out.
    explicit AnimationClock(const DesktopAppearance &appearance, QObject *parent = nullptr);

    [[nodiscard]] virtual Time now() const = 0;
    /// The default duration, or 0 when the user asked for less motion.
    [[nodiscard]] Time duration() const;
    /// Calls \a step on every frame from the next one on, until it answers false or \a context is gone.
    void animate(QObject *context, Step step);
    [[nodiscard]] bool isTicking() const { return !m_animations.empty(); }

protected:
    /// Begins or ends the calls of tick().
    virtual void setTicking(bool ticking) = 0;
    void tick();

private:
    struct Animation {
        QPointer<QObject> context;
        Step step;
    };
    const DesktopAppearance &m_appearance;
    std::vector<Animation> m_animations;
};

/// The clock of a running program: a timer at the screen's refresh rate.
class FrameClock final : public AnimationClock {
    Q_OBJECT
public:
    explicit FrameClock(const DesktopAppearance &appearance, QObject *parent = nullptr);

    [[nodiscard]] Time now() const override;

protected:
    void setTicking(bool ticking) override;

private:
    QElapsedTimer m_elapsed;
    QTimer m_timer;
};

} // namespace Orbita
