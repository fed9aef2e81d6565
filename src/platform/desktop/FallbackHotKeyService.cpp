#include "platform/desktop/FallbackHotKeyService.h"

#include "platform/desktop/PlasmaHotKeyService.h"

namespace Orbita {

FallbackHotKeyService::FallbackHotKeyService(HotKeyService &windowSystem, PlasmaHotKeyService &plasma, QObject *parent)
    : HotKeyService(parent), m_windowSystem(windowSystem), m_plasma(plasma)
{
    connect(&windowSystem, &HotKeyService::pressed, this, &HotKeyService::pressed);
    connect(&plasma, &HotKeyService::pressed, this, &HotKeyService::pressed);
}

Result<void, GrabError> FallbackHotKeyService::grab(HotKeyId id, KeyCombination combination)
{
    const auto taken = m_windowSystem.grab(id, combination);
    // On an X server Plasma grants a key that another program holds, too, and is never told of its presses.
    if (taken || taken.error() != GrabError::TakenByOther || !m_plasma.isKeptForUs(combination))
        return taken;
    return m_plasma.grab(id, combination);
}

void FallbackHotKeyService::release(HotKeyId id)
{
    m_windowSystem.release(id);
    m_plasma.release(id);
}

bool FallbackHotKeyService::isTakenByOther(KeyCombination combination)
{
    return m_windowSystem.isTakenByOther(combination) && !m_plasma.isKeptForUs(combination);
}

} // namespace Orbita
