#include "settings/SettingValues.h"

namespace Orbita {

namespace {

/// \a number as one of the settings \a first to \a last, or \a fallback when it is none of them.
template <typename Setting>
Setting oneOf(Setting first, Setting last, qint64 number, Setting fallback)
{
    return number >= qint64(first) && number <= qint64(last) ? Setting(number) : fallback;
}

} // namespace

GestureTrigger gestureTriggerFromStored(qint64 number)
{
    if (number == GestureTriggerNone)
        return GestureTriggerNone;
    return oneOf(GestureTriggerThreeFingerRest, GestureTriggerButton5, number, GestureTriggerThreeFingerRest);
}

RunningAppsStyle runningAppsStyleFromStored(qint64 number)
{
    return oneOf(RunningAppsStyle::Hidden, RunningAppsStyle::Colored, number, RunningAppsStyle::Normal);
}

MenuSize menuSizeFromStored(qint64 number)
{
    return oneOf(MenuSize::Small, MenuSize::ExtraLarge, number, MenuSize::Small);
}

MenuPosition menuPositionFromStored(qint64 number)
{
    return oneOf(MenuPosition::AroundPointer, MenuPosition::ScreenCenter, number, MenuPosition::AroundPointer);
}

SwiftMode swiftModeFromStored(qint64 number)
{
    return oneOf(SwiftMode::Off, SwiftMode::RunningAppsOnly, number, SwiftMode::Off);
}

TitleDisplay titleDisplayFromStored(qint64 number)
{
    return oneOf(TitleDisplay::WhileHovered, TitleDisplay::Always, number, TitleDisplay::WhileHovered);
}

} // namespace Orbita
