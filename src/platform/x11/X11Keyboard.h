#pragma once

#include "platform/KeyCombination.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11KeysDown.h"

#include <array>
#include <optional>
#include <vector>

namespace Orbita {

/// A key with modifiers as the server knows them. Modifiers are bits of the core protocol, 0x01 to 0x80.
struct X11KeyGrab {
    xcb_keycode_t key = 0;
    quint16 modifiers = 0; ///< that have to be down
    quint16 locks = 0;     ///< that may be on or off; none of \c modifiers

    /// Every set of modifiers that a passive grab has to name.
    [[nodiscard]] std::vector<quint16> variants() const;
    /// Whether a key event with \a code and \a state is one of this combination.
    [[nodiscard]] bool matches(xcb_keycode_t code, quint16 state) const;
    /// Whether both stand for the same keys, whatever the locks.
    [[nodiscard]] bool isSameAs(const X11KeyGrab &other) const;

    friend bool operator==(const X11KeyGrab &, const X11KeyGrab &) = default;
};

/// The keys and modifiers that the keyboard has at one moment.
class X11Keyboard {
public:
    /// Asks the server, which costs one round trip; nothing when it cannot be reached.
    [[nodiscard]] static std::optional<X11Keyboard> read(X11Connection &connection);

    /// The modifiers that those of \a keys carry, as bits of the core protocol. Locks count while their key is down.
    [[nodiscard]] quint16 modifiersOf(const X11KeysDown::Keys &keys) const;
    /// What to grab for \a combination; nothing when no key carries it, or one of its modifiers.
    [[nodiscard]] std::optional<X11KeyGrab> find(KeyCombination combination) const;

private:
    X11Keyboard() = default;

    [[nodiscard]] bool hasKey(xcb_keycode_t key) const;
    [[nodiscard]] bool hasSymbol(xcb_keycode_t key, xcb_keysym_t symbol) const;
    /// The bit of the modifier that is \a index in the protocol's order when any key carries it, else 0.
    [[nodiscard]] quint16 fixedModifier(std::size_t index) const;
    /// The bit of the first modifier that a key with one of \a symbols carries, 0 when there is none.
    [[nodiscard]] quint16 modifierWith(std::initializer_list<xcb_keysym_t> symbols) const;
    /// The bit that \a modifier stands for, 0 when no key carries it.
    [[nodiscard]] quint16 bitOf(HotKeyModifier modifier) const;

    xcb_keycode_t m_firstKey = 0;
    std::size_t m_symbolsPerKey = 0;
    std::vector<xcb_keysym_t> m_symbols; ///< of each key from the first on, in its groups and levels
    std::array<std::vector<xcb_keycode_t>, 8> m_modifierKeys;
};

} // namespace Orbita
