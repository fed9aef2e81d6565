#pragma once

#include "ring/AnimationClock.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace Orbita {

class Stage;

/// Fades a window in and out.
class WindowFade : public QObject {
    Q_OBJECT
public:
    /// \a window, which stands on \a stage, and \a clock outlive the fade.
    WindowFade(QWidget &window, Stage &stage, AnimationClock &clock, QObject *parent = nullptr);

    /// The window's opacity now, 0 to 1.
    [[nodiscard]] double value() const { return m_value; }
    /// Sets the opacity at once; a fade under way ends and never finishes.
    void setValue(double opacity);
    /// Fades from the present opacity to \a opacity, at once where motion is reduced or \a animated says so.
    ///
    /// \a finished is called from the event loop, never from within this call. A fade that another one or setValue()
    /// replaces never finishes.
    void fadeTo(double opacity, std::function<void()> finished = {}, Animated animated = Animated::Yes);

private:
    struct Course {
        double from = 0.0;
        double to = 0.0;
        AnimationClock::Time start;
        AnimationClock::Time duration;
    };
    bool step(AnimationClock::Time now);
    void show(double opacity);
    void finish();

    QWidget &m_window;
    Stage &m_stage;
    AnimationClock &m_clock;
    double m_value = 1.0;
    std::optional<Course> m_course;
    std::function<void()> m_finished;
    bool m_ticking = false;
    quint64 m_generation = 0; ///< tells a fade from the one that replaced it
};

} // namespace Orbita
