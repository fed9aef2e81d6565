#include "ForeignClient.h"

#include "platform/memory/MemoryEventTaps.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11MouseUpEventTap.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

// A mouse whose buttons a test clicks, for each back end that hears of it.

struct MemoryMouse {
    MemoryMouseUpEventTap tap;

    void clickLeft() { tap.release(); }
    /// Until all clicks so far were heard, or would have been.
    void settle() {}
    void loseSource()
    {
        tap.sourceLost = true;
        tap.loseSource();
    }
};

struct X11Mouse {
    VirtualDisplay display;
    X11Connection connection{display.name()};
    X11MouseUpEventTap tap{connection};
    ForeignClient client{display.name()};
    X11Connection witness{display.name()};
    X11MouseUpEventTap witnessTap{witness};
    bool witnessed = false;

    X11Mouse()
    {
        witnessTap.setEnabled(true);
        QObject::connect(&witness, &X11Connection::rawButtonReleased, &witness,
                         [this](quint32 button) { witnessed |= button == 2; });
    }
    void click(Button button) { client.input.click({10, 10}, button); }
    void clickLeft() { click(Button::Left); }
    void settle()
    {
        // What the witness has heard was sent to the tap's connection before the witness's later question is answered.
        click(Button::Middle);
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

template <typename Mouse>
class MouseUpContract : public testing::Test {
};
using Mice = testing::Types<MemoryMouse, X11Mouse>;
TYPED_TEST_SUITE(MouseUpContract, Mice);

TYPED_TEST(MouseUpContract, hearsReleasesWhileEnabledAndHasASource)
{
    TypeParam mouse;
    MouseUpEventTap &tap = mouse.tap;
    int heard = 0;
    QObject::connect(&tap, &MouseUpEventTap::mouseUp, &tap, [&] { ++heard; });
    EXPECT_FALSE(tap.isEnabled());
    mouse.clickLeft();
    mouse.settle();
    EXPECT_EQ(heard, 0);

    EXPECT_TRUE(tap.setEnabled(true));
    EXPECT_TRUE(tap.isEnabled());
    mouse.clickLeft();
    mouse.clickLeft();
    mouse.settle();
    EXPECT_EQ(heard, 2);

    EXPECT_TRUE(tap.setEnabled(false));
    mouse.clickLeft();
    mouse.settle();
    EXPECT_EQ(heard, 2);

    EXPECT_TRUE(tap.setEnabled(true));
    mouse.loseSource();
    EXPECT_FALSE(tap.isEnabled());
    EXPECT_FALSE(tap.setEnabled(true));
    EXPECT_TRUE(tap.setEnabled(false));
}

TEST(X11MouseUpEventTap, hearsTheLeftButtonAloneAndThroughAGrab)
{
    X11Mouse mouse;
    int heard = 0;
    QObject::connect(&mouse.tap, &MouseUpEventTap::mouseUp, &mouse.tap, [&] { ++heard; });
    ASSERT_TRUE(mouse.tap.setEnabled(true));
    mouse.click(Button::Right);
    mouse.settle();
    EXPECT_EQ(heard, 0);
    ASSERT_TRUE(mouse.client.grabPointer());
    mouse.clickLeft();
    mouse.settle();
    EXPECT_EQ(heard, 1);
}

TEST(X11MouseUpEventTap, knowsALeftHandedUsersButtons)
{
    X11Mouse mouse;
    int heard = 0;
    QObject::connect(&mouse.tap, &MouseUpEventTap::mouseUp, &mouse.tap, [&] { ++heard; });
    ASSERT_TRUE(mouse.tap.setEnabled(true));
    mouse.clickLeft();
    mouse.settle();
    EXPECT_EQ(heard, 1);
    mouse.client.swapButtons();
    mouse.clickLeft();
    mouse.settle();
    EXPECT_EQ(heard, 1);
    mouse.click(Button::Right);
    mouse.settle();
    EXPECT_EQ(heard, 2);
}

} // namespace
} // namespace Orbita
