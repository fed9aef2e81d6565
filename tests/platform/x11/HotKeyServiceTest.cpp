#include "ForeignClient.h"

#include "desktop/harness/Bus.h"
#include "desktop/harness/SessionFolders.h"
#include "platform/desktop/FallbackHotKeyService.h"
#include "platform/desktop/PlasmaHotKeyService.h"
#include "platform/memory/MemoryHotKeyService.h"
#include "platform/memory/MemoryKeyboardLayout.h"
#include "platform/x11/X11HotKeyService.h"
#include "platform/x11/X11RawInput.h"
#include "support/RowName.h"

#include <gtest/gtest.h>

#define explicit explicit_ // a field's name there
#include <xcb/xkb.h>
#undef explicit

namespace Orbita {
namespace {

using Heard = std::vector<quint32>;

/// A combination, and what is pressed for it on an English keyboard.
struct Chord {
    KeyCombination combination;
    const char *keys;
};
constexpr Chord controlSpace{{49, ControlKey}, "Control+space"};
constexpr Chord superSpace{{49, CommandKey}, "Super+space"};
constexpr Chord marker{{98, 0}, "F7"};

// A keyboard for each back end, whose keys a test presses, and where another program may take Control and Space.

struct MemoryKeyboard {
    MemoryHotKeyService service;

    void press(const Chord &chord) { service.press(chord.combination); }
    void takeElsewhere() { service.takenByOthers = {controlSpace.combination}; }
    void releaseElsewhere() { service.takenByOthers.clear(); }
    void loseService() { service.nextError = GrabError::NotSupported; }
};

struct X11Keys {
    VirtualDisplay display;
    X11Connection connection{display.name()};
    X11RawInput input{connection};
    X11HotKeyService service{connection, input};
    ForeignClient other{display.name()};

    void press(const char *keys)
    {
        const xcb_timestamp_t before = connection.serverTime();
        while (connection.serverTime() == before) // within one millisecond it would look like a key that repeats
            continue;
        other.input.tap(QString::fromLatin1(keys));
    }
    void press(const Chord &chord) { press(chord.keys); }
    /// Whether the other program can take Space with \a modifiers.
    [[nodiscard]] bool grabSpaceElsewhere(quint16 modifiers)
    {
        (void)connection.serverTime(); // what the service has given back is free then
        const auto request = xcb_grab_key_checked(other.connection, 0, other.connection.root(), modifiers, 65,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        return !XReply<xcb_generic_error_t>(xcb_request_check(other.connection, request));
    }
    void takeElsewhere() { EXPECT_TRUE(grabSpaceElsewhere(XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_LOCK)); }
    void releaseElsewhere()
    {
        EXPECT_TRUE(grabSpaceElsewhere(XCB_MOD_MASK_CONTROL)); // a refusal has left nothing of it taken
        xcb_ungrab_key(other.connection, 65, other.connection.root(), XCB_MOD_MASK_ANY);
        other.connection.sync();
    }
    void loseService() { display.kill(); }
    /// Keys have to be held for a tenth of a second.
    void setSlowKeys(bool enabled) const
    {
        xcb_connection_t *xcb = other.connection;
        constexpr quint32 slowKeys = XCB_XKB_BOOL_CTRL_SLOW_KEYS;
        const quint8 repeats[32]{};
        std::free(xcb_xkb_use_extension_reply(xcb, xcb_xkb_use_extension(xcb, 1, 0), nullptr));
        xcb_xkb_set_controls(xcb, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, slowKeys,
                             enabled ? slowKeys : 0, slowKeys, 0, 0, 100, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, repeats);
        other.connection.sync();
    }
    void run(const QString &command) const
    {
        EXPECT_EQ(display.start(QStringLiteral("sh"), {QStringLiteral("-c"), command}).waitForExit(), 0);
    }
};

struct PlasmaKeys {
    SessionFolders folders;
    SessionProcesses processes{folders};
    VirtualDisplay display;
    QProcessEnvironment environment = folders.environment();
    std::unique_ptr<Program> daemon = startBusDaemon(folders.busAddress(), environment);
    Bus bus{folders.busAddress()};
    std::unique_ptr<Program> plasma;
    ForeignClient other{display.name()};
    MemoryKeyboardLayout layout;
    PlasmaHotKeyService service{bus.connection(), layout};

