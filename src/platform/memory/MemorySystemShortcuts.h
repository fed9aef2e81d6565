#pragma once

#include "platform/SystemShortcuts.h"

namespace Orbita {

/// A desktop whose settings and whose other programs a test plants.
class MemorySystemShortcuts final : public SystemShortcuts {
public:
    [[nodiscard]] std::optional<QList<SymbolicHotKey>> symbolicHotKeys() const override { return hotKeys; }
    [[nodiscard]] bool isGrabbed(KeyCombination combination) const override { return grabbed.contains(combination); }

    std::optional<QList<SymbolicHotKey>> hotKeys = QList<SymbolicHotKey>(); ///< nothing: cannot be read
    QList<KeyCombination> grabbed;                                          ///< held by other programs
};

} // namespace Orbita
