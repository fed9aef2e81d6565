#include "shortcut/MASShortcut.h"

#include "platform/KeyCombination.h"
#include "platform/KeyedArchive.h"
#include "platform/PropertyList.h"
#include "platform/memory/MemoryKeyboardLayout.h"
#include "platform/memory/MemorySystemShortcuts.h"
#include "shortcut/MenuEntry.h"

#include <gtest/gtest.h>

#include <QKeyEvent>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

constexpr quint64 shift = ShiftModifierFlag;
constexpr quint64 control = ControlModifierFlag;
constexpr quint64 option = OptionModifierFlag;
constexpr quint64 command = CommandModifierFlag;

TEST(MASShortcut, textIsWhatTheUserKnows)
{
    const struct {
        const char *name;
        MASShortcut shortcut;
        QString typed, description, keyEquivalent; ///< the first is what the layout has on the key
    } rows[] = {
        {"modifiers stand in their order", MASShortcut(0, ~0ULL), u"a"_s, u"⌃⌥⇧⌘A"_s, u"a"_s},
        {"no key", MASShortcut(NotFound, shift), u"a"_s, u"⇧"_s, {}},
        {"mark, number and symbol", MASShortcut(24), u"\u0301½€"_s, u"\u0301½€"_s, {}},
        {"beyond the first plane", MASShortcut(24), u"\U00010428"_s, u"\U00010400"_s, {}},
        {"half a character", MASShortcut(24), QChar(0xd801), {}, {}},
        {"a space within the text", MASShortcut(24), u"a b"_s, {}, {}},
        {"a longer text", MASShortcut(24), QString(257, u'a'), {}, {}},
        {"Space", MASShortcut(49, option), u" "_s, u"⌥Space"_s, u" "_s},
        {"Return whatever it types", MASShortcut(36), u"\r"_s, u"↩"_s, u"↩"_s},
        {"F1", MASShortcut(122), {}, u"F1"_s, u"\uf704"_s},
        {"F19", MASShortcut(80), {}, u"F19"_s, u"\uf716"_s},
        {"F20 is left to the layout", MASShortcut(90), u"x"_s, u"X"_s, u"x"_s},
    };
    for (const auto &row : rows) {
        MemoryKeyboardLayout layout;
        layout.setTexts({{quint16(row.shortcut.keyCode()), row.typed}});
        EXPECT_EQ(row.shortcut.description(layout), row.description) << row.name;
        EXPECT_EQ(row.shortcut.keyCodeStringForKeyEquivalent(layout), row.keyEquivalent) << row.name;
    }
}

TEST(MASShortcut, eachFixedKeyHasItsText)
{
    const MemoryKeyboardLayout layout;
    QStringList texts;
    for (quint64 key = 0; key < 128; ++key) {
        if (const QString text = MASShortcut(key).keyCodeString(layout); !text.isEmpty())
            texts.append(u"%1%2"_s.arg(key).arg(u':' + text));
    }
    EXPECT_EQ(
        texts.join(u' ').toStdString(),
        "36:↩ 48:⇥ 49:Space 51:⌫ 53:⎋ 64:F17 65:. 67:* 69:+ 71:⌧ 75:/ 76:⌅ 78:– 79:F18 80:F19 81:= 82:0 83:1 84:2 "
        "85:3 86:4 87:5 88:6 89:7 91:8 92:9 96:F5 97:F6 98:F7 99:F3 100:F8 101:F9 103:F11 105:F13 106:F16 107:F14 "
        "109:F10 111:F12 113:F15 114:? 115:↖ 116:⇞ 117:⌦ 118:F4 119:↘ 120:F2 121:⇟ 122:F1 123:← 124:→ 125:↓ 126:↑");
}

TEST(MASShortcut, isValidWhereItLeavesTypingAlone)
{
    const MASShortcut f20(90), anyControl(0, control | shift), space(49, option), escape(53, option | shift);
    for (const MASShortcut &shortcut : {f20, anyControl, space, escape})
        EXPECT_TRUE(shortcut.isValid()) << shortcut.keyCode();
    const MASShortcut help(114), anyShift(49, shift), anyOption(0, option | shift);
    for (const MASShortcut &shortcut : {help, anyShift, anyOption})
        EXPECT_FALSE(shortcut.isValid()) << shortcut.keyCode();
    MASShortcut::setAllowsAnyHotkeyWithOptionModifier(true);
    EXPECT_TRUE(anyOption.isValid());
    MASShortcut::setAllowsAnyHotkeyWithOptionModifier(false);
}

