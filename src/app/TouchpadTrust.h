#pragma once

#include <QObject>

namespace Orbita {

class AppSettings;
class InputAccess;
class SessionState;
class UserNotifications;

/// Tells the user, once in a run of the program, when the trigger that they chose needs a touchpad and none may be
/// read although they sit before it: while the session is not usable, the touchpads are somebody else's.
class TouchpadTrust final : public QObject {
    Q_OBJECT
public:
    /// Looks again whenever the handlers are started, a touchpad comes or goes or the session is another's or the
    /// user's again. All are borrowed.
    TouchpadTrust(AppSettings &settings, InputAccess &access, const SessionState &session,
                  UserNotifications &notifications);

    void makeTrustedIfNeccessary();

private:
    AppSettings &m_settings;
    InputAccess &m_access;
    const SessionState &m_session;
    UserNotifications &m_notifications;
    bool m_hasTold = false;
};

} // namespace Orbita
