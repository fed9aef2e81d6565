#include "Eventually.h"
#include "ForeignClient.h"
#include "XServer.h"

#include "platform/memory/MemoryStage.h"
#include "platform/x11/X11MouseUpEventTap.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

/// A mouse whose buttons a test clicks, whichever back end hears of it.
class Mouse {
public:
    virtual ~Mouse() = default;
    [[nodiscard]] virtual MouseUpEventTap &tap() = 0;
    virtual void clickLeft() = 0;
    /// Until all clicks so far were heard, or would have been.
    virtual void settle() = 0;
    virtual void loseSource() = 0;
};

class MemoryMouse final : public Mouse {
public:
    MouseUpEventTap &tap() override { return m_tap; }
    void clickLeft() override { m_tap.release(); }
    void settle() override {}
    void loseSource() override
    {
        m_tap.sourceLost = true;
        m_tap.loseSource();
    }

private:
    MemoryMouseUpEventTap m_tap;
};

class X11Mouse final : public Mouse {
public:
    MouseUpEventTap &tap() override { return m_tap; }
    void clickLeft() override { click(1); }
    void click(quint8 button)
    {
        m_client.pressButton(button, true);
        m_client.pressButton(button, false);
    }
    void settle() override
    {
        // What the witness has heard was sent to the tap's connection before the witness's later question is answered.
        click(2);
        const bool heard = eventually([this] { return m_witnessed; });
        m_witnessed = false;
        if (!heard)
            qFatal("the display is silent");
        (void)m_connection.serverTime();
        QCoreApplication::processEvents();
    }
    void loseSource() override
    {
        m_server.kill();
        (void)eventually([this] { return !m_connection.isAlive(); });
    }
    [[nodiscard]] ForeignClient &client() { return m_client; }

private:
    XServer m_server;
    X11Connection m_connection{m_server.display()};
    X11MouseUpEventTap m_tap{m_connection};
    ForeignClient m_client{m_server.display()};
    X11Connection m_witness{m_server.display()};
    X11MouseUpEventTap m_witnessTap{m_witness};
    bool m_witnessed = false;
    QObject m_context;

public:
    X11Mouse()
    {
        m_witnessTap.setEnabled(true);
        QObject::connect(&m_witness, &X11Connection::rawButtonReleased, &m_context,
                         [this](quint32 button) { m_witnessed |= button == 2; });
    }
};

using MouseFactory = std::unique_ptr<Mouse> (*)();
class MouseUpContract : public testing::TestWithParam<MouseFactory> {};

TEST_P(MouseUpContract, hearsReleasesWhileEnabledAndHasASource)
{
    const auto mouse = GetParam()();
    MouseUpEventTap &tap = mouse->tap();
    int heard = 0;
    QObject::connect(&tap, &MouseUpEventTap::mouseUp, &tap, [&] { ++heard; });
    EXPECT_FALSE(tap.isEnabled());
    mouse->clickLeft();
    mouse->settle();
    EXPECT_EQ(heard, 0);

    EXPECT_TRUE(tap.setEnabled(true));
    EXPECT_TRUE(tap.isEnabled());
    mouse->clickLeft();
    mouse->clickLeft();
    mouse->settle();
    EXPECT_EQ(heard, 2);

    EXPECT_TRUE(tap.setEnabled(false));
    mouse->clickLeft();
    mouse->settle();
    EXPECT_EQ(heard, 2);

    EXPECT_TRUE(tap.setEnabled(true));
    mouse->loseSource();
    EXPECT_FALSE(tap.isEnabled());
    EXPECT_FALSE(tap.setEnabled(true));
    EXPECT_TRUE(tap.setEnabled(false));
}

INSTANTIATE_TEST_SUITE_P(BackEnds, MouseUpContract,
                         testing::Values(
                             +[]() -> std::unique_ptr<Mouse> { return std::make_unique<MemoryMouse>(); },
                             +[]() -> std::unique_ptr<Mouse> { return std::make_unique<X11Mouse>(); }),
                         [](const auto &backEnd) { return backEnd.index == 0 ? "Memory" : "X11"; });

TEST(X11MouseUpEventTap, hearsTheLeftButtonAloneAndThroughAGrab)
{
    X11Mouse mouse;
    int heard = 0;
    QObject::connect(&mouse.tap(), &MouseUpEventTap::mouseUp, &mouse.tap(), [&] { ++heard; });
    ASSERT_TRUE(mouse.tap().setEnabled(true));
    mouse.click(3);
    mouse.settle();
    EXPECT_EQ(heard, 0);
    ASSERT_TRUE(mouse.client().grabPointer());
    mouse.clickLeft();
    mouse.settle();
    EXPECT_EQ(heard, 1);
}

} // namespace
} // namespace Orbita
