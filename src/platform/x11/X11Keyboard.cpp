#include "platform/x11/X11Keyboard.h"

#include "platform/KeyCodes.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>

namespace Orbita {

namespace {

constexpr quint16 allModifiers = 0xff; // the bits above are mouse buttons and the layout's group

} // namespace

std::vector<quint16> X11KeyGrab::variants() const
{
    std::vector<quint16> masks;
    for (quint16 lit = locks;; lit = quint16((lit - 1) & locks)) { // each subset of the locks, the empty one last
        masks.push_back(modifiers | lit);
        if (lit == 0)
            return masks;
    }
}

bool X11KeyGrab::matches(xcb_keycode_t code, quint16 state) const
{
    return code == key && (state & allModifiers & ~locks) == modifiers;
}

bool X11KeyGrab::isSameAs(const X11KeyGrab &other) const
{
    return key == other.key && modifiers == other.modifiers;
}

std::optional<X11Keyboard> X11Keyboard::read(X11Connection &connection)
{
    if (!connection.isAlive())
        return {};
    xcb_connection_t *xcb = connection.xcb();
    const xcb_setup_t *setup = xcb_get_setup(xcb);
    const auto count = quint8(setup->max_keycode - setup->min_keycode + 1);
    const auto modifierCookie = xcb_get_modifier_mapping(xcb);
    const auto symbolCookie = xcb_get_keyboard_mapping(xcb, setup->min_keycode, count);
    const auto modifiers = connection.reply(xcb_get_modifier_mapping_reply, modifierCookie);
    const auto symbols = connection.reply(xcb_get_keyboard_mapping_reply, symbolCookie);
    if (!modifiers || !symbols)
        return {};

    X11Keyboard keyboard;
    keyboard.m_firstKey = setup->min_keycode;
    keyboard.m_symbolsPerKey = symbols->keysyms_per_keycode;
    const xcb_keysym_t *first = xcb_get_keyboard_mapping_keysyms(symbols.get());
    keyboard.m_symbols.assign(first, first + xcb_get_keyboard_mapping_keysyms_length(symbols.get()));
    const xcb_keycode_t *key = xcb_get_modifier_mapping_keycodes(modifiers.get());
    for (auto &keys : keyboard.m_modifierKeys) {
        std::copy_if(key, key + modifiers->keycodes_per_modifier, std::back_inserter(keys),
                     [](xcb_keycode_t code) { return code != 0; });
        key += modifiers->keycodes_per_modifier;
    }
    return keyboard;
}

quint16 X11Keyboard::modifiersOf(const X11KeysDown::Keys &keys) const
{
    quint16 modifiers = 0;
    for (std::size_t index = 0; index < m_modifierKeys.size(); ++index) {
        if (std::ranges::any_of(m_modifierKeys[index], [&](xcb_keycode_t key) { return keys[key]; }))
            modifiers |= quint16(1U << index);
    }
    return modifiers;
}

std::optional<X11KeyGrab> X11Keyboard::find(KeyCombination combination) const
{
    constexpr int offset = 8; // between evdev codes and the server's
    const auto evdev = KeyCodes::toEvdev(quint16(std::min(combination.keyCode, 0xffffU)));
    if (!evdev || *evdev + offset > 0xff || !hasKey(xcb_keycode_t(*evdev + offset)))
        return {};
    X11KeyGrab grab{xcb_keycode_t(*evdev + offset)};
    for (const HotKeyModifier modifier : {CommandKey, ShiftKey, OptionKey, ControlKey}) {
        if ((combination.modifiers & modifier) == 0)
            continue;
        const quint16 bit = bitOf(modifier);
        if (bit == 0)
            return {};
        grab.modifiers |= bit;
    }
    grab.locks = XCB_MOD_MASK_LOCK | modifierWith({XKB_KEY_Num_Lock}) | modifierWith({XKB_KEY_Scroll_Lock});
    grab.locks &= quint16(~grab.modifiers);
    return grab;
}

bool X11Keyboard::hasKey(xcb_keycode_t key) const
{
    if (key < m_firstKey || (key - m_firstKey + 1U) * m_symbolsPerKey > m_symbols.size())
        return false;
    const auto first = m_symbols.begin() + std::ptrdiff_t((key - m_firstKey) * m_symbolsPerKey);
    return std::any_of(first, first + std::ptrdiff_t(m_symbolsPerKey),
                       [](xcb_keysym_t symbol) { return symbol != XKB_KEY_NoSymbol; });
}

bool X11Keyboard::hasSymbol(xcb_keycode_t key, xcb_keysym_t symbol) const
{
    if (!hasKey(key))
        return false;
    const auto first = m_symbols.begin() + std::ptrdiff_t((key - m_firstKey) * m_symbolsPerKey);
    const auto last = first + std::ptrdiff_t(m_symbolsPerKey);
    return std::find(first, last, symbol) != last;
}

quint16 X11Keyboard::fixedModifier(std::size_t index) const
{
    return m_modifierKeys[index].empty() ? 0 : quint16(1U << index);
}

quint16 X11Keyboard::modifierWith(std::initializer_list<xcb_keysym_t> symbols) const
{
    for (std::size_t index = XCB_MAP_INDEX_1; index <= XCB_MAP_INDEX_5; ++index) {
        for (const xcb_keycode_t key : m_modifierKeys[index]) {
            if (std::any_of(symbols.begin(), symbols.end(),
                            [&](xcb_keysym_t symbol) { return hasSymbol(key, symbol); }))
                return quint16(1U << index);
        }
    }
    return 0;
}

quint16 X11Keyboard::bitOf(HotKeyModifier modifier) const
{
    switch (modifier) {
    case ShiftKey:
        return fixedModifier(XCB_MAP_INDEX_SHIFT);
    case ControlKey:
        return fixedModifier(XCB_MAP_INDEX_CONTROL);
    case OptionKey:
        return modifierWith({XKB_KEY_Alt_L, XKB_KEY_Alt_R});
    case CommandKey:
        return modifierWith({XKB_KEY_Super_L, XKB_KEY_Super_R});
    }
    return 0;
}

} // namespace Orbita
