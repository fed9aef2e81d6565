#pragma once

#include <QtGlobal>

namespace Orbita {

/// The modifier bits of a system-wide hot key.
enum HotKeyModifier : quint32 {
    CommandKey = 0x100, ///< the Super key, between Control and Alt
    ShiftKey = 0x200,
    OptionKey = 0x800, ///< the Alt key
    ControlKey = 0x1000,
};

/// A key with modifiers, as hot keys are registered.
struct KeyCombination {
    quint32 keyCode = 0;   ///< a virtual key code, as in KeyCodes
    quint32 modifiers = 0; ///< HotKeyModifier bits

    friend bool operator==(KeyCombination, KeyCombination) = default;
};

} // namespace Orbita
