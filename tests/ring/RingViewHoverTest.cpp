#include "ring/RingViewFixture.h"

namespace Orbita {
namespace {

using RingViewHover = RingViewFixture;

TEST_F(RingViewHover, magnifiesAndTitlesTheItemUnderThePointer)
{
    for (const qint64 hovered : {2, 3}) {
        move(at((double(hovered) + 0.5) / 8));
        EXPECT_EQ(view.mouseOverItemIndex(), hovered);
        EXPECT_NEAR(weight(hovered), Pi + 1, 1e-9);
        EXPECT_NEAR(weight(hovered + 4), 1.0, 1e-9);
        EXPECT_EQ(titles(), "0-" + std::to_string(hovered) + " ");
    }
    item(3).setTitle(QString());
    move(at(3.4 / 8));
    EXPECT_EQ(titles(), "") << "there is nothing to show";
    item(3).setTitle(QStringLiteral("0-3"));
    move(at(3.5 / 8, 30));
    EXPECT_EQ(titles(), "") << "between the items and the centre there is no item";
    EXPECT_EQ(view.mouseOverItemIndex(), 3);
    view.setMagnifyItemsOnMouseOver(false);
    move(at(2.5 / 8));
    EXPECT_EQ(titles(), "0-2 ");
    EXPECT_EQ(weight(2), 1.0) << "magnification is switched off";
    view.setAlwaysShowTitles(true);
    move(at(0.5 / 8, 30));
    EXPECT_EQ(titles(), order());
}

TEST_F(RingViewHover, evensOutInTheDeadCentreButRemembersTheItem)
{
    move(at(2.5 / 8));
    move({200, 209.9});
    EXPECT_EQ(weight(2), 1.0);
    EXPECT_EQ(view.ringLayout().startArc, 0.0);
    EXPECT_EQ(view.mouseOverItemIndex(), 2);
    EXPECT_EQ(titles(), "0-2 ") << "the dead centre leaves titles alone";
    move(at(2.5 / 8));
    EXPECT_NEAR(weight(2), Pi + 1, 1e-9) << "the same sector counts anew";
}

TEST_F(RingViewHover, asksWhetherTitlesMayBeShownAndBearsAReloadMeanwhile)
{
    std::vector<ItemAddress> asked;
    script.displaysTitle = [&](ItemAddress address) {
        asked.push_back(address);
        return false;
    };
    move(at(2.5 / 8));
    EXPECT_EQ(asked, std::vector<ItemAddress>({{0, 2}}));
    EXPECT_EQ(titles(), "");
    script.displaysTitle = [&](ItemAddress) {
        load({1});
        return true;
    };
    move(at(2.5 / 8));
    EXPECT_EQ(order(), "0-0 ");
    EXPECT_EQ(view.mouseOverItemIndex(), 0);
}

TEST_F(RingViewHover, endsWhenThePointerLeavesTheView)
{
    stage.mainCorner = {1280, 100};
    const auto leaveFor = [this](QPointF offset) {
        move(at(2.5 / 8));
        EXPECT_EQ(titles(), "0-2 ");
        stage.pointer = stage.fromDesktop(view.mapToGlobal(QPointF(200, 200)) + offset);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&view, &leave);
    };
    leaveFor({120, 120});
    EXPECT_EQ(titles(), "0-2 ") << "a button or menu took the pointer, which is still here";
    EXPECT_NE(view.ringLayout().startArc, 0.0);
    for (const QPointF offset : {QPointF(0, 201), QPointF(-145, 145)}) {
        leaveFor(offset);
        EXPECT_EQ(titles(), "") << offset.x();
        EXPECT_EQ(weight(2), 1.0);
        EXPECT_EQ(view.ringLayout().startArc, 0.0);
        EXPECT_EQ(view.mouseOverItemIndex(), 2);
    }
}

TEST_F(RingViewHover, followsThePointerOverWhatCoversTheRing)
{
    QWidget button(&view);
    button.setGeometry(185, 185, 30, 30);
    view.trackPointerOver(button);
    move(at(2.5 / 8));
    const QPointF middle(15, 15);
    QMouseEvent event(QEvent::MouseMove, middle, button.mapToGlobal(middle), Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&button, &event);
    EXPECT_EQ(weight(2), 1.0);
}

TEST_F(RingViewHover, isOffInADisabledRing)
{
    move(at(2.5 / 8));
    press(at(0.0, 0.0)); // whose release nobody hears
    view.setEnabled(false);
    EXPECT_TRUE(view.testAttribute(Qt::WA_TransparentForMouseEvents));
    EXPECT_EQ(titles(), "");
    move(at(3.5 / 8));
    EXPECT_EQ(view.mouseOverItemIndex(), 2);
    press(at(2.5 / 8));
    release(at(2.5 / 8));
    EXPECT_TRUE(script.reports.empty());
    view.setEnabled(true);
    move(at(3.5 / 8));
    EXPECT_EQ(view.mouseOverItemIndex(), 3);
    EXPECT_GT(weight(3), 4.0);
}

TEST_F(RingViewHover, copesWithAnEmptyRingAndNoOneToAsk)
{
    const auto doEverythingAt = [this](QPointF point) {
        move(point);
        press(point);
        drag(at(0.9));
        release(at(0.9));
        rightPress(at(0.9));
    };
    load({0});
    doEverythingAt(at(0.3));
    EXPECT_TRUE(script.reports.empty());
    EXPECT_FALSE(view.highlightedItem().isFound());
    load({3});
    view.setDelegate(nullptr);
    view.setDataSource(nullptr);
    doEverythingAt(centerOf(1));
    view.reloadData();
    EXPECT_EQ(view.numberOfSections(), 0);
}

} // namespace
} // namespace Orbita
