#include "app/TouchpadTrust.h"

#include "platform/InputAccess.h"
#include "platform/memory/MemorySessionState.h"
#include "platform/memory/MemoryUserNotifications.h"
#include "support/MemoryDesktop.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

class PlantedInputAccess final : public InputAccess {
public:
    [[nodiscard]] Touchpads touchpads() const override { return answer; }
    Touchpads answer = Touchpads::None;
};

TEST(TouchpadTrust, tellsOnceWhenTheChosenTriggerIsRefusedItsTouchpads)
{
    using Touchpads = InputAccess::Touchpads;
    MemoryDesktop desktop;
    PlantedInputAccess access;
    MemoryUserNotifications notifications;
    MemorySessionState session;
    const TouchpadTrust trust(desktop.settings, access, session, notifications);
    const auto told = [&] { return notifications.notifications.size(); };
    for (const Touchpads answer : {Touchpads::None, Touchpads::Trusted}) {
        access.answer = answer;
        desktop.settings.startHandlers();
        EXPECT_EQ(told(), 0);
    }
    access.answer = Touchpads::Refused;
    desktop.settings.setGestureSettings(GestureTriggerMouseCircle);
    EXPECT_EQ(told(), 0) << "the pointer needs no touchpad";
    testing::internal::CaptureStderr();
    desktop.settings.setGestureSettings(GestureTriggerFourFingerSpread);
    EXPECT_EQ(told(), 1);
    Q_EMIT access.changed();
    desktop.settings.startHandlers();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "orbita.app: we're not trusted\n");
    EXPECT_EQ(told(), 1);
}

TEST(TouchpadTrust, looksAgainWhenATouchpadComesWhileTheUserSitsBeforeIt)
{
    MemoryDesktop desktop;
    PlantedInputAccess access;
    MemoryUserNotifications notifications;
    MemorySessionState session;
    const TouchpadTrust trust(desktop.settings, access, session, notifications);
    access.answer = InputAccess::Touchpads::Refused;
    session.setState(SessionState::State::InBackground);
    Q_EMIT access.changed();
    EXPECT_EQ(notifications.notifications.size(), 0);
    session.setState(SessionState::State::Active);
    EXPECT_EQ(notifications.notifications.size(), 1);
}

} // namespace
} // namespace Orbita
