#pragma once

#include "base/ItemAddress.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

#include <optional>
#include <vector>

class QKeyEvent;

namespace Orbita {

class KeyboardLayout;
class SystemShortcuts;
struct MenuEntry;

/// The modifiers of a shortcut, as they are stored.
enum ModifierFlag : quint64 {
    ShiftModifierFlag = 0x20000,
    ControlModifierFlag = 0x40000,
    OptionModifierFlag = 0x80000,   ///< the Alt key
    CommandModifierFlag = 0x100000, ///< the Super key
};

/// A key with modifiers that the user has chosen to press for something.
class MASShortcut {
    Q_DECLARE_TR_FUNCTIONS(Orbita::MASShortcut)
public:
    /// \a keyCode is a virtual key code, 0 to 127, or NotFound for no key. Bits of \a modifierFlags other than those of
    /// ModifierFlag are dropped.
    explicit MASShortcut(quint64 keyCode = NotFound, quint64 modifierFlags = 0) : m_keyCode(keyCode)
    {
        setModifierFlags(modifierFlags);
    }
    /// The key of \a event with the modifiers that are down once it has happened. A modifier key by itself is a key
    /// without a text; a key that has no virtual key code is no key.
    [[nodiscard]] static MASShortcut fromKeyEvent(const QKeyEvent &event);
    /// The shortcut in a keyed archive; nothing when there is none in it. Untrusted input is fine.
    [[nodiscard]] static std::optional<MASShortcut> withData(const QByteArray &archive);
    /// The keyed archive of the shortcut.
    [[nodiscard]] QByteArray data() const;

    [[nodiscard]] quint64 keyCode() const { return m_keyCode; }
    [[nodiscard]] bool hasKey() const { return m_keyCode != quint64(NotFound); }
    [[nodiscard]] quint64 modifierFlags() const { return m_modifierFlags; }
    void setModifierFlags(quint64 modifierFlags);
    /// 0 for no key.
    [[nodiscard]] quint32 carbonKeyCode() const { return hasKey() ? quint32(m_keyCode) : 0; }
    /// The modifiers as HotKeyModifier bits.
    [[nodiscard]] quint32 carbonFlags() const;

    /// The key as the user knows it in \a layout; empty for no key and for one that types nothing printable.
    [[nodiscard]] QString keyCodeString(const KeyboardLayout &layout) const;
    /// A symbol for each modifier.
    [[nodiscard]] QString modifierFlagsString() const;
    /// The modifiers followed by the key.
    [[nodiscard]] QString description(const KeyboardLayout &layout) const;
    /// The key as a menu's key equivalent, in lower case: a function key as the private-use character that stands for
    /// it, empty for a key without a character.
    [[nodiscard]] QString keyCodeStringForKeyEquivalent(const KeyboardLayout &layout) const;

    /// Whether pressing it everywhere would not stop the user from typing.
    [[nodiscard]] bool isValid() const;
    /// Whether the desktop, another program or the program's own \a mainMenu uses it. If so, \a error, unless null, is
    /// set to what to tell the user.
    [[nodiscard]] bool isTaken(const SystemShortcuts &system, const KeyboardLayout &layout,
                               const std::vector<MenuEntry> &mainMenu, QString *error = nullptr) const;
    /// Whether an entry of \a menu, or of a menu below it, has the lower-case \a keyEquivalent with \a modifierFlags.
    /// If so, \a error, unless null, is set to what to tell the user.
    [[nodiscard]] static bool isKeyEquivalentTakenInMenu(const QString &keyEquivalent, quint64 modifierFlags,
                                                         const std::vector<MenuEntry> &menu, QString *error = nullptr);
    /// Whether it closes windows or quits the program, which it has to do even where shortcuts are recorded.
    [[nodiscard]] bool shouldBypass(const KeyboardLayout &layout) const;

    /// Whether Option makes any key valid, not just Space and Escape; false by default.
    [[nodiscard]] static bool allowsAnyHotkeyWithOptionModifier() { return s_allowsAnyHotkeyWithOptionModifier; }
    static void setAllowsAnyHotkeyWithOptionModifier(bool allows) { s_allowsAnyHotkeyWithOptionModifier = allows; }

    friend bool operator==(const MASShortcut &, const MASShortcut &) = default;

private:
    [[nodiscard]] bool isTakenInSystem(const SystemShortcuts &system) const;

    static inline bool s_allowsAnyHotkeyWithOptionModifier = false;

    quint64 m_keyCode;
    quint64 m_modifierFlags = 0;
};

} // namespace Orbita
