#pragma once

#include "platform/KeyCombination.h"

#include <QList>

#include <optional>

namespace Orbita {

/// The combinations that the desktop itself has bound to something.
class SystemShortcuts {
public:
    virtual ~SystemShortcuts() = default;

    /// A combination that the desktop's settings name.
    struct SymbolicHotKey {
        KeyCombination combination;
        bool enabled = true;
    };
    /// What the desktop's settings name now; nothing when they cannot be read or the desktop is an unknown one.
    [[nodiscard]] virtual std::optional<QList<SymbolicHotKey>> symbolicHotKeys() const = 0;
    /// Whether a program other than this one holds \a combination, whatever the settings say.
    [[nodiscard]] virtual bool isGrabbed(KeyCombination combination) const = 0;
};

} // namespace Orbita
