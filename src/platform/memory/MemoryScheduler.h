#pragma once

#include "platform/Scheduler.h"

#include <QPointer>

#include <map>

namespace Orbita {

/// A clock that a test moves on.
class MemoryScheduler final : public Scheduler {
public:
    void after(std::chrono::milliseconds delay, QObject &context, std::function<void()> action) override
    {
        m_actions.emplace(m_now + delay, Action{&context, std::move(action)});
    }

    /// Moves on by \a time, doing on the way what falls due.
    void advance(std::chrono::milliseconds time)
    {
        const auto end = m_now + time;
        while (!m_actions.empty() && m_actions.begin()->first <= end) {
            auto due = m_actions.extract(m_actions.begin());
            m_now = due.key();
            if (due.mapped().context)
                due.mapped().perform();
        }
        m_now = end;
    }

private:
    struct Action {
        QPointer<QObject> context;
        std::function<void()> perform;
    };

    std::chrono::milliseconds m_now{0};
    std::multimap<std::chrono::milliseconds, Action> m_actions;
};

} // namespace Orbita
