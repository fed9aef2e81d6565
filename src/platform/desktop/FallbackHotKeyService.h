#pragma once

#include "platform/HotKeyService.h"

namespace Orbita {

class PlasmaHotKeyService;

/// Takes hot keys from the window system, and from Plasma's shortcut service those that the window system refuses
/// because that service holds them for Orbita already. What it holds for others, or what others hold, is taken.
class FallbackHotKeyService final : public HotKeyService {
    Q_OBJECT
public:
    /// Both are borrowed. Plasma is asked for nothing before the first refusal.
    FallbackHotKeyService(HotKeyService &windowSystem, PlasmaHotKeyService &plasma, QObject *parent = nullptr);

    [[nodiscard]] Result<void, GrabError> grab(HotKeyId id, KeyCombination combination) override;
    void release(HotKeyId id) override;
    [[nodiscard]] bool isTakenByOther(KeyCombination combination) override;

private:
    HotKeyService &m_windowSystem;
    PlasmaHotKeyService &m_plasma;
};

} // namespace Orbita
