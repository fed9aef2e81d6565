#pragma once

#include "platform/SystemShortcuts.h"
#include "platform/desktop/shortcuts/NamedKeys.h"

namespace Orbita {

class HotKeyService;

/// The shortcuts of the desktop that runs: GNOME, Cinnamon, MATE, KDE or Xfce. Reads its settings anew each time.
class DesktopSystemShortcuts final : public SystemShortcuts {
public:
    /// \a hotKeys is borrowed. \a findKey finds the keys that type something; the settings name those by what they
    /// type.
    explicit DesktopSystemShortcuts(HotKeyService &hotKeys, KeyFinder findKey = keyOnUsLayout);

    /// Combinations whose key no keyboard of ours has are left out.
    [[nodiscard]] std::optional<QList<SymbolicHotKey>> symbolicHotKeys() const override;
    [[nodiscard]] bool isGrabbed(KeyCombination combination) const override;

private:
    HotKeyService &m_hotKeys;
    KeyFinder m_findKey;
};

} // namespace Orbita
