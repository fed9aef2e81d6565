#include "ForeignClient.h"

#include "platform/memory/MemoryStage.h"
#include "platform/x11/X11BlurBehind.h"
#include "platform/x11/X11Compositor.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11OwnWindow.h"
#include "platform/x11/X11Stage.h"
#include "platform/x11/X11WindowManager.h"

#include <QRasterWindow>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

// A screen of 1280 by 800 with a mouse and a compositor, for each back end that sees them.

constexpr auto blurProperty = "_KDE_NET_WM_BLUR_BEHIND_REGION";

struct MemoryScene {
    MemoryStage stage;
    MemoryBlurBehind blur;

    MemoryScene() { stage.setCompositing(false); }
    void movePointer(QPoint place) { stage.pointer = place; } // y upwards
    void pressButton() { stage.buttonsUp = false; }
    void releaseButton() { stage.buttonsUp = true; }
    /// A compositor that offers blur starts, or ends.
    void setCompositing(bool compositing)
    {
        stage.setCompositing(compositing);
        blur.setAvailable(compositing);
    }
};

/// On the toolkit's display.
struct X11Scene {
    X11Connection connection;
    X11WindowManager windowManager{connection};
    ForeignClient client{qgetenv("DISPLAY")};
    X11Compositor compositor{connection};
    X11Stage stage{connection, windowManager, compositor};
    X11BlurBehind blur{connection, compositor};
    xcb_window_t compositing = XCB_NONE;

    X11Scene()
    {
        client.connection.setValues(connection.root(), blurProperty, XCB_ATOM_CARDINAL, {0});
        EXPECT_TRUE(eventually([this] { return windowManager.isPresent(); }));
    }
    void movePointer(QPoint place) { client.input.moveTo({place.x(), 800 - place.y()}); }
    void pressButton() { client.input.press(); }
    void releaseButton() { client.input.release(); }
    void setCompositing(bool on)
    {
        if (on)
            compositing = client.claimCompositing();
        else
            client.destroy(compositing); // the offer of blur outlives it, as that of a real one does
    }
};

template <typename Scene>
class StageContract : public testing::Test {
};
using Scenes = testing::Types<MemoryScene, X11Scene>;
TYPED_TEST_SUITE(StageContract, Scenes);

TYPED_TEST(StageContract, measuresFromTheLowerLeftCorner)
{
    TypeParam scene;
    const auto screens = scene.stage.screens();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].frame, QRectF(0, 0, 1280, 800));
    for (const QPoint place : {QPoint(100, 800), QPoint(20, 10)}) {
        scene.movePointer(place);
        EXPECT_TRUE(eventually([&] {
            QPointF found;
            scene.stage.locatePointer(&scene.stage, [&](QPointF pointer) { found = pointer; });
            return found == place;
        }));
    }
    QRasterWindow window;
    scene.stage.place(window, QRectF(300, 200, 400, 500));
    EXPECT_EQ(window.geometry(), QRect(300, 100, 400, 500));
}

TYPED_TEST(StageContract, knowsWhetherAButtonIsPressed)
{
    TypeParam scene;
    EXPECT_TRUE(scene.stage.areButtonsUp());
    scene.pressButton();
    EXPECT_TRUE(eventually([&] { return !scene.stage.areButtonsUp(); }));
    scene.releaseButton();
    EXPECT_TRUE(eventually([&] { return scene.stage.areButtonsUp(); }));
}

TYPED_TEST(StageContract, followsTheCompositor)
{
    TypeParam scene;
    std::vector<bool> stageChanges;
    std::vector<bool> blurChanges;
    QObject context;
    QObject::connect(&scene.stage, &Stage::compositingChanged, &context, [&](bool on) { stageChanges.push_back(on); });
    QObject::connect(&scene.blur, &BlurBehind::availableChanged, &context, [&](bool on) { blurChanges.push_back(on); });
    EXPECT_FALSE(scene.stage.isCompositing() || scene.blur.isAvailable());
    scene.setCompositing(true);
    EXPECT_TRUE(eventually([&] { return scene.stage.isCompositing() && scene.blur.isAvailable(); }));
    scene.setCompositing(false);
    EXPECT_TRUE(eventually([&] { return !scene.stage.isCompositing() && !scene.blur.isAvailable(); }));
    EXPECT_EQ(stageChanges, (std::vector{true, false}));
    EXPECT_EQ(blurChanges, (std::vector{true, false}));
}

class X11StageTest : public testing::Test {
protected:
    X11StageTest() { m_window.setFlags(Qt::Tool | Qt::FramelessWindowHint); }
    [[nodiscard]] bool waitForFocus(xcb_window_t window) const
    {
        return eventually([&] { return m_client.windows.inputFocus() == window; });
    }

