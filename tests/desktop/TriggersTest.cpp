// What summons the ring from anywhere in the session, whatever program has the focus or holds a grab.

#include "desktop/OrbitaSession.h"
#include "shortcut/MASShortcut.h"
#include "support/RowName.h"

#include <QElapsedTimer>

#include <cmath>
#include <numbers>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

constexpr quint16 space = 49;
constexpr quint16 f7 = 98;
const QPoint middle{640, 400};

QByteArray stored(quint16 key, quint64 modifiers)
{
    return MASShortcut(key, modifiers).data();
}

const QVariantMap shortcutAlone{{u"gestureSettings"_s, -1},
                                {u"GlobalShortcut"_s, stored(space, ControlModifierFlag | OptionModifierFlag)}};

/// Another program on the display of a session.
class OtherProgram {
public:
    explicit OtherProgram(OrbitaSession &session) : m_connection(session.desktop().connection().display()) {}

    /// Takes pointer and keyboard for itself alone, as a menu does.
    void grabEverything() const
    {
        const auto pointer = xcb_grab_pointer(m_connection, 0, m_connection.root(), XCB_EVENT_MASK_BUTTON_PRESS,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, 0);
        const XReply<xcb_grab_pointer_reply_t> pointerReply(xcb_grab_pointer_reply(m_connection, pointer, nullptr));
        const auto keyboard
            = xcb_grab_keyboard(m_connection, 0, m_connection.root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const XReply<xcb_grab_keyboard_reply_t> keyboardReply(xcb_grab_keyboard_reply(m_connection, keyboard, nullptr));
        EXPECT_TRUE(pointerReply && pointerReply->status == XCB_GRAB_STATUS_SUCCESS);
        EXPECT_TRUE(keyboardReply && keyboardReply->status == XCB_GRAB_STATUS_SUCCESS);
    }
    void letGo() const
    {
        xcb_ungrab_pointer(m_connection, XCB_CURRENT_TIME);
        xcb_ungrab_keyboard(m_connection, XCB_CURRENT_TIME);
        m_connection.sync();
    }
    /// Whether \a key, an X key code, with Control and Alt can be taken; it is then.
    [[nodiscard]] bool grabKey(quint8 key) const
    {
        const auto cookie
            = xcb_grab_key_checked(m_connection, 1, m_connection.root(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, key,
                                   XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        return !XReply<xcb_generic_error_t>(xcb_request_check(m_connection, cookie));
    }
    /// Covers the screen with a window that counts what is pressed on it.
    void coverScreen() const
    {
        const quint32 values[]{1, XCB_EVENT_MASK_BUTTON_PRESS};
        const xcb_window_t window = xcb_generate_id(m_connection);
        xcb_create_window(m_connection, 0, window, m_connection.root(), 0, 0, 1280, 800, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        xcb_map_window(m_connection, window);
        m_connection.sync();
    }
    /// The buttons whose presses have arrived since the last time.
    [[nodiscard]] QList<int> pressed() const
    {
        m_connection.sync();
        QList<int> buttons;
        while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)}) {
            if ((event->response_type & 0x7f) == XCB_BUTTON_PRESS)
                buttons.append(reinterpret_cast<const xcb_button_press_event_t &>(*event).detail);
        }
        return buttons;
    }

private:
    XConnection m_connection;
};

/// Starts Orbita and returns when it listens.
void start(OrbitaSession &session, const QStringList &arguments = {})
{
    session.desktop().start(u"orbita"_s, arguments);
    session.desktop().bus().waitForName(u"org.orbita.Orbita"_s);
    session.orbita(u"hide"_s);
}

void press(OrbitaSession &session, Button button)
{
    session.input().press(button);
    session.input().release(button);
}

TEST(Triggers, theShortcutTogglesTheRingOverItselfWhateverIsLocked)
{
    OrbitaSession session({}, shortcutAlone);
    const WindowInfo xterm = session.startTerminal();
    start(session);
    session.input().moveTo(middle);
    for (const QString &lock : {QString(), u"Caps_Lock"_s, u"Num_Lock"_s}) {
        if (!lock.isEmpty())
            session.input().tap(lock);
        session.input().tap(u"Control+Alt+space"_s);
        session.waitForKeyboard();
        session.waitUntilStill();
        session.input().tap(u"Control+Alt+space"_s);
        session.waitUntilHidden();
        session.waitUntilActive(xterm);
    }
}

TEST(Triggers, theShortcutIsHeardOnceThroughTheGrabsOfAnotherProgram)
{
    OrbitaSession session({}, shortcutAlone);
    start(session);
    const OtherProgram other(session);
    other.grabEverything();
    session.input().moveTo(middle);
    session.input().tap(u"Control+Alt+space"_s);
    session.waitForRing();
    session.waitUntilStill();
    EXPECT_TRUE(session.ring()) << "a press heard twice would have hidden it";
    session.input().tap(u"Control+Alt+space"_s);
    session.waitUntilHidden();
    session.input().tap(u"Alt+space"_s);
    session.input().tap(u"Control+Shift+Alt+space"_s);
    session.input().tap(u"space"_s);
    session.waitUntilStill();
    EXPECT_FALSE(session.ring());
}

TEST(Triggers, anotherShortcutInTheDefaultsWorksAtOnceAndFreesTheOldOne)
{
    OrbitaSession session({}, shortcutAlone);
    start(session);
    const OtherProgram other(session);
    const quint8 oldKey = session.input().keyCodes(u"space"_s).first();
    const quint8 newKey = session.input().keyCodes(u"F7"_s).first();
    EXPECT_FALSE(other.grabKey(oldKey));
    session.setDefault(u"GlobalShortcut"_s, stored(f7, ControlModifierFlag | OptionModifierFlag));
    waitUntil([&] { return other.grabKey(oldKey); }, u"the old shortcut is free"_s);
    session.input().moveTo(middle);
    waitUntil(
        [&] {
            session.input().tap(u"Control+Alt+F7"_s);
            session.desktop().bus().call(u"org.orbita.Orbita"_s, u"/org/orbita/Orbita"_s,
                                         u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
            return session.ring().has_value();
        },
        u"the new shortcut shows the ring"_s);
    EXPECT_FALSE(other.grabKey(newKey));
}

TEST(Triggers, aShortcutThatAnotherProgramHoldsIsReportedAsTaken)
{
    OrbitaSession session;
    const OtherProgram other(session);
    ASSERT_TRUE(other.grabKey(session.input().keyCodes(u"space"_s).first()));
    session.orbita(u"settings"_s);
    session.setDefault(u"GlobalShortcut"_s, shortcutAlone[u"GlobalShortcut"_s]);
    waitUntil([&] { return session.log().contains("taken by another program"); }, u"the log says who has it"_s);
}

TEST(Triggers, eachMouseButtonShowsTheRingThroughGrabsAndReachesTheWindowUnderIt)
{
    OrbitaSession session({}, shortcutAlone);
    start(session);
    const OtherProgram application(session);
    application.coverScreen();
    const OtherProgram other(session);
    session.input().moveTo(middle);
    const std::vector<std::pair<int, Button>> rows{{6, Button::Middle}, {7, Button::Back}, {8, Button::Forward}};
    for (const auto &[trigger, button] : rows) {
        session.setDefault(u"gestureSettings"_s, trigger);
        int presses = 0;
        const auto isShown = [&, button = button] {
            press(session, button);
            ++presses;
            return session.ring().has_value();
        };
        waitUntil(isShown, u"button %1 shows the ring"_s.arg(int(button)));
        EXPECT_EQ(application.pressed(), QList<int>(presses, int(button)));
        session.orbita(u"hide"_s);
        session.waitUntilHidden();

        other.grabEverything();
        press(session, button);
        session.waitForRing();
        EXPECT_EQ(other.pressed(), QList<int>{int(button)});
        other.letGo();
        session.orbita(u"hide"_s);
        session.waitUntilHidden();
    }
}

TEST(Triggers, aCircleOfThePointerShowsTheRingThroughGrabs)
{
    OrbitaSession session({}, {{u"gestureSettings"_s, 5}});
    start(session);
    const OtherProgram other(session);
    other.grabEverything();
    QElapsedTimer time;
    time.start();
    waitUntil(
        [&] {
            const double turns = double(time.elapsed()) / 700;
            const double angle = 2 * std::numbers::pi * turns;
            session.input().moveTo(middle + QPoint(qRound(90 * std::sin(angle)), qRound(-90 * std::cos(angle))));
            return session.ring().has_value();
        },
        u"a circle clockwise shows the ring"_s);
}

/// Fingers on a recorded touchpad, \a start and \a end of the gesture as their distance from the pad's middle.
struct Gesture {
    const char *name;
    int trigger;
    int fingers;
    int start;
    int end;
};

/// A pad 1000 wide and high on which fingers rest or spread during a second, 100 frames of it.
QByteArray recording(const Gesture &gesture)
{
    QByteArray text
        = "N: Test touchpad\nA: 2f 0 9 0 0 0\nA: 35 0 1000 0 0 0\nA: 36 0 1000 0 0 0\nA: 39 0 65535 0 0 0\n";
    for (int frame = 0; frame <= 100; ++frame) {
        const auto event = [&](int type, int code, int value) {
            text += QString::asprintf("E: %d.%06d %04x %04x %04d\n", frame / 100, frame % 100 * 10'000, type, code,
                                      value)
                        .toLatin1();
        };
        const int distance = gesture.start + (gesture.end - gesture.start) * frame / 100;
        for (int finger = 0; finger < gesture.fingers; ++finger) {
            const double angle = 2 * std::numbers::pi * finger / gesture.fingers;
            event(3, 0x2f, finger);
            if (frame == 0)
                event(3, 0x39, finger + 1);
            event(3, 0x35, 500 + qRound(distance * std::cos(angle)));
            event(3, 0x36, 500 + qRound(distance * std::sin(angle)));
        }
        event(0, 0, 0);
    }
    return text;
}

class TouchTriggers : public testing::TestWithParam<Gesture> {};

TEST_P(TouchTriggers, showTheRingThroughGrabs)
{
    OrbitaSession session({}, {{u"gestureSettings"_s, GetParam().trigger}});
    const QString file = session.desktop().folders().write(u"touchpad.evemu"_s, recording(GetParam()));
    const OtherProgram other(session);
    other.grabEverything();
    session.input().moveTo(middle);
    session.desktop().start(u"orbita"_s, {u"--touch-recording"_s, file});
    session.waitForGeometry(QRect(440, 200, 400, 400));
}

const Gesture gestures[]{{"three fingers rest", 1, 3, 200, 200},
                         {"three fingers spread", 2, 3, 150, 400},
                         {"four fingers spread", 3, 4, 150, 400},
                         {"four fingers rest", 4, 4, 200, 200}};
INSTANTIATE_TEST_SUITE_P(Triggers, TouchTriggers, testing::ValuesIn(gestures), rowName<Gesture>);

TEST(Triggers, aGestureMovesTheRingAndAReleaseOutsideHidesIt)
{
    OrbitaSession session({}, {{u"gestureSettings"_s, 6}});
    start(session);
    session.input().moveTo(middle);
    press(session, Button::Middle);
    session.waitForGeometry(QRect(440, 200, 400, 400));
    session.waitUntilStill();
    press(session, Button::Middle);
    session.input().click({480, 240}); // in the window's square
    session.waitUntilStill();
    EXPECT_TRUE(session.ring());
    session.input().moveTo({1000, 500});
    press(session, Button::Middle);
    session.waitForGeometry(QRect(800, 300, 400, 400));
    session.waitUntilStill();
    session.input().click({100, 100});
    session.waitUntilHidden();
}

TEST(Triggers, hostileSettingsAndAFloodOfMovementsShowNothing)
{
    OrbitaSession session({},
                          {{u"gestureSettings"_s, 5}, {u"GlobalShortcut"_s, QByteArray("bplist00\xff\xff\xff", 11)}});
    start(session);
    for (int i = 0; i < 10'000; ++i)
        session.input().moveBy({i % 2 == 0 ? 1 : -1, 0});
    session.orbita(u"settings"_s); // is still answered
    session.waitForSettings();
    EXPECT_FALSE(session.ring());

    OrbitaSession another;
    const QString file = another.desktop().folders().write(u"touchpad.evemu"_s, "no recording\n");
    const CommandResult result = another.run({u"show"_s, u"--touch-recording"_s, file});
    EXPECT_NE(result.status, 0);
    EXPECT_EQ(result.lines.size(), 1) << qPrintable(result.lines.join(u'\n'));
}

} // namespace
} // namespace Orbita
