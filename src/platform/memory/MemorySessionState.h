#pragma once

#include "platform/SessionState.h"

#include <utility>

namespace Orbita {

/// A session that is what a test says.
class MemorySessionState final : public SessionState {
    Q_OBJECT
public:
    using SessionState::SessionState;

    [[nodiscard]] State state() const override { return m_state; }
    void setState(State state)
    {
        if (std::exchange(m_state, state) != state)
            Q_EMIT changed();
    }

private:
    State m_state = State::Active;
};

} // namespace Orbita
