#include "ring/RingWindow.h"
#include "platform/memory/MemoryStage.h"
#include "ring/BezelView.h"
#include "ring/CloseButton.h"
#include "ring/RoundedEffectsWindow.h"

#include <QApplication>
#include <QMouseEvent>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

/// Sends a mouse event at \a at to \a widget, whose corner is at \a origin. Returns whether the widget took it.
bool send(QWidget &widget, QEvent::Type type, QPointF at, QPointF origin = {}, Qt::MouseButton button = Qt::LeftButton)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent event(type, at, origin + at, type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
    return event.isAccepted();
}

class RingWindowTest : public testing::Test {
protected:
    MemoryStage stage;
    MemoryBlurBehind blur;
    RingWindow window{stage, blur};
};

TEST_F(RingWindowTest, takesThePointerOnItsDiscWhateverItsSize)
{
    EXPECT_EQ(window.childAt(200, 200), nullptr) << "the outline never takes the pointer";
    window.show();
    stage.setCompositing(false);
    EXPECT_FALSE(window.mask().contains(QPoint(3, 3)));
    EXPECT_TRUE(stage.inputRegion.isEmpty());
    const QImage shown = window.grab().toImage();
    for (const QRect &row : window.mask())
        EXPECT_EQ(shown.pixelColor(row.topLeft()), QColor(Qt::white)) << "black must not shine through";
    stage.setCompositing(true);
    EXPECT_TRUE(window.mask().isEmpty());
    window.resize(600, 600);
    EXPECT_TRUE(stage.inputRegion.contains(QPoint(300, 595)));
    EXPECT_FALSE(stage.inputRegion.contains(QPoint(595, 595)));
}

TEST_F(RingWindowTest, blursTheDiscWhereThatIsOfferedAndAdaptsItsTint)
{
    EXPECT_EQ(window.tintColor(), QColor(Qt::white));
    const QColor tint = QColor::fromHsvF(0.0F, 1.0F, 0.5F).toRgb();
    window.setTintColor(tint);
    window.show();
    EXPECT_TRUE(blur.region.isEmpty());
    EXPECT_NEAR(window.tintColor().valueF(), 0.3, 1e-3);
    blur.setAvailable(true);
    EXPECT_TRUE(window.backgroundBlurred());
    EXPECT_TRUE(blur.region.contains(QPoint(200, 200)));
    EXPECT_FALSE(blur.region.contains(QPoint(10, 10)));
    EXPECT_EQ(window.tintColor(), tint) << "darkened for a backdrop that is gone";
    stage.setCompositing(false);
    EXPECT_FALSE(window.backgroundBlurred());
    EXPECT_TRUE(blur.region.isEmpty());
}

TEST_F(RingWindowTest, keepsItsViewsInPlace)
{
    auto *ring = new QWidget;
    auto *button = new CloseButton;
    button->resize(30, 30);
    window.addFillingView(ring);
    window.addCenteredView(button);
    window.show();
    window.resize(500, 500);
    EXPECT_EQ(ring->geometry(), QRect(0, 0, 500, 500));
    EXPECT_EQ(button->geometry(), QRect(235, 235, 30, 30));
    delete ring;
    window.resize(300, 300); // a view may go before its window
    EXPECT_EQ(button->geometry(), QRect(135, 135, 30, 30));
}

TEST_F(RingWindowTest, panelsMoveByTheirBackground)
{
    RoundedEffectsWindow panel(stage, blur);
    panel.setGeometry(300, 200, 100, 50);
    panel.show();
    send(panel, QEvent::MouseButtonPress, {10, 10}, {300, 200});
    send(panel, QEvent::MouseMove, {40, 5}, {300, 200});
    EXPECT_EQ(stage.lastFrame, QRectF(330, 800 - 195 - 50, 100, 50)) << "30 to the right, 5 up";
    EXPECT_FALSE(stage.inputRegion.contains(QPoint(1, 1)));
    EXPECT_TRUE(stage.inputRegion.contains(QPoint(50, 2)));
}

class CloseButtonTest : public testing::Test {
protected:
    CloseButtonTest() { button.resize(30, 30); }
    CloseButton button;
};

TEST_F(CloseButtonTest, clicksWhenTheLeftButtonIsReleasedWithin)
{
    int clicks = 0;
    button.mouseClickBlock = [&](QMouseEvent &) { ++clicks; };
    send(button, QEvent::MouseButtonPress, {15, 15});
    EXPECT_EQ(button.strokeColor(), button.highlightColor());
    send(button, QEvent::MouseButtonRelease, {40, 15});
    EXPECT_EQ(button.strokeColor(), button.defaultColor());
    send(button, QEvent::MouseButtonPress, {15, 15}, {}, Qt::RightButton);
    send(button, QEvent::MouseButtonRelease, {15, 15}, {}, Qt::RightButton);
    EXPECT_EQ(clicks, 0);
    send(button, QEvent::MouseButtonPress, {15, 15});
    send(button, QEvent::MouseButtonRelease, {3, 3});
    EXPECT_EQ(clicks, 1);
}

TEST_F(CloseButtonTest, drawsACircleWithACross)
{
    button.setDefaultColor(Qt::red);
    QImage shown(30, 30, QImage::Format_ARGB32_Premultiplied);
    shown.fill(Qt::transparent);
    button.render(&shown, QPoint(), QRegion(), QWidget::DrawChildren);
    EXPECT_GT(shown.pixelColor(15, 15).alpha(), 100);
    EXPECT_GT(shown.pixelColor(15, 1).alpha(), 100);
    EXPECT_EQ(shown.pixelColor(15, 6).alpha(), 0);
    EXPECT_EQ(shown.pixelColor(1, 1).alpha(), 0);
}

TEST_F(CloseButtonTest, keepsMovementsThatAPlainViewPassesOn)
{
    MouseSensitiveView view;
    EXPECT_FALSE(send(view, QEvent::MouseMove, {5, 5}, {}, Qt::NoButton));
    EXPECT_TRUE(send(button, QEvent::MouseMove, {5, 5}, {}, Qt::NoButton));
    const QWidget child(&view);
    EXPECT_TRUE(child.testAttribute(Qt::WA_TransparentForMouseEvents));
}

} // namespace
} // namespace Orbita
