#include "Eventually.h"
#include "ForeignClient.h"
#include "XServer.h"

#include "platform/memory/MemoryStage.h"
#include "platform/x11/X11BlurBehind.h"
#include "platform/x11/X11Compositor.h"
#include "platform/x11/X11OwnWindow.h"
#include "platform/x11/X11Stage.h"
#include "platform/x11/X11WindowManager.h"
#include "support/RowName.h"

#include <QRasterWindow>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

/// A screen of 1280 by 800 with a mouse and a compositor, whichever back end sees them.
class Scene {
public:
    virtual ~Scene() = default;
    [[nodiscard]] virtual Stage &stage() = 0;
    [[nodiscard]] virtual BlurBehind &blur() = 0;
    virtual void movePointer(int x, int y) = 0; ///< y upwards
    virtual void pressButton(bool down) = 0;
    /// A compositor that offers blur starts, or ends.
    virtual void setCompositing(bool compositing) = 0;
};

class MemoryScene final : public Scene {
public:
    Stage &stage() override { return m_stage; }
    BlurBehind &blur() override { return m_blur; }
    void movePointer(int x, int y) override { m_stage.pointer = QPointF(x, y); }
    void pressButton(bool down) override { m_stage.buttonsUp = !down; }
    void setCompositing(bool compositing) override
    {
        m_stage.setCompositing(compositing);
        m_blur.setAvailable(compositing);
    }
    MemoryScene() { m_stage.setCompositing(false); }

private:
    MemoryStage m_stage;
    MemoryBlurBehind m_blur;
};

/// On the toolkit's display.
class X11Scene final : public Scene {
public:
    Stage &stage() override { return m_stage; }
    BlurBehind &blur() override { return m_blur; }
    void movePointer(int x, int y) override { client.movePointer(x, 800 - y); }
    void pressButton(bool down) override { client.pressButton(1, down); }
    void setCompositing(bool compositing) override
    {
        if (compositing)
            m_compositing = client.claimCompositing();
        else
            client.destroy(m_compositing); // the offer of blur outlives it, as that of a real one does
    }
    X11Scene()
    {
        client.setCardinals(connection.root(), connection.atom(X11Atom::KdeBlurBehindRegion), {0});
        EXPECT_TRUE(eventually([this] { return windowManager.isPresent(); }));
    }

    X11Connection connection;
    X11WindowManager windowManager{connection};
    ForeignClient client{{}};
    Nudge nudge{client};

private:
    X11Compositor m_compositor{connection};
    X11Stage m_stage{connection, windowManager, m_compositor};
    X11BlurBehind m_blur{connection, m_compositor};
    xcb_window_t m_compositing = XCB_NONE;
};

using SceneFactory = std::unique_ptr<Scene> (*)();
class StageContract : public testing::TestWithParam<SceneFactory> {
protected:
    std::unique_ptr<Scene> m_scene{GetParam()()};
    Stage &m_stage = m_scene->stage();
    QRasterWindow m_window;
};

TEST_P(StageContract, measuresFromTheLowerLeftCorner)
{
    const auto screens = m_stage.screens();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].frame, QRectF(0, 0, 1280, 800));
    for (const QPoint place : {QPoint(100, 800), QPoint(20, 10)}) {
        m_scene->movePointer(place.x(), place.y());
        EXPECT_TRUE(eventually([&] {
            QPointF found;
            m_stage.locatePointer(&m_stage, [&](QPointF pointer) { found = pointer; });
            return found == place;
        }));
    }
    m_stage.place(m_window, QRectF(300, 200, 400, 500));
    EXPECT_EQ(m_window.geometry(), QRect(300, 100, 400, 500));
}

TEST_P(StageContract, knowsWhetherAButtonIsPressed)
{
    EXPECT_TRUE(m_stage.areButtonsUp());
    m_scene->pressButton(true);
    EXPECT_TRUE(eventually([&] { return !m_stage.areButtonsUp(); }));
    m_scene->pressButton(false);
    EXPECT_TRUE(eventually([&] { return m_stage.areButtonsUp(); }));
}

TEST_P(StageContract, followsTheCompositor)
{
    std::vector<bool> stageChanges;
    std::vector<bool> blurChanges;
    QObject context;
    QObject::connect(&m_stage, &Stage::compositingChanged, &context, [&](bool on) { stageChanges.push_back(on); });
    QObject::connect(&m_scene->blur(), &BlurBehind::availableChanged, &context,
                     [&](bool on) { blurChanges.push_back(on); });
    EXPECT_FALSE(m_stage.isCompositing());
    EXPECT_FALSE(m_scene->blur().isAvailable());
    m_scene->setCompositing(true);
    EXPECT_TRUE(eventually([&] { return m_stage.isCompositing() && m_scene->blur().isAvailable(); }));
    m_scene->setCompositing(false);
    EXPECT_TRUE(eventually([&] { return !m_stage.isCompositing() && !m_scene->blur().isAvailable(); }));
    EXPECT_EQ(stageChanges, (std::vector{true, false}));
    EXPECT_EQ(blurChanges, (std::vector{true, false}));
}

INSTANTIATE_TEST_SUITE_P(BackEnds, StageContract,
                         testing::Values(
                             +[]() -> std::unique_ptr<Scene> { return std::make_unique<MemoryScene>(); },
                             +[]() -> std::unique_ptr<Scene> { return std::make_unique<X11Scene>(); }),
                         [](const auto &backEnd) { return backEnd.index == 0 ? "Memory" : "X11"; });