    PlasmaKeys()
    {
        environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display.name()));
        startPlasma();
    }
    void startPlasma()
    {
        plasma.reset();
        plasma = std::make_unique<Program>(QStringLiteral("kglobalaccel5"), QStringList(), environment);
        bus.waitForName(QStringLiteral("org.kde.kglobalaccel"));
    }
    void call(const QString &method, const QVariantList &arguments) const
    {
        bus.call(QStringLiteral("org.kde.kglobalaccel"), QStringLiteral("/kglobalaccel"),
                 QStringLiteral("org.kde.KGlobalAccel"), method, arguments);
    }
    void press(const Chord &chord) const { other.input.tap(QString::fromLatin1(chord.keys)); }
    void takeElsewhere() const
    {
        const QStringList action(4, QStringLiteral("other"));
        call(QStringLiteral("doRegister"), {action});
        const QList<int> key{int(Qt::CTRL) | int(Qt::Key_Space)};
        call(QStringLiteral("setShortcut"), {action, QVariant::fromValue(key), 6U});
    }
    void releaseElsewhere() const
    {
        call(QStringLiteral("unregister"), {QStringLiteral("other"), QStringLiteral("other")});
    }
    void loseService() { plasma.reset(); }
};

template <typename Keyboard>
class HotKeyContract : public testing::Test {
protected:
    HotKeyContract()
    {
        QObject::connect(&service, &HotKeyService::pressed, &service, [this](HotKeyId id) { heard.push_back(id.id); });
        EXPECT_TRUE(grab(0, marker.combination));
    }
    auto grab(quint32 id, KeyCombination combination) { return service.grab({0x4d415353, id}, combination); }
    void expectRefusal(KeyCombination combination, GrabError error)
    {
        const auto result = grab(9, combination);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), error);
    }
    /// What was pressed since the last question: all that has been heard once a marker is, which comes last.
    Heard pressed()
    {
        keyboard.press(marker);
        EXPECT_TRUE(eventually([this] { return !heard.empty() && heard.back() == 0; }));
        heard.resize(heard.empty() ? 0 : heard.size() - 1);
        return std::exchange(heard, {});
    }

    Keyboard keyboard;
    HotKeyService &service = keyboard.service;
    Heard heard;
};
using Keyboards = testing::Types<MemoryKeyboard, X11Keys, PlasmaKeys>;
TYPED_TEST_SUITE(HotKeyContract, Keyboards);

TYPED_TEST(HotKeyContract, aHotKeyIsPressedWhileItIsHeldByOneIdOnly)
{
    ASSERT_TRUE(this->grab(1, controlSpace.combination));
    ASSERT_TRUE(this->grab(2, superSpace.combination));
    this->expectRefusal(controlSpace.combination, GrabError::TakenByOther);
    EXPECT_FALSE(this->service.isTakenByOther(controlSpace.combination));
    this->keyboard.press(superSpace);
    this->keyboard.press(controlSpace);
    EXPECT_EQ(this->pressed(), (Heard{2, 1}));

    this->service.release({0x4d415353, 1});
    this->service.release({0x4d415353, 7});
    this->keyboard.press(controlSpace);
    EXPECT_EQ(this->pressed(), Heard{});
    EXPECT_TRUE(this->grab(3, controlSpace.combination));
}

TYPED_TEST(HotKeyContract, whatAnotherProgramHoldsIsOutOfReachUntilItLetsGo)
{
    this->keyboard.takeElsewhere();
    EXPECT_TRUE(this->service.isTakenByOther(controlSpace.combination));
    this->expectRefusal(controlSpace.combination, GrabError::TakenByOther);
    this->keyboard.releaseElsewhere();
    EXPECT_FALSE(this->service.isTakenByOther(controlSpace.combination));
    EXPECT_TRUE(this->grab(1, controlSpace.combination));
    this->keyboard.loseService();
    this->expectRefusal(superSpace.combination, GrabError::NotSupported);
}

using X11HotKeys = HotKeyContract<X11Keys>;

struct PressRow {
    const char *name;
    KeyCombination combination;
    QStringList switchedOn;
    const char *keys;
    Heard heard{1};
};

class PressedOnX11 : public X11HotKeys, public testing::WithParamInterface<PressRow> {};

