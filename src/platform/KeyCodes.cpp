#include "platform/KeyCodes.h"

#include <QKeyEvent>

#include <array>
#include <linux/input-event-codes.h>

namespace Orbita::KeyCodes {

namespace {

struct Key {
    quint16 virtualKeyCode;
    quint16 evdev;
};

/// Every key, by its position on the keyboard. Keys that only one of the two numberings knows are left out.
constexpr Key keys[] = {
    {0, KEY_A},
    {1, KEY_S},
    {2, KEY_D},
    {3, KEY_F},
    {4, KEY_H},
    {5, KEY_G},
    {6, KEY_Z},
    {7, KEY_X},
    {8, KEY_C},
    {9, KEY_V},
    {10, KEY_102ND}, // beside the left Shift on ISO keyboards
    {11, KEY_B},
    {12, KEY_Q},
    {13, KEY_W},
    {14, KEY_E},
    {15, KEY_R},
    {16, KEY_Y},
    {17, KEY_T},
    {18, KEY_1},
    {19, KEY_2},
    {20, KEY_3},
    {21, KEY_4},
    {22, KEY_6},
    {23, KEY_5},
    {24, KEY_EQUAL},
    {25, KEY_9},
    {26, KEY_7},
    {27, KEY_MINUS},
    {28, KEY_8},
    {29, KEY_0},
    {30, KEY_RIGHTBRACE},
    {31, KEY_O},
    {32, KEY_U},
    {33, KEY_LEFTBRACE},
    {34, KEY_I},
    {35, KEY_P},
    {Return, KEY_ENTER},
    {37, KEY_L},
    {38, KEY_J},
    {39, KEY_APOSTROPHE},
    {40, KEY_K},
    {41, KEY_SEMICOLON},
    {42, KEY_BACKSLASH},
    {43, KEY_COMMA},
    {44, KEY_SLASH},
    {45, KEY_N},
    {46, KEY_M},
    {47, KEY_DOT},
    {48, KEY_TAB},
    {Space, KEY_SPACE},
    {50, KEY_GRAVE},
    {51, KEY_BACKSPACE},
    {Escape, KEY_ESC},
    {54, KEY_RIGHTMETA},
    {55, KEY_LEFTMETA},
    {56, KEY_LEFTSHIFT},
    {57, KEY_CAPSLOCK},
    {58, KEY_LEFTALT},
    {59, KEY_LEFTCTRL},
    {60, KEY_RIGHTSHIFT},
    {61, KEY_RIGHTALT},
    {62, KEY_RIGHTCTRL},
    {63, KEY_FN},
    {64, KEY_F17},
    {65, KEY_KPDOT},
    {67, KEY_KPASTERISK},
    {69, KEY_KPPLUS},
    {71, KEY_NUMLOCK}, // Clear, which stands where others have Num Lock
    {72, KEY_VOLUMEUP},
    {73, KEY_VOLUMEDOWN},
    {74, KEY_MUTE},
    {75, KEY_KPSLASH},
    {76, KEY_KPENTER},
    {78, KEY_KPMINUS},
    {79, KEY_F18},
    {80, KEY_F19},
    {81, KEY_KPEQUAL},
    {82, KEY_KP0},
    {83, KEY_KP1},
    {84, KEY_KP2},
    {85, KEY_KP3},
    {86, KEY_KP4},
    {87, KEY_KP5},
    {88, KEY_KP6},
    {89, KEY_KP7},
    {90, KEY_F20},
    {91, KEY_KP8},
    {92, KEY_KP9},
    {93, KEY_YEN},       // JIS
    {94, KEY_RO},        // JIS underscore
    {95, KEY_KPJPCOMMA}, // JIS
    {96, KEY_F5},
    {97, KEY_F6},
    {98, KEY_F7},
    {99, KEY_F3},
    {100, KEY_F8},
    {101, KEY_F9},
    {102, KEY_HANJA}, // JIS Eisu, the second language key
    {103, KEY_F11},
    {104, KEY_HANGEUL}, // JIS Kana, the first language key
    {105, KEY_F13},
    {106, KEY_F16},
    {107, KEY_F14},
    {109, KEY_F10},
    {110, KEY_COMPOSE}, // the context menu key
    {111, KEY_F12},
    {113, KEY_F15},
    {114, KEY_INSERT}, // Help, which stands where others have Insert
    {115, KEY_HOME},
    {116, KEY_PAGEUP},
    {117, KEY_DELETE},
    {118, KEY_F4},
    {119, KEY_END},
    {120, KEY_F2},
    {121, KEY_PAGEDOWN},
    {122, KEY_F1},
    {LeftArrow, KEY_LEFT},
    {RightArrow, KEY_RIGHT},
    {125, KEY_DOWN},
    {126, KEY_UP},
};

constexpr quint16 noKey = 0xffff;

/// The table turned into an array that is indexed by one side of it.
template <std::size_t Size>
constexpr std::array<quint16, Size> indexed(quint16 Key::*from, quint16 Key::*to)
{
    std::array<quint16, Size> index{};
    index.fill(noKey);
    for (const Key &key : keys)
        index[key.*from] = key.*to;
    return index;
}

constexpr auto evdevCodes = indexed<128>(&Key::virtualKeyCode, &Key::evdev);
constexpr auto virtualKeyCodes = indexed<KEY_FN + 1>(&Key::evdev, &Key::virtualKeyCode);

template <std::size_t Size>
std::optional<quint16> lookUp(const std::array<quint16, Size> &index, quint16 code)
{
    if (code >= Size || index[code] == noKey)
        return {};
    return index[code];
}

/// The evdev code of a key that moves or commands, by its meaning.
std::optional<quint16> evdevByMeaning(int key)
{
    switch (key) {
    case Qt::Key_Return:
        return KEY_ENTER;
    case Qt::Key_Enter:
        return KEY_KPENTER;
    case Qt::Key_Escape:
        return KEY_ESC;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return KEY_TAB;
    case Qt::Key_Backspace:
        return KEY_BACKSPACE;
    case Qt::Key_Delete:
        return KEY_DELETE;
    case Qt::Key_Insert:
    case Qt::Key_Help:
        return KEY_INSERT;
    case Qt::Key_Menu:
        return KEY_COMPOSE;
    case Qt::Key_Home:
        return KEY_HOME;
    case Qt::Key_End:
        return KEY_END;
    case Qt::Key_PageUp:
        return KEY_PAGEUP;
    case Qt::Key_PageDown:
        return KEY_PAGEDOWN;
    case Qt::Key_Left:
        return KEY_LEFT;
    case Qt::Key_Right:
        return KEY_RIGHT;
    case Qt::Key_Up:
        return KEY_UP;
    case Qt::Key_Down:
        return KEY_DOWN;
    default:
        break;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F10)
        return quint16(KEY_F1 + (key - Qt::Key_F1));
    if (key == Qt::Key_F11 || key == Qt::Key_F12)
        return quint16(KEY_F11 + (key - Qt::Key_F11));
    if (key >= Qt::Key_F13 && key <= Qt::Key_F20)
        return quint16(KEY_F13 + (key - Qt::Key_F13));
    return {};
}

} // namespace

std::optional<quint16> toEvdev(quint16 virtualKeyCode)
{
    return lookUp(evdevCodes, virtualKeyCode);
}

std::optional<quint16> fromEvdev(quint16 evdevCode)
{
    return lookUp(virtualKeyCodes, evdevCode);
}

std::optional<quint16> fromKeyEvent(const QKeyEvent &event)
{
    if (const auto evdev = evdevByMeaning(event.key()))
        return fromEvdev(*evdev);
    constexpr quint32 offset = 8; // between evdev codes and those of the window systems
    const quint32 scanCode = event.nativeScanCode();
    if (scanCode < offset || scanCode - offset > KEY_MAX)
        return {};
    return fromEvdev(quint16(scanCode - offset));
}

} // namespace Orbita::KeyCodes
