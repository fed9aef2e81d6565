#include "app/TouchpadTrust.h"

#include "app/Log.h"
#include "platform/InputAccess.h"
#include "platform/SessionState.h"
#include "platform/UserNotifications.h"
#include "settings/AppSettings.h"
#include "settings/triggers/TriggerMatch.h"

namespace Orbita {

TouchpadTrust::TouchpadTrust(AppSettings &settings, InputAccess &access, const SessionState &session,
                             UserNotifications &notifications)
    : m_settings(settings), m_access(access), m_session(session), m_notifications(notifications)
{
    connect(&settings, &AppSettings::handlersStarting, this, &TouchpadTrust::makeTrustedIfNeccessary);
    connect(&access, &InputAccess::changed, this, &TouchpadTrust::makeTrustedIfNeccessary);
    connect(&session, &SessionState::changed, this, &TouchpadTrust::makeTrustedIfNeccessary);
}

void TouchpadTrust::makeTrustedIfNeccessary()
{
    if (m_hasTold || !m_session.isUsable() || triggerTap(m_settings.gestureSettings()) != TriggerTap::Touch
        || m_access.touchpads() != InputAccess::Touchpads::Refused)
        return;
    m_hasTold = true;
    qCWarning(lcApp, "we're not trusted");
    m_notifications.notify(tr("Orbita may not watch the touchpad"),
                           tr("Install the udev rule that comes with Orbita and log in again, or choose a trigger that "
                              "needs no touchpad."));
}

} // namespace Orbita
