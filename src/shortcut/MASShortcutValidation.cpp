#include "shortcut/MASShortcut.h"

#include "platform/KeyCodes.h"
#include "platform/SystemShortcuts.h"
#include "shortcut/FunctionKeys.h"
#include "shortcut/MenuEntry.h"

#include <algorithm>

namespace Orbita {

using namespace Qt::StringLiterals;

namespace {

void report(QString *error, const QString &text)
{
    if (error)
        *error = text;
}

/// Whether \a entry, which opens no menu, has the lower-case \a keyEquivalent with \a modifierFlags.
bool isConflict(const MenuEntry &entry, const QString &keyEquivalent, quint64 modifierFlags)
{
    if (entry.keyEquivalent.isEmpty() || entry.keyEquivalent.toLower() != keyEquivalent)
        return false;
    MASShortcut needed(NotFound, entry.modifierMask);
    if (entry.keyEquivalent != keyEquivalent) // it is upper-case
        needed.setModifierFlags(entry.modifierMask | ShiftModifierFlag);
    return needed.modifierFlags() == modifierFlags;
}

} // namespace

bool MASShortcut::isValid() const
{
    if (functionKeyNumber(m_keyCode))
        return true;
    if (m_modifierFlags & (CommandModifierFlag | ControlModifierFlag))
        return true;
    if (!(m_modifierFlags & OptionModifierFlag))
        return false;
    return m_keyCode == KeyCodes::Space || m_keyCode == KeyCodes::Escape || allowsAnyHotkeyWithOptionModifier();
}

bool MASShortcut::isTakenInSystem(const SystemShortcuts &system) const
{
    if (!hasKey())
        return false;
    const KeyCombination combination{carbonKeyCode(), carbonFlags()};
    const auto hotKeys = system.symbolicHotKeys().value_or(QList<SystemShortcuts::SymbolicHotKey>());
    const bool isNamed = std::any_of(hotKeys.begin(), hotKeys.end(), [combination](const auto &hotKey) {
        return hotKey.enabled && hotKey.combination == combination;
    });
    return isNamed || system.isGrabbed(combination);
}

bool MASShortcut::isTaken(const SystemShortcuts &system, const KeyboardLayout &layout,
                          const std::vector<MenuEntry> &mainMenu, QString *error) const
{
    if (isTakenInSystem(system)) {
        report(error,
               tr("This combination cannot be used because it is already used by a system-wide keyboard "
                  "shortcut.\nIf you really want to use this key combination, most shortcuts can be changed in "
                  "the Keyboard & Mouse panel in System Preferences."));
        return true;
    }
    return isKeyEquivalentTakenInMenu(keyCodeStringForKeyEquivalent(layout), m_modifierFlags, mainMenu, error);
}

bool MASShortcut::isKeyEquivalentTakenInMenu(const QString &keyEquivalent, quint64 modifierFlags,
                                             const std::vector<MenuEntry> &menu, QString *error)
{
    return std::any_of(menu.begin(), menu.end(), [&](const MenuEntry &entry) {
        if (!entry.submenu.empty())
            return isKeyEquivalentTakenInMenu(keyEquivalent, modifierFlags, entry.submenu, error);
        if (!isConflict(entry, keyEquivalent, modifierFlags))
            return false;
        report(error,
               tr("This shortcut cannot be used because it is already used by the menu item ‘%1’.").arg(entry.title));
        return true;
    });
}

bool MASShortcut::shouldBypass(const KeyboardLayout &layout) const
{
    const QString key = keyCodeString(layout);
    return m_modifierFlags == CommandModifierFlag && (key == u"W"_s || key == u"Q"_s);
}

} // namespace Orbita
