#pragma once

#include <QString>

#include <vector>

namespace Orbita {

/// An entry of a menu, as far as shortcuts go.
struct MenuEntry {
    QString title;
    QString keyEquivalent;          ///< a character, upper-case when Shift is needed too; empty for none
    quint64 modifierMask = 0;       ///< ModifierFlag bits
    std::vector<MenuEntry> submenu; ///< empty for an entry that opens none
};

} // namespace Orbita
