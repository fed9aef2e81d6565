#pragma once

#include "platform/memory/MemoryEventTaps.h"
#include "platform/memory/MemoryHotKeyService.h"
#include "platform/memory/MemoryKeyboardLayout.h"
#include "platform/memory/MemoryStage.h"
#include "settings/triggers/TriggerHandlers.h"
#include "shortcut/MASShortcutMonitors.h"
#include "shortcut/MASShortcutUserDefaultsHotKeys.h"

namespace Orbita {

/// Everything that can trigger the ring, in memory.
struct MemoryTriggers {
    explicit MemoryTriggers(UserDefaults &defaults) : shortcuts(defaults, monitors) {}

    MemoryEventTaps taps;
    MemoryStage stage;
    MemoryHotKeyService hotKeys;
    MemoryKeyboardLayout layout;
    MASShortcutMonitors monitors{hotKeys, layout};
    MASShortcutUserDefaultsHotKeys shortcuts;
    const TriggerSources sources{taps.mouseUp, taps.otherMouseDown, taps.mouseMoved, taps.touch, stage, shortcuts};
};

} // namespace Orbita