TEST_P(PressedOnX11, whileAnotherProgramHasTheFocus)
{
    const xcb_window_t window = keyboard.other.show({});
    xcb_set_input_focus(keyboard.other.connection, XCB_INPUT_FOCUS_NONE, window, XCB_CURRENT_TIME);
    ASSERT_TRUE(grab(1, GetParam().combination));
    for (const QString &lock : GetParam().switchedOn)
        keyboard.other.input.tap(lock);
    keyboard.press(GetParam().keys);
    EXPECT_EQ(pressed(), GetParam().heard);
}

const QString capsLock = QStringLiteral("Caps_Lock");
const QString numLock = QStringLiteral("Num_Lock");
constexpr KeyCombination controlA{0, ControlKey};
const PressRow pressRows[] = {
    {"a key alone", {96, 0}, {}, "F5"},
    {"with Command", {0, CommandKey}, {}, "Super+a"},
    {"with Option and Shift", {0, OptionKey | ShiftKey}, {}, "Alt+Shift+a"},
    {"with Num Lock on", controlA, {numLock}, "Control+a"},
    {"with both locks on", controlA, {capsLock, numLock}, "Control+a"},
    {"not without the modifier", controlA, {}, "a", {}},
    {"not with one more modifier", controlA, {}, "Control+Shift+a", {}},
};
INSTANTIATE_TEST_SUITE_P(Keys, PressedOnX11, testing::ValuesIn(pressRows), rowName<PressRow>);

TEST_F(X11HotKeys, aKeyThatRepeatsIsPressedOnce)
{
    keyboard.run(QStringLiteral("xset r rate 50 100"));
    ASSERT_TRUE(grab(1, controlSpace.combination));
    int presses = 0;
    QObject::connect(&keyboard.connection, &X11Connection::keyPressed, &service, [&] { ++presses; });
    const auto codes = keyboard.other.input.keyCodes(QString::fromLatin1(controlSpace.keys));
    keyboard.other.input.pressKeys(codes);
    EXPECT_TRUE(eventually([&] { return presses >= 4; }));
    keyboard.other.input.releaseKeys(codes);
    keyboard.press(controlSpace);
    EXPECT_EQ(pressed(), (Heard{1, 1}));
}

TEST_F(X11HotKeys, aDeviceThatRepeatsItselfPressesOnce)
{
    ASSERT_TRUE(grab(1, controlSpace.combination));
    const auto codes = keyboard.other.input.keyCodes(QString::fromLatin1(controlSpace.keys));
    keyboard.other.input.pressKeys(codes);
    for (int i = 0; i < 3; ++i)
        keyboard.other.input.pressKeys({codes.last()});
    keyboard.other.input.releaseKeys(codes);
    keyboard.press(controlSpace);
    keyboard.press(controlSpace);
    EXPECT_EQ(pressed(), (Heard{1, 1, 1}));
}

TEST_F(X11HotKeys, aSlowKeyIsPressedOnceItHasBeenHeld)
{
    ASSERT_TRUE(grab(1, {101, 0}));
    keyboard.setSlowKeys(true);
    const auto codes = keyboard.other.input.keyCodes(QStringLiteral("F9"));
    keyboard.other.input.pressKeys(codes);
    keyboard.other.input.releaseKeys(codes);
    keyboard.other.input.pressKeys(codes);
    EXPECT_TRUE(eventually([&] { return !heard.empty(); }));
    keyboard.other.input.releaseKeys(codes);
    keyboard.setSlowKeys(false);
    EXPECT_EQ(pressed(), Heard{1});
}

TEST_F(X11HotKeys, areHeardOnceThroughAnotherProgramsGrabAndAfterIt)
{
    ASSERT_TRUE(grab(1, controlSpace.combination));
    const XConnection &other = keyboard.other.connection;
    const auto held = keyboard.other.input.keyCodes(QStringLiteral("Control_L"));
    keyboard.other.input.pressKeys(held);
    const XReply<xcb_grab_keyboard_reply_t> grabbed(xcb_grab_keyboard_reply(
        other, xcb_grab_keyboard(other, 0, other.root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC), nullptr));
    ASSERT_TRUE(grabbed && grabbed->status == XCB_GRAB_STATUS_SUCCESS);
    keyboard.press("space"); // with the Control that was down before
    keyboard.other.input.releaseKeys(held);
    keyboard.press("space");
    keyboard.press("Control+Shift+space");
    EXPECT_EQ(pressed(), Heard{1});
    xcb_ungrab_keyboard(other, XCB_CURRENT_TIME);
    keyboard.press(controlSpace);
    EXPECT_EQ(pressed(), Heard{1});
}

