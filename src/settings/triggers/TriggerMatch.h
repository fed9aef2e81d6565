#pragma once

#include "settings/SettingValues.h"

/// What each trigger listens to, and for what.
namespace Orbita {

/// The event taps that triggers are detected with.
enum class TriggerTap { None, Touch, OtherMouseDown, MouseMoved };

/// The one tap that \a trigger needs.
[[nodiscard]] constexpr TriggerTap triggerTap(GestureTrigger trigger)
{
    switch (trigger) {
    case GestureTriggerNone:
        return TriggerTap::None;
    case GestureTriggerMouseCircle:
        return TriggerTap::MouseMoved;
    case GestureTriggerMiddleButton:
    case GestureTriggerButton4:
    case GestureTriggerButton5:
        return TriggerTap::OtherMouseDown;
    default:
        return TriggerTap::Touch;
    }
}

/// How many fingers have to rest on a touchpad; 0 when \a trigger is not about resting.
[[nodiscard]] constexpr int restingFingers(GestureTrigger trigger)
{
    if (trigger == GestureTriggerThreeFingerRest)
        return 3;
    return trigger == GestureTriggerFourFingerRest ? 4 : 0;
}

/// How many fingers have to spread apart on a touchpad; 0 when \a trigger is not about spreading.
[[nodiscard]] constexpr int spreadingFingers(GestureTrigger trigger)
{
    if (trigger == GestureTriggerThreeFingerSpread)
        return 3;
    return trigger == GestureTriggerFourFingerSpread ? 4 : 0;
}

/// The number of the mouse button that \a trigger, one of the three buttons, waits for.
[[nodiscard]] constexpr int triggerButtonNumber(GestureTrigger trigger)
{
    if (trigger == GestureTriggerButton4)
        return 3;
    return trigger == GestureTriggerButton5 ? 4 : 2;
}

} // namespace Orbita
