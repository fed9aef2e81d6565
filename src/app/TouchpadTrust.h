#pragma once

#include <QObject>

namespace Orbita {

class AppSettings;
class InputAccess;
class UserNotifications;

/// Tells the user, once in a run of the program, when the trigger that they chose needs a touchpad and none may be
/// read.
class TouchpadTrust final : public QObject {
    Q_OBJECT
public:
    /// Looks again whenever the handlers are started and whenever a touchpad comes or goes. All are borrowed.
    TouchpadTrust(AppSettings &settings, InputAccess &access, UserNotifications &notifications);

    void makeTrustedIfNeccessary();

private:
    AppSettings &m_settings;
    InputAccess &m_access;
    UserNotifications &m_notifications;
    bool m_hasTold = false;
};

} // namespace Orbita