class X11StageTest : public testing::Test {
protected:
    X11StageTest() { m_window.setFlags(Qt::Tool | Qt::FramelessWindowHint); }
    ~X11StageTest() override
    {
        if (m_other != XCB_NONE)
            m_client.destroy(m_other);
    }
    void showForeign()
    {
        m_other = m_client.show({.windowClass = "Other"});
        EXPECT_TRUE(eventually([&] { return m_client.focus() == m_other; }));
    }

    X11Scene m_scene;
    Stage &m_stage = m_scene.stage();
    ForeignClient &m_client = m_scene.client;
    xcb_window_t m_other = XCB_NONE;
    QRasterWindow m_window;
};

TEST_F(X11StageTest, knowsEveryButtonButTheWheel)
{
    for (const quint8 button : {3, 8}) {
        m_client.pressButton(button, true);
        EXPECT_TRUE(eventually([&] { return !m_stage.areButtonsUp(); })) << int(button);
        m_client.pressButton(button, false);
        EXPECT_TRUE(eventually([&] { return m_stage.areButtonsUp(); })) << int(button);
    }
    m_client.pressButton(4, true);
    (void)m_client.focus(); // the press has been handled when this is answered
    EXPECT_TRUE(m_stage.areButtonsUp());
    m_client.pressButton(4, false);
}

TEST_F(X11StageTest, presentsAWindowOverAnother)
{
    showForeign();
    const QRectF frames[]{{300, 200, 400, 400}, {-200, 600, 400, 400}, {1000, -150, 400, 400}};
    for (const QRectF &frame : frames) {
        m_stage.place(m_window, frame);
        m_window.show();
        m_stage.present(m_window);
        const xcb_window_t own = xWindow(m_window);
        EXPECT_TRUE(eventually([&] { return m_client.focus() == own && m_window.isActive(); }));
        EXPECT_TRUE(eventually([&] { return m_client.value(own, X11Atom::NetWmDesktop) == 0xffffffff; }));
        EXPECT_TRUE(eventually([&] {
            const auto states = m_client.values(own, X11Atom::NetWmState);
            return std::ranges::count(states, m_client.connection().atom(X11Atom::NetWmStateAbove)) == 1;
        }));
        const QRect expected = Stage::flipped(frame, 800).toRect();
        EXPECT_TRUE(eventually([&] { return m_client.frameOf(own) == expected; }))
            << m_client.frameOf(own).x() << ' ' << m_client.frameOf(own).y();
        m_window.hide();
        EXPECT_TRUE(eventually([&] { return m_client.focus() == m_other; }));
    }
}

TEST_F(X11StageTest, letsClicksThroughOutsideTheInputRegion)
{
    m_stage.place(m_window, QRectF(300, 200, 400, 400)); // 200 below the upper edge
    m_window.show();
    m_stage.present(m_window);
    const xcb_window_t own = xWindow(m_window);
    const auto hit = [&](int x, int y) {
        m_client.movePointer(x, y);
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
    m_scene.blur().setRegion(m_window, QRegion(10, 20, 30, 40));
    EXPECT_TRUE(eventually([&] {
        return m_client.values(own, X11Atom::KdeBlurBehindRegion) == std::vector<quint32>{10, 20, 30, 40};
    }));
    m_scene.blur().setRegion(m_window, QRegion());
    EXPECT_TRUE(eventually([&] { return m_client.values(own, X11Atom::KdeBlurBehindRegion).empty(); }));
}

TEST_F(X11StageTest, seesACompositorThatWasThereBefore)
{
    m_scene.setCompositing(true);
    EXPECT_TRUE(eventually([&] { return m_stage.isCompositing(); }));
    EXPECT_TRUE(X11Compositor(m_scene.connection).isPresent());
    m_scene.setCompositing(false);
    EXPECT_TRUE(eventually([&] { return !m_stage.isCompositing(); }));
}

struct RectangleRow {
    const char *name;
    QRect rect;
    double ratio;
    xcb_rectangle_t expected;
};
class DeviceRectangles : public testing::TestWithParam<RectangleRow> {};

TEST_P(DeviceRectangles, coverEveryPixelThatIsTouched)
{
    const auto [name, rect, ratio, expected] = GetParam();
    const auto found = deviceRectangles(QRegion(rect), ratio);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(QRect(found[0].x, found[0].y, found[0].width, found[0].height),
              QRect(expected.x, expected.y, expected.width, expected.height));
}

INSTANTIATE_TEST_SUITE_P(Ratios, DeviceRectangles,
                         testing::Values(RectangleRow{"one to one", {1, 2, 3, 4}, 1.0, {1, 2, 3, 4}},
                                         RectangleRow{"doubled", {1, 2, 3, 4}, 2.0, {2, 4, 6, 8}},
                                         RectangleRow{"rounded outwards", {1, -1, 1, 1}, 1.5, {1, -2, 2, 2}},
                                         RectangleRow{"clipped to 16 bits", {0, 0, 40000, 10}, 1.0, {0, 0, 32767, 10}}),
                         rowName<RectangleRow>);

} // namespace
} // namespace Orbita
