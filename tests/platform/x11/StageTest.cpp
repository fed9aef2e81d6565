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

TEST(X11Stage, knowsEveryButtonButTheWheel)
{
    const X11Scene scene;
    const Input &input = scene.client.input;
    for (const Button button : {Button::Left, Button::Right, Button::Back}) {
        input.press(button);
        EXPECT_FALSE(scene.stage.areButtonsUp()) << int(button);
        input.release(button);
        EXPECT_TRUE(scene.stage.areButtonsUp()) << int(button);
    }
    input.press(Button::WheelUp);
    EXPECT_TRUE(scene.stage.areButtonsUp());
    input.release(Button::WheelUp);
}

TEST(X11Stage, presentsAWindowOverAnother)
{
    X11Scene scene;
    const Windows &windows = scene.client.windows;
    QRasterWindow window;
    window.setFlags(Qt::Tool | Qt::FramelessWindowHint);
    const xcb_window_t other = scene.client.show({.windowClass = "Other"});
    ASSERT_TRUE(eventually([&] { return windows.inputFocus() == other; }));
    for (const QRectF &frame :
         {QRectF(300, 200, 400, 400), QRectF(-200, 600, 400, 400), QRectF(1000, -150, 400, 400)}) {
        scene.stage.place(window, frame);
        window.show();
        scene.stage.present(window);
        const xcb_window_t own = xWindow(window);
        EXPECT_TRUE(eventually([&] { return windows.inputFocus() == own && window.isActive(); }));
        EXPECT_TRUE(eventually([&] { return windows.hasState(own, "_NET_WM_STATE_ABOVE"); }));
        const QRect expected(int(frame.x()), int(800 - frame.y() - frame.height()), 400, 400);
        EXPECT_TRUE(eventually([&] { return windows.info(own)->geometry == expected; })) << expected.x();
        window.hide();
        EXPECT_TRUE(eventually([&] { return windows.inputFocus() == other; }));
    }
    scene.client.destroy(other);
}

TEST(X11BlurBehind, leavesTheRegionToBlurOnTheWindow)
{
    X11Scene scene;
    QRasterWindow window;
    const auto region = [&] { return scene.client.connection.values(xWindow(window), blurProperty); };
    scene.blur.setRegion(window, QRegion(10, 20, 30, 40));
    EXPECT_TRUE(eventually([&] { return region() == QList<quint32>{10, 20, 30, 40}; }));
    scene.blur.setRegion(window, QRegion());
    EXPECT_TRUE(eventually([&] { return region().empty(); }));
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
