#include "platform/desktop/shortcuts/NamedKeys.h"

#include "platform/KeyCodes.h"
#include "platform/KeyboardLayout.h"
#include "platform/desktop/shortcuts/Accelerator.h"

#include <algorithm>
#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon.h>

namespace Orbita {

namespace {

struct NamedKey {
    quint32 keysym;
    int qtKey; ///< with Qt::KeypadModifier for those of the keypad; 0 when Qt has no name of its own for it
    quint16 evdev;
};

constexpr int keypad(Qt::Key key)
{
    return int(key) | int(Qt::KeypadModifier);
}

/// Except the F-keys.
constexpr NamedKey namedKeys[] = {
    {XKB_KEY_Return, Qt::Key_Return, KEY_ENTER},
    {XKB_KEY_KP_Enter, Qt::Key_Enter, KEY_KPENTER},
    {XKB_KEY_KP_Enter, keypad(Qt::Key_Enter), KEY_KPENTER},
    {XKB_KEY_Escape, Qt::Key_Escape, KEY_ESC},
    {XKB_KEY_Tab, Qt::Key_Tab, KEY_TAB},
    {XKB_KEY_ISO_Left_Tab, Qt::Key_Backtab, KEY_TAB},
    {XKB_KEY_space, Qt::Key_Space, KEY_SPACE},
    {XKB_KEY_BackSpace, Qt::Key_Backspace, KEY_BACKSPACE},
    {XKB_KEY_Delete, Qt::Key_Delete, KEY_DELETE},
    {XKB_KEY_Insert, Qt::Key_Insert, KEY_INSERT},
    {XKB_KEY_Help, Qt::Key_Help, KEY_INSERT},
    {XKB_KEY_Menu, Qt::Key_Menu, KEY_COMPOSE},
    {XKB_KEY_Home, Qt::Key_Home, KEY_HOME},
    {XKB_KEY_End, Qt::Key_End, KEY_END},
    {XKB_KEY_Page_Up, Qt::Key_PageUp, KEY_PAGEUP},
    {XKB_KEY_Page_Down, Qt::Key_PageDown, KEY_PAGEDOWN},
    {XKB_KEY_Left, Qt::Key_Left, KEY_LEFT},
    {XKB_KEY_Right, Qt::Key_Right, KEY_RIGHT},
    {XKB_KEY_Up, Qt::Key_Up, KEY_UP},
    {XKB_KEY_Down, Qt::Key_Down, KEY_DOWN},
    {XKB_KEY_XF86AudioRaiseVolume, Qt::Key_VolumeUp, KEY_VOLUMEUP},
    {XKB_KEY_XF86AudioLowerVolume, Qt::Key_VolumeDown, KEY_VOLUMEDOWN},
    {XKB_KEY_XF86AudioMute, Qt::Key_VolumeMute, KEY_MUTE},
    {XKB_KEY_KP_0, keypad(Qt::Key_0), KEY_KP0},
    {XKB_KEY_KP_1, keypad(Qt::Key_1), KEY_KP1},
    {XKB_KEY_KP_2, keypad(Qt::Key_2), KEY_KP2},
    {XKB_KEY_KP_3, keypad(Qt::Key_3), KEY_KP3},
    {XKB_KEY_KP_4, keypad(Qt::Key_4), KEY_KP4},
    {XKB_KEY_KP_5, keypad(Qt::Key_5), KEY_KP5},
    {XKB_KEY_KP_6, keypad(Qt::Key_6), KEY_KP6},
    {XKB_KEY_KP_7, keypad(Qt::Key_7), KEY_KP7},
    {XKB_KEY_KP_8, keypad(Qt::Key_8), KEY_KP8},
    {XKB_KEY_KP_9, keypad(Qt::Key_9), KEY_KP9},
    {XKB_KEY_KP_Decimal, keypad(Qt::Key_Period), KEY_KPDOT},
    {XKB_KEY_KP_Add, keypad(Qt::Key_Plus), KEY_KPPLUS},
    {XKB_KEY_KP_Subtract, keypad(Qt::Key_Minus), KEY_KPMINUS},
    {XKB_KEY_KP_Multiply, keypad(Qt::Key_Asterisk), KEY_KPASTERISK},
    {XKB_KEY_KP_Divide, keypad(Qt::Key_Slash), KEY_KPSLASH},
    {XKB_KEY_KP_Equal, keypad(Qt::Key_Equal), KEY_KPEQUAL},
    // What the keypad types without Num Lock.
    {XKB_KEY_KP_Insert, keypad(Qt::Key_Insert), KEY_KP0},
    {XKB_KEY_KP_End, keypad(Qt::Key_End), KEY_KP1},
    {XKB_KEY_KP_Down, keypad(Qt::Key_Down), KEY_KP2},
    {XKB_KEY_KP_Page_Down, keypad(Qt::Key_PageDown), KEY_KP3},
    {XKB_KEY_KP_Left, keypad(Qt::Key_Left), KEY_KP4},
    {XKB_KEY_KP_Begin, keypad(Qt::Key_Clear), KEY_KP5},
    {XKB_KEY_KP_Right, keypad(Qt::Key_Right), KEY_KP6},
    {XKB_KEY_KP_Home, keypad(Qt::Key_Home), KEY_KP7},
    {XKB_KEY_KP_Up, keypad(Qt::Key_Up), KEY_KP8},
    {XKB_KEY_KP_Page_Up, keypad(Qt::Key_PageUp), KEY_KP9},
    {XKB_KEY_KP_Delete, keypad(Qt::Key_Delete), KEY_KPDOT},
    {keyAboveTab, 0, KEY_GRAVE},
};

/// The evdev code of the F-key with \a number, from 1 on.
quint16 evdevOfFunctionKey(quint32 number)
{
    if (number <= 10)
        return quint16(KEY_F1 + number - 1);
    return quint16(number <= 12 ? KEY_F11 + number - 11 : KEY_F13 + number - 13);
}

/// The rows of keys of a US keyboard, from the key on that types the first character.
constexpr struct {
    std::string_view characters;
    quint16 firstEvdev;
} usRows[] = {
    {"1234567890-=", KEY_1},
    {"qwertyuiop[]", KEY_Q},
    {"asdfghjkl;'`", KEY_A},
    {"\\zxcvbnm,./", KEY_BACKSLASH},
};

} // namespace

std::optional<quint16> namedKey(quint32 keysym)
{
    if (keysym >= XKB_KEY_F1 && keysym <= XKB_KEY_F24)
        return KeyCodes::fromEvdev(evdevOfFunctionKey(keysym - XKB_KEY_F1 + 1));
    const auto *key = std::ranges::find(namedKeys, keysym, &NamedKey::keysym);
    return key == std::ranges::end(namedKeys) ? std::nullopt : KeyCodes::fromEvdev(key->evdev);
}

std::optional<quint16> keyOnUsLayout(quint32 keysym)
{
    for (const auto &row : usRows) {
        const auto position = keysym < 0x80 ? row.characters.find(char(keysym)) : std::string_view::npos;
        if (position != std::string_view::npos)
            return KeyCodes::fromEvdev(quint16(row.firstEvdev + position));
    }
    return std::nullopt;
}

KeyFinder keysOn(const KeyboardLayout &layout)
{
    return [&layout](quint32 keysym) -> std::optional<quint16> {
        const char32_t character = xkb_keysym_to_utf32(keysym);
        const QString wanted = character == 0 ? QString() : QString::fromUcs4(&character, 1);
        constexpr quint16 firstOfKeypad = 65; // the keypad types digits too, but has keysyms of its own
        for (quint16 code = 0; !wanted.isEmpty() && code < firstOfKeypad; ++code) {
            if (layout.text(code) == wanted)
                return code;
        }
        return keyOnUsLayout(keysym);
    };
}

std::optional<quint32> keysymFromQt(QKeyCombination combination)
{
    const int qtKey = combination.key();
    const int onKeypad = int(combination.keyboardModifiers() & Qt::KeypadModifier);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return quint32(XKB_KEY_F1 + (qtKey - Qt::Key_F1));
    const auto *named = std::ranges::find(namedKeys, qtKey | onKeypad, &NamedKey::qtKey);
    if (named != std::ranges::end(namedKeys))
        return named->keysym;
    const bool isCharacter = qtKey > 0 && qtKey <= int(QChar::LastValidCodePoint);
    const quint32 keysym = isCharacter ? xkb_utf32_to_keysym(QChar::toLower(char32_t(qtKey))) : XKB_KEY_NoSymbol;
    return keysym == XKB_KEY_NoSymbol ? std::nullopt : std::optional(keysym);
}

} // namespace Orbita