TEST(MASShortcut, archiveIsReadWithCare)
{
    const struct {
        const char *name;
        QVariant keyCode, modifierFlags;
        std::optional<MASShortcut> shortcut;
    } rows[] = {
        {"the last key", 127, 0x100000, MASShortcut(127, command)},
        {"minus one is no key", -1, 0x20000, MASShortcut(NotFound, shift)},
        {"other modifiers are dropped", 0, -1, MASShortcut(0, ~0ULL)},
        {"a key beyond the last", 128, 0, {}},
        {"a real", 12, 1.0, {}},
        {"a reference to itself", QVariant::fromValue(PropertyList::Uid{1}), 0, {}},
    };
    for (const auto &row : rows) {
        const QVariantMap fields{{u"KeyCode"_s, row.keyCode}, {u"ModifierFlags"_s, row.modifierFlags}};
        EXPECT_EQ(MASShortcut::withData(KeyedArchive::encode(u"MASShortcut"_s, fields)), row.shortcut) << row.name;
        EXPECT_FALSE(MASShortcut::withData(KeyedArchive::encode(u"Other"_s, fields))) << row.name;
        EXPECT_TRUE(!row.shortcut || MASShortcut::withData(row.shortcut->data()) == row.shortcut) << row.name;
    }
}

TEST(MASShortcut, eventTellsWhatIsDownAfterwards)
{
    const struct {
        const char *name;
        Qt::Key key;
        quint32 scanCode; ///< 8 more than the evdev code
        Qt::KeyboardModifiers before;
        MASShortcut pressed;
        quint64 released;
    } rows[] = {
        {"a letter goes by its place", Qt::Key_A, 24, Qt::MetaModifier, MASShortcut(12, command), command},
        {"Shift after Alt", Qt::Key_Shift, 50, Qt::AltModifier, MASShortcut(56, option | shift), option},
        {"Super after Shift", Qt::Key_Super_L, 133, Qt::ShiftModifier, MASShortcut(55, shift | command), shift},
        {"Alt after Shift", Qt::Key_Meta, 64, Qt::ShiftModifier, MASShortcut(58, shift | option), shift},
        {"an unknown key", Qt::Key_unknown, 4000, Qt::ShiftModifier, MASShortcut(NotFound, shift), shift},
    };
    for (const auto &row : rows) {
        const QKeyEvent press(QEvent::KeyPress, row.key, row.before, row.scanCode, 0, 0);
        EXPECT_EQ(MASShortcut::fromKeyEvent(press), row.pressed) << row.name;
        const QKeyEvent release(QEvent::KeyRelease, row.key, row.before, row.scanCode, 0, 0);
        EXPECT_EQ(MASShortcut::fromKeyEvent(release).modifierFlags(), row.released) << row.name;
    }
}

TEST(MASShortcut, isTakenBySystemOrMenu)
{
    const QString bySystem
        = u"This combination cannot be used because it is already used by a system-wide keyboard shortcut.\nIf you "
          "really want to use this key combination, most shortcuts can be changed in the Keyboard & Mouse panel in "
          "System Preferences."_s;
    const struct {
        const char *name;
        MASShortcut shortcut;
        QString error; ///< empty when it is free
    } rows[] = {
        {"named in the settings", MASShortcut(0, control), bySystem},
        {"named with other modifiers", MASShortcut(0, control | shift), {}},
        {"named but disabled", MASShortcut(1, control), {}},
        {"held by another program", MASShortcut(2, command | option), bySystem},
        {"no key is not the first key", MASShortcut(NotFound, control), {}},
        {"a capital needs Shift", MASShortcut(12, command | shift),
         u"This shortcut cannot be used because it is already used by the menu item ‘Quit %1’."_s},
        {"a capital is not its letter", MASShortcut(12, command), {}},
        {"behind a submenu without it", MASShortcut(13, command),
         u"This shortcut cannot be used because it is already used by the menu item ‘Close’."_s},
        {"an entry that opens a menu has no key", MASShortcut(14, command), {}},
        {"an entry without a key is not pressed", MASShortcut(90, command), {}},
    };
    MemoryKeyboardLayout layout;
    layout.setTexts({{12, u"q"_s}, {13, u"w"_s}, {14, u"e"_s}});
    MemorySystemShortcuts system;
    system.hotKeys = {{{0, ControlKey}, true}, {{1, ControlKey}, false}};
    system.grabbed = {{2, CommandKey | OptionKey}};
    const std::vector<MenuEntry> menu{
        {u"Program"_s, u"e"_s, command, {{u"About"_s, {}, command, {}}, {u"Quit %1"_s, u"Q"_s, command, {}}}},
        {u"Close"_s, u"w"_s, command | 0x10000, {}}};
    for (const auto &row : rows) {
        QString error;
        EXPECT_EQ(row.shortcut.isTaken(system, layout, menu, &error), !row.error.isEmpty()) << row.name;
        EXPECT_EQ(error.toStdString(), row.error.toStdString()) << row.name;
    }
    system.hotKeys.reset(); // cannot be read
    EXPECT_FALSE(MASShortcut(0, control).isTaken(system, layout, menu));

    EXPECT_TRUE(MASShortcut(12, command | 0x810000).shouldBypass(layout)); // with Caps Lock and Fn
    EXPECT_FALSE(MASShortcut(12, command | shift).shouldBypass(layout));
    EXPECT_FALSE(MASShortcut(14, command).shouldBypass(layout));
}

} // namespace
} // namespace Orbita