    X11Scene m_scene;
    Stage &m_stage = m_scene.stage;
    const ForeignClient &m_client = m_scene.client;
    QRasterWindow m_window;
};

TEST_F(X11StageTest, knowsEveryButtonButTheWheel)
{
    for (const Button button : {Button::Right, Button::Back}) {
        m_client.input.press(button);
        EXPECT_FALSE(m_stage.areButtonsUp()) << int(button);
        m_client.input.release(button);
        EXPECT_TRUE(m_stage.areButtonsUp()) << int(button);
    }
    m_client.input.press(Button::WheelUp);
    EXPECT_TRUE(m_stage.areButtonsUp());
    m_client.input.release(Button::WheelUp);
}

TEST_F(X11StageTest, presentsAWindowOverAnother)
{
    const xcb_window_t other = m_client.show({.windowClass = "Other"});
    ASSERT_TRUE(waitForFocus(other));
    for (const QRectF &frame :
         {QRectF(300, 200, 400, 400), QRectF(-200, 600, 400, 400), QRectF(1000, -150, 400, 400)}) {
        m_stage.place(m_window, frame);
        m_window.show();
        m_stage.present(m_window);
        const xcb_window_t own = xWindow(m_window);
        EXPECT_TRUE(waitForFocus(own));
        EXPECT_TRUE(eventually([&] { return m_window.isActive(); }));
        EXPECT_TRUE(eventually([&] { return m_client.windows.desktop(own) == 0xffffffff; }));
        EXPECT_TRUE(eventually([&] { return m_client.windows.states(own).count("_NET_WM_STATE_ABOVE") == 1; }));
        const QRect expected(int(frame.x()), int(800 - frame.y() - frame.height()), 400, 400);
        EXPECT_TRUE(eventually([&] { return m_client.windows.info(own)->geometry == expected; })) << expected.x();
        m_window.hide();
        EXPECT_TRUE(waitForFocus(other));
    }
    m_client.destroy(other);
}

TEST_F(X11StageTest, letsClicksThroughOutsideTheInputRegion)
{
    m_stage.place(m_window, QRectF(300, 200, 400, 400)); // 200 below the upper edge
    m_window.show();
    m_stage.present(m_window);
    const xcb_window_t own = xWindow(m_window);
    const auto hit = [&](int x, int y) {
        m_client.input.moveTo({x, y});
        return m_client.isPointerIn(own);
    };
    EXPECT_TRUE(eventually([&] { return hit(310, 210); }));
    m_stage.setInputRegion(m_window, QRegion(100, 100, 200, 200));
    EXPECT_TRUE(eventually([&] { return !hit(310, 210); }));
    EXPECT_TRUE(eventually([&] { return hit(500, 400); }));
    m_stage.setInputRegion(m_window, QRegion());
    EXPECT_TRUE(eventually([&] { return hit(310, 210); }));
}

TEST_F(X11StageTest, leavesTheRegionToBlurOnTheWindow)
{
    const xcb_window_t own = xWindow(m_window);
    const auto region = [&] { return m_client.connection.values(own, blurProperty); };
    m_scene.blur.setRegion(m_window, QRegion(10, 20, 30, 40));
    EXPECT_TRUE(eventually([&] { return region() == QList<quint32>{10, 20, 30, 40}; }));
    m_scene.blur.setRegion(m_window, QRegion());
    EXPECT_TRUE(eventually([&] { return region().empty(); }));
}

TEST_F(X11StageTest, seesACompositorThatWasThereBefore)
{
    m_scene.setCompositing(true);
    EXPECT_TRUE(eventually([&] { return m_stage.isCompositing(); }));
    EXPECT_TRUE(X11Compositor(m_scene.connection).isPresent());
    m_scene.setCompositing(false);
    EXPECT_TRUE(eventually([&] { return !m_stage.isCompositing(); }));
}

TEST(DeviceRectangles, coverEveryPixelThatIsTouched)
{
    struct Row {
        const char *name;
        QRect rect;
        double ratio;
        QRect expected;
    };
    for (const auto &[name, rect, ratio, expected] :
         {Row{"one to one", {1, 2, 3, 4}, 1.0, {1, 2, 3, 4}}, Row{"doubled", {1, 2, 3, 4}, 2.0, {2, 4, 6, 8}},
          Row{"rounded outwards", {1, -1, 1, 1}, 1.5, {1, -2, 2, 2}},
          Row{"clipped to 16 bits", {0, 0, 40000, 10}, 1.0, {0, 0, 32767, 10}}}) {
        const auto found = deviceRectangles(QRegion(rect), ratio);
        ASSERT_EQ(found.size(), 1U) << name;
        EXPECT_EQ(QRect(found[0].x, found[0].y, found[0].width, found[0].height), expected) << name;
    }
}

} // namespace
} // namespace Orbita
