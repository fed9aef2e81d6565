#include "platform/desktop/PlasmaKey.h"

#include "platform/KeyCodes.h"
#include "platform/KeyboardLayout.h"

#include <QtCore/qnamespace.h>

#include <linux/input-event-codes.h>

namespace Orbita {

namespace {

constexpr int keypad(int key)
{
    return key | int(Qt::KeypadModifier);
}

/// The key at \a evdev when it is one that has the same name in every layout, else 0.
int fixedKey(quint16 evdev)
{
    if (evdev >= KEY_F1 && evdev <= KEY_F10)
        return Qt::Key_F1 + (evdev - KEY_F1);
    if (evdev >= KEY_F13 && evdev <= KEY_F20)
        return Qt::Key_F13 + (evdev - KEY_F13);
    switch (evdev) {
    case KEY_F11:
        return Qt::Key_F11;
    case KEY_F12:
        return Qt::Key_F12;
    case KEY_ENTER:
        return Qt::Key_Return;
    case KEY_TAB:
        return Qt::Key_Tab;
    case KEY_SPACE:
        return Qt::Key_Space;
    case KEY_BACKSPACE:
        return Qt::Key_Backspace;
    case KEY_ESC:
        return Qt::Key_Escape;
    case KEY_INSERT:
        return Qt::Key_Insert;
    case KEY_DELETE:
        return Qt::Key_Delete;
    case KEY_HOME:
        return Qt::Key_Home;
    case KEY_END:
        return Qt::Key_End;
    case KEY_PAGEUP:
        return Qt::Key_PageUp;
    case KEY_PAGEDOWN:
        return Qt::Key_PageDown;
    case KEY_LEFT:
        return Qt::Key_Left;
    case KEY_RIGHT:
        return Qt::Key_Right;
    case KEY_UP:
        return Qt::Key_Up;
    case KEY_DOWN:
        return Qt::Key_Down;
    case KEY_COMPOSE:
        return Qt::Key_Menu;
    case KEY_KPENTER:
        return keypad(Qt::Key_Enter);
    case KEY_KPPLUS:
        return keypad(Qt::Key_Plus);
    case KEY_KPMINUS:
        return keypad(Qt::Key_Minus);
    case KEY_KPASTERISK:
        return keypad(Qt::Key_Asterisk);
    case KEY_KPSLASH:
        return keypad(Qt::Key_Slash);
    default:
        return 0;
    }
}

/// Keys that type have the number of their character, in upper case.
int typingKey(const QString &text)
{
    const auto characters = text.toUpper().toUcs4();
    return characters.size() == 1 ? int(characters.front()) : 0;
}

} // namespace

std::optional<int> plasmaKey(KeyCombination combination, const KeyboardLayout &layout)
{
    if (combination.keyCode > 0xffff)
        return {};
    const auto code = quint16(combination.keyCode);
    const auto evdev = KeyCodes::toEvdev(code);
    int key = evdev ? fixedKey(*evdev) : 0;
    if (key == 0)
        key = typingKey(layout.text(code));
    if (key == 0)
        return {};
    constexpr struct {
        HotKeyModifier ours;
        Qt::KeyboardModifier theirs;
    } modifiers[] = {{CommandKey, Qt::MetaModifier},
                     {ShiftKey, Qt::ShiftModifier},
                     {OptionKey, Qt::AltModifier},
                     {ControlKey, Qt::ControlModifier}};
    for (const auto &modifier : modifiers) {
        if ((combination.modifiers & modifier.ours) != 0)
            key |= int(modifier.theirs);
    }
    return key;
}

} // namespace Orbita
