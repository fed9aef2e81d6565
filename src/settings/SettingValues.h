#pragma once

#include <QtGlobal>

/// The settings that are one of a few numbers. The numbers are what is stored; each function gives the setting that a
/// stored number stands for, whatever it is.
namespace Orbita {

/// What shows the ring besides the keyboard shortcut.
enum GestureTrigger {
    GestureTriggerNone = -1,
    GestureTriggerThreeFingerRest = 1,
    GestureTriggerThreeFingerSpread = 2,
    GestureTriggerFourFingerSpread = 3,
    GestureTriggerFourFingerRest = 4,
    GestureTriggerMouseCircle = 5,
    GestureTriggerMiddleButton = 6,
    GestureTriggerButton4 = 7,
    GestureTriggerButton5 = 8,
};

/// How running applications that no item stands for appear in the ring.
enum class RunningAppsStyle { Hidden = 1, Normal = 2, Colored = 3 };

/// The size of the ring.
enum class MenuSize { Small = 1, Medium = 2, Large = 3, ExtraLarge = 4 };

/// Where the ring appears: around the pointer, or in the middle of the screen that holds the pointer.
enum class MenuPosition { AroundPointer = 1, ScreenCenter = 2 };

/// Which items open as soon as the pointer moves over them.
enum class SwiftMode { Off = 0, Enabled = 1, RunningAppsOnly = 2 };

/// When an item's title is shown.
enum class TitleDisplay { WhileHovered = 0, Always = 1 };

[[nodiscard]] GestureTrigger gestureTriggerFromStored(qint64 number);
[[nodiscard]] RunningAppsStyle runningAppsStyleFromStored(qint64 number);
[[nodiscard]] MenuSize menuSizeFromStored(qint64 number);
[[nodiscard]] MenuPosition menuPositionFromStored(qint64 number);
[[nodiscard]] SwiftMode swiftModeFromStored(qint64 number);
[[nodiscard]] TitleDisplay titleDisplayFromStored(qint64 number);

} // namespace Orbita
