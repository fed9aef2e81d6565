#include "ForeignClient.h"

#include "platform/memory/MemoryEventTaps.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11EventTaps.h"
#include "platform/x11/X11RawInput.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

enum class Deed { ReleaseLeft, PressBack, Move };

// A mouse that a test handles, for each back end that hears of it.

struct MemoryMouse {
    MemoryMouseUpEventTap mouseUp;
    MemoryOtherMouseDownEventTap otherMouseDown;
    MemoryMouseMovedEventTap mouseMoved;

    void act(Deed deed)
    {
        if (deed == Deed::ReleaseLeft)
            mouseUp.release();
        else if (deed == Deed::PressBack)
            otherMouseDown.press(3);
        else
            mouseMoved.move();
    }
    /// Until all deeds so far were heard, or would have been.
    void settle() {}
    void loseSource()
    {
        const auto lose = [](auto &tap) {
            tap.sourceLost = true;
            tap.loseSource();
        };
        lose(mouseUp);
        lose(otherMouseDown);
        lose(mouseMoved);
    }
};

struct X11Mouse {
    VirtualDisplay display;
    X11Connection connection{display.name()};
    X11RawInput input{connection};
    X11MouseUpEventTap mouseUp{input};
    X11OtherMouseDownEventTap otherMouseDown{input};
    X11MouseMovedEventTap mouseMoved{input};
    ForeignClient client{display.name()};
    X11Connection witness{display.name()};
    X11RawInput witnessInput{witness};
    X11MouseUpEventTap witnessTap{witnessInput};
    bool witnessed = false;

    X11Mouse()
    {
        witnessTap.setEnabled(true);
        QObject::connect(&witness, &X11Connection::rawButtonReleased, &witness,
                         [this](quint32 button) { witnessed |= button == quint32(Button::Right); });
    }
    void click(Button button)
    {
        client.input.press(button);
        client.input.release(button);
    }
    void act(Deed deed)
    {
        if (deed == Deed::Move)
            client.input.moveBy({1, 1});
        else
            click(deed == Deed::ReleaseLeft ? Button::Left : Button::Back);
    }
    void settle()
    {
        // What the witness has heard was sent to the tap's connection before the witness's later question is answered.
        click(Button::Right);
        waitUntil([this] { return std::exchange(witnessed, false); }, QStringLiteral("the display spoke"));
        (void)connection.serverTime();
        QCoreApplication::processEvents();
    }
    void loseSource()
    {
        display.kill();
        (void)eventually([this] { return !connection.isAlive(); });
    }
};

/// How often each tap of a mouse told something.
template <typename Mouse>
struct Heard {
    explicit Heard(Mouse &mouse)
    {
        QObject::connect(&mouse.mouseUp, &MouseUpEventTap::mouseUp, &mouse.mouseUp, [this] { ++releases; });
        QObject::connect(&mouse.otherMouseDown, &OtherMouseDownEventTap::otherMouseDown, &mouse.otherMouseDown,
                         [this](int number) { presses.append(number); });
        QObject::connect(&mouse.mouseMoved, &MouseMovedEventTap::mouseMoved, &mouse.mouseMoved, [this] { ++moves; });
    }
    int releases = 0;
    QList<int> presses;
    int moves = 0;
};

template <typename Mouse>
class EventTapContract : public testing::Test {
};
using Mice = testing::Types<MemoryMouse, X11Mouse>;
TYPED_TEST_SUITE(EventTapContract, Mice);

TYPED_TEST(EventTapContract, eachHearsItsOwnWhileEnabledAndHasASource)
{
    TypeParam mouse;
    const Heard heard(mouse);
    const std::vector<std::pair<EventTap *, Deed>> taps{
        {&mouse.mouseUp, Deed::ReleaseLeft}, {&mouse.otherMouseDown, Deed::PressBack}, {&mouse.mouseMoved, Deed::Move}};
    const auto heardInAll = [&] { return heard.releases + int(heard.presses.size()) + heard.moves; };
    for (const auto &[tap, deed] : taps) {
        const int before = heardInAll();
        EXPECT_FALSE(tap->isEnabled());
        mouse.act(deed);
        mouse.settle();
        EXPECT_EQ(heardInAll(), before);

        EXPECT_TRUE(tap->setEnabled(true));
        EXPECT_TRUE(tap->isEnabled());
        mouse.act(deed);
        mouse.act(deed);
        mouse.settle();
        EXPECT_EQ(heardInAll(), before + 2);
    }
    EXPECT_EQ(heard.releases, 2);
    EXPECT_EQ(heard.presses, (QList<int>{3, 3}));

    EXPECT_TRUE(mouse.otherMouseDown.setEnabled(false));
    mouse.act(Deed::PressBack);
    mouse.act(Deed::ReleaseLeft);
    mouse.settle();
    EXPECT_EQ(heard.presses.size(), 2);
    EXPECT_EQ(heard.releases, 3) << "one tap's end is not another's";

    mouse.loseSource();
    for (const auto &[tap, deed] : taps) {
        EXPECT_FALSE(tap->isEnabled());
        EXPECT_FALSE(tap->setEnabled(true));
        EXPECT_TRUE(tap->setEnabled(false));
    }
}

class X11EventTapTest : public testing::Test {
protected:
    X11EventTapTest() { EXPECT_TRUE(m_mouse.mouseUp.setEnabled(true) && m_mouse.otherMouseDown.setEnabled(true)); }
    X11Mouse m_mouse;
    Heard<X11Mouse> m_heard{m_mouse};
};

TEST_F(X11EventTapTest, hearsEachButtonByItsNumberThroughAGrab)
{
    ASSERT_TRUE(m_mouse.client.grabPointer());
    for (const Button button : {Button::Right, Button::WheelUp, Button::Forward, Button::Middle, Button::Left})
        m_mouse.click(button);
    m_mouse.settle();
    EXPECT_EQ(m_heard.presses, (QList<int>{4, 2}));
    EXPECT_EQ(m_heard.releases, 1);
}

TEST_F(X11EventTapTest, knowsALeftHandedUsersButtons)
{
    m_mouse.click(Button::Left);
    m_mouse.settle();
    EXPECT_EQ(m_heard.releases, 1);
    m_mouse.client.swapButtons();
    m_mouse.click(Button::Left);
    m_mouse.click(Button::Right);
    m_mouse.settle();
    EXPECT_EQ(m_heard.releases, 3) << "the witness presses that button too";
}

TEST_F(X11EventTapTest, movementsInAPauseAreNotEvenSent)
{
    using namespace std::chrono_literals;
    int sent = 0;
    QObject::connect(&m_mouse.input, &X11RawInput::moved, &m_mouse.input, [&] { ++sent; });
    ASSERT_TRUE(m_mouse.mouseMoved.setEnabled(true));
    m_mouse.mouseMoved.pause(1h);
    EXPECT_TRUE(m_mouse.mouseMoved.isEnabled());
    EXPECT_TRUE(m_mouse.mouseMoved.setEnabled(true));
    m_mouse.act(Deed::Move);
    m_mouse.settle();
    EXPECT_EQ(sent, 0);
    m_mouse.mouseMoved.pause(1ms);
    EXPECT_TRUE(eventually([&] {
        m_mouse.act(Deed::Move);
        return m_heard.moves > 0;
    }));
}

} // namespace
} // namespace Orbita
