#include "platform/KeyCodes.h"

#include <gtest/gtest.h>

#include <QKeyEvent>

#include <linux/input-event-codes.h>
#include <set>

namespace Orbita {
namespace {

TEST(KeyCodes, goBothWaysWithoutAmbiguity)
{
    std::set<quint16> evdevCodes;
    for (int code = 0; code < 0x10000; ++code) {
        const auto evdev = KeyCodes::toEvdev(quint16(code));
        if (!evdev)
            continue;
        EXPECT_LT(code, 128);
        EXPECT_TRUE(evdevCodes.insert(*evdev).second) << code;
        EXPECT_EQ(KeyCodes::fromEvdev(*evdev), code);
    }
    for (int evdev = 0; evdev < 0x10000; ++evdev)
        EXPECT_EQ(KeyCodes::fromEvdev(quint16(evdev)).has_value(), evdevCodes.contains(quint16(evdev))) << evdev;
    for (int key = KEY_1; key <= KEY_KPDOT; ++key)
        EXPECT_TRUE(key == KEY_SCROLLLOCK || evdevCodes.contains(quint16(key))) << key;
}

TEST(KeyCodes, areThoseOfKeyEvents)
{
    const std::vector<std::tuple<const char *, int, quint32, std::optional<quint16>>> rows{
        {"a letter goes by position", Qt::Key_Q, KEY_A + 8, 0},
        {"Y where Germans have Z", Qt::Key_Z, KEY_Y + 8, 16},
        {"Escape on the Caps Lock key goes by meaning", Qt::Key_Escape, KEY_CAPSLOCK + 8, 53},
        {"an arrow on the keypad", Qt::Key_Left, KEY_KP4 + 8, 123},
        {"a digit on the keypad", Qt::Key_4, KEY_KP4 + 8, 86},
        {"Return", Qt::Key_Return, KEY_ENTER + 8, 36},
        {"Shift and Tab", Qt::Key_Backtab, KEY_TAB + 8, 48},
        {"Backspace", Qt::Key_Backspace, KEY_BACKSPACE + 8, 51},
        {"Delete", Qt::Key_Delete, KEY_DELETE + 8, 117},
        {"F1", Qt::Key_F1, 0, 122},
        {"F20", Qt::Key_F20, 0, 90},
        {"no position", Qt::Key_A, 0, std::nullopt},
        {"a position beyond all", Qt::Key_A, 0xffffffff, std::nullopt}};
    for (const auto &[name, key, scanCode, code] : rows) {
        const QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, scanCode, 0, 0);
        EXPECT_EQ(KeyCodes::fromKeyEvent(event), code) << name;
    }
}

} // namespace
} // namespace Orbita