TEST_F(X11HotKeys, needTheKeyAndItsModifiersOnTheKeyboard)
{
    keyboard.run(QStringLiteral("xmodmap -e 'clear mod4' -e 'keycode 38 ='"));
    for (const KeyCombination absent : {KeyCombination{0, 0}, superSpace.combination, {127, 0}, {0x10000, 0}}) {
        expectRefusal(absent, GrabError::NoSuchKey);
        EXPECT_FALSE(service.isTakenByOther(absent));
    }
}

TEST_F(X11HotKeys, stayOnTheirKeysWhenTheLayoutChanges)
{
    ASSERT_TRUE(grab(1, {16, ControlKey}));
    keyboard.run(QStringLiteral("setxkbmap de"));
    keyboard.press("Control+z");
    EXPECT_EQ(pressed(), Heard{1});
}

TEST_F(X11HotKeys, followTheirModifiersToOtherBitsAndAreTriedForAgain)
{
    ASSERT_TRUE(keyboard.grabSpaceElsewhere(XCB_MOD_MASK_3));
    ASSERT_TRUE(grab(1, superSpace.combination));
    keyboard.run(QStringLiteral("xmodmap -e 'clear mod4' -e 'add mod3 = Super_L'"));
    EXPECT_TRUE(eventually([&] { return keyboard.grabSpaceElsewhere(XCB_MOD_MASK_4); }));
    keyboard.press(superSpace);
    EXPECT_EQ(pressed(), Heard{});

    keyboard.releaseElsewhere();
    keyboard.run(QStringLiteral("xmodmap -e 'add mod5 = Scroll_Lock'"));
    for (const char *keys : {"Super+space", "Scroll_Lock+Super+space"}) {
        EXPECT_TRUE(eventually([&] {
            keyboard.press(keys);
            return pressed() == Heard{1};
        })) << keys;
    }
}

using PlasmaHotKeys = HotKeyContract<PlasmaKeys>;

TEST_F(PlasmaHotKeys, followTheLayoutAndTheServiceToItsNextStart)
{
    constexpr Chord english{{16, ControlKey}, "Control+y"};
    constexpr Chord german{english.combination, "Control+z"};
    expectRefusal(english.combination, GrabError::NoSuchKey);
    keyboard.layout.setTexts({{16, QStringLiteral("y")}});
    ASSERT_TRUE(grab(1, english.combination));
    keyboard.press(english);
    EXPECT_EQ(pressed(), Heard{1});
    keyboard.layout.setTexts({{16, QStringLiteral("z")}});
    keyboard.press(english);
    keyboard.press(german);
    EXPECT_EQ(pressed(), Heard{1});
    keyboard.startPlasma();
    EXPECT_TRUE(eventually([&] {
        keyboard.press(german);
        return !heard.empty();
    }));
}

TEST_F(PlasmaHotKeys, standInForTheWindowSystemWhereTheyAreKeptForUsAlone)
{
    X11Connection connection(keyboard.display.name());
    X11RawInput input(connection);
    X11HotKeyService windowSystem(connection, input);
    PlasmaHotKeyService next(keyboard.bus.connection(), keyboard.layout);
    FallbackHotKeyService both(windowSystem, next);
    QObject::connect(&both, &HotKeyService::pressed, &both, [this](HotKeyId id) { heard.push_back(id.id); });

    ASSERT_TRUE(grab(1, controlSpace.combination)); // as by a former run
    EXPECT_FALSE(windowSystem.grab({0, 2}, controlSpace.combination));
    EXPECT_FALSE(both.isTakenByOther(controlSpace.combination));
    EXPECT_TRUE(both.grab({0, 2}, controlSpace.combination));
    EXPECT_TRUE(eventually([&] {
        keyboard.press(controlSpace);
        return std::ranges::find(heard, 2) != heard.end();
    }));

    both.release({0, 2});
    service.release({0x4d415353, 1});
    keyboard.takeElsewhere();
    EXPECT_TRUE(both.isTakenByOther(controlSpace.combination));
    EXPECT_FALSE(both.grab({0, 2}, controlSpace.combination));
}

} // namespace
} // namespace Orbita
