#pragma once

#include "platform/SessionState.h"
#include "platform/desktop/LogindSession.h"
#include "platform/desktop/ScreenSavers.h"

namespace Orbita {

/// What logind says of this program's session, and the desktop's screen saver, which some desktops do not tell logind
/// of. What does not answer has no say.
class LogindSessionState final : public SessionState {
    Q_OBJECT
public:
    explicit LogindSessionState(QObject *parent = nullptr);

    /// Follows both from now on; either bus may be missing. The answers come with later turns of the event loop.
    void follow(const QDBusConnection &systemBus, const QDBusConnection &sessionBus);

    [[nodiscard]] State state() const override { return m_state; }

private:
    void update();

    LogindSession m_session;
    ScreenSavers m_screenSavers;
    State m_state = State::Active;
};

} // namespace Orbita
