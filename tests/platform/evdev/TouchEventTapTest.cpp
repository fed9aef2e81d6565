#include "MachineWithTouchpads.h"

#include "desktop/harness/Wait.h"

#include "platform/evdev/EvdevTouchEventTap.h"
#include "platform/evdev/UdevInputAccess.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using Node = MachineWithTouchpads::Node;
using Touchpads = InputAccess::Touchpads;
using Counts = std::vector<qsizetype>;

struct EvdevTouchEventTapTest : testing::Test {
    MachineWithTouchpads machine;
    EvdevTouchEventTap tap;
    Counts fingers; ///< of each gesture
    int magnified = 0;

    EvdevTouchEventTapTest()
    {
        QObject::connect(&tap, &TouchEventTap::gesture, &tap,
                         [this](const Touches &touching) { fingers.push_back(touching.size()); });
        QObject::connect(&tap, &TouchEventTap::magnify, &tap, [this] { ++magnified; });
    }
    void touchWithTwo(const QByteArray &name)
    {
        machine.send(name,
                     {{EV_ABS, ABS_MT_TRACKING_ID, 1},
                      {EV_ABS, ABS_MT_SLOT, 1},
                      {EV_ABS, ABS_MT_TRACKING_ID, 2},
                      {EV_ABS, ABS_MT_POSITION_X, 50},
                      {EV_KEY, BTN_TOOL_DOUBLETAP, 1}});
    }
    [[nodiscard]] bool hears(const Counts &expected)
    {
        return eventually([&] { return fingers.size() >= expected.size(); }) && std::exchange(fingers, {}) == expected;
    }
};

TEST_F(EvdevTouchEventTapTest, feelsExtraFingersPalmsAndPinches)
{
    machine.plugIn("event5");
    ASSERT_TRUE(tap.setEnabled(true));
    touchWithTwo("event5");
    machine.send("event5", {{EV_ABS, ABS_MT_POSITION_X, 90}});
    EXPECT_TRUE(hears({2, 2}));
    EXPECT_EQ(magnified, 1);
    machine.send("event5", {{EV_KEY, BTN_TOOL_DOUBLETAP, 0}, {EV_KEY, BTN_TOOL_TRIPLETAP, 1}});
    machine.send("event5", {{EV_ABS, ABS_MT_TOOL_TYPE, MT_TOOL_PALM}});
    EXPECT_TRUE(hears({3, 2}));
}

TEST_F(EvdevTouchEventTapTest, followsTouchpadsThatComeAndGoInTheMiddleOfAGesture)
{
    ASSERT_TRUE(tap.setEnabled(true)) << "without a touchpad it waits";
    machine.plugIn("event5");
    machine.plugIn("event6");
    touchWithTwo("event5");
    touchWithTwo("event6");
    ASSERT_TRUE(hears({2, 2}));
    machine.unplug("event5");
    EXPECT_TRUE(hears({0}));
    EXPECT_TRUE(tap.isEnabled());
    machine.unplug("event6");
    EXPECT_TRUE(hears({0}));
    EXPECT_FALSE(tap.isEnabled());
    EXPECT_TRUE(tap.setEnabled(true));
}

TEST_F(EvdevTouchEventTapTest, comesBackAfterItsTouchpadFailedAndIsSilentWhileDisabled)
{
    machine.plugIn("event4");
    machine.plugIn("event5");
    ASSERT_TRUE(tap.setEnabled(true));
    touchWithTwo("event5");
    ASSERT_TRUE(hears({2}));
    machine.breakReading("event5");
    EXPECT_TRUE(hears({0}));
    EXPECT_FALSE(tap.isEnabled()) << "although the other can be read";
    ASSERT_TRUE(tap.setEnabled(true));
    touchWithTwo("event5");
    EXPECT_TRUE(hears({2}));
    ASSERT_TRUE(tap.setEnabled(false));
    machine.unplug("event5");
    machine.plugIn("event6");
    touchWithTwo("event6");
    ASSERT_TRUE(tap.setEnabled(true));
    EXPECT_TRUE(hears({2})) << "only of what is there now";
}

TEST_F(EvdevTouchEventTapTest, isDisabledWhileNoTouchpadCanBeReadAndSaysSoOnce)
{
    machine.plugIn("event5", Node::Missing);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(tap.setEnabled(true));
    EXPECT_FALSE(tap.setEnabled(true));
    EXPECT_EQ(QByteArray::fromStdString(testing::internal::GetCapturedStderr()).count("event5"), 1);
    EXPECT_FALSE(tap.isEnabled());
    machine.plugIn("event6");
    EXPECT_TRUE(eventually([&] { return tap.isEnabled(); }));
}

TEST(UdevInputAccess, looksAfreshAndTellsOfChanges)
{
    MachineWithTouchpads machine;
    const UdevInputAccess access;
    int changes = 0;
    QObject::connect(&access, &InputAccess::changed, &access, [&] { ++changes; });
    EXPECT_EQ(access.touchpads(), Touchpads::None);
    machine.plugIn("event5", Node::Missing);
    EXPECT_EQ(access.touchpads(), Touchpads::Refused);
    EXPECT_TRUE(eventually([&] { return changes == 1; }));
    machine.plugIn("event6");
    EXPECT_EQ(access.touchpads(), Touchpads::Trusted);
    EXPECT_TRUE(eventually([&] { return changes == 2; }));
    machine.unplug("event6");
    EXPECT_EQ(access.touchpads(), Touchpads::Refused);
    EXPECT_TRUE(eventually([&] { return changes == 3; }));
}

} // namespace
} // namespace Orbita
