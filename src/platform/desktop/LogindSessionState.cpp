#include "platform/desktop/LogindSessionState.h"

#include <utility>

namespace Orbita {

LogindSessionState::LogindSessionState(QObject *parent) : SessionState(parent)
{
    connect(&m_session, &LogindSession::changed, this, &LogindSessionState::update);
    connect(&m_screenSavers, &ScreenSavers::changed, this, &LogindSessionState::update);
}

void LogindSessionState::follow(const QDBusConnection &systemBus, const QDBusConnection &sessionBus)
{
    m_session.follow(systemBus);
    m_screenSavers.follow(sessionBus);
}

void LogindSessionState::update()
{
    const bool isLocked = m_session.isLocked() || m_screenSavers.areActive();
    const State state = !m_session.isActive() ? State::InBackground : isLocked ? State::Locked : State::Active;
    if (std::exchange(m_state, state) != state)
        Q_EMIT changed();
}

} // namespace Orbita
