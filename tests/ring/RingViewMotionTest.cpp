#include "ring/RingViewFixture.h"
#include "ring/TitleBubble.h"

#include <QApplication>
#include <QPaintEvent>

namespace Orbita {
namespace {

using RingViewMotion = RingViewFixture;
using Seconds = AnimationClock::Time;

size_t visibleBubbles()
{
    size_t count = 0;
    for (const QWidget *widget : QApplication::topLevelWidgets())
        count += qobject_cast<const TitleBubble *>(widget) && widget->isVisible() ? 1 : 0;
    return count;
}

TEST_F(RingViewMotion, loadsAtOnceByDefault)
{
    EXPECT_FALSE(clock.ticks());
    EXPECT_EQ(view.itemFor({0, 3})->shownFrame(), view.itemFor({0, 3})->frame());
}

TEST_F(RingViewMotion, glidesToTheNewPlacesInAQuarterOfASecond)
{
    const RingItem &item = *view.itemFor({0, 0});
    const QRectF start = item.frame();
    move(at(2.5 / 8));
    EXPECT_EQ(item.shownFrame(), start);
    EXPECT_NE(item.frame(), start);
    clock.advance(Seconds(0.125));
    const double way = (item.shownFrame().x() - start.x()) / (item.frame().x() - start.x());
    EXPECT_NEAR(way, eased(0.5), 1e-9);
    clock.advance(Seconds(0.125));
    EXPECT_EQ(item.shownFrame(), item.frame());
    EXPECT_FALSE(clock.ticks()) << "a standing ring costs nothing";
}

TEST_F(RingViewMotion, setsOutAnewFromWhereItIsSeen)
{
    const RingItem &item = *view.itemFor({0, 0});
    move(at(2.5 / 8));
    clock.advance(Seconds(0.1));
    const QRectF between = item.shownFrame();
    move(at(6.5 / 8));
    EXPECT_EQ(item.shownFrame(), between);
    clock.advance(Seconds(0.25));
    EXPECT_EQ(item.shownFrame(), item.frame());
}

TEST_F(RingViewMotion, keepsItsPaceWhenNothingNewIsAsked)
{
    const RingItem &item = *view.itemFor({0, 0});
    move(at(2.5 / 8));
    clock.advance(Seconds(0.2));
    view.layoutSubviews();
    clock.advance(Seconds(0.05));
    EXPECT_EQ(item.shownFrame(), item.frame());
}

TEST_F(RingViewMotion, isLeftOutWhereTheUserWantsLess)
{
    clock.appearance.setMotionReduced(true);
    move(at(2.5 / 8));
    EXPECT_EQ(view.itemFor({0, 0})->shownFrame(), view.itemFor({0, 0})->frame());
    EXPECT_FALSE(clock.ticks());
}

TEST_F(RingViewMotion, growsNewItemsWhereTheyBelongInAGlidingReload)
{
    const QRectF former = view.itemFor({0, 0})->frame();
    script.sections = {9};
    view.reloadData(false);
    EXPECT_EQ(view.itemFor({0, 0})->shownFrame(), former);
    const QPointF way = view.itemFor({0, 8})->shownFrame().center() - view.itemFor({0, 8})->frame().center();
    EXPECT_NEAR(length(way), 0.0, 1e-9);
    EXPECT_TRUE(view.itemFor({0, 8})->shownFrame().isEmpty());
    clock.advance(Seconds(0.3));
    EXPECT_EQ(view.itemFor({0, 8})->shownFrame(), view.itemFor({0, 8})->frame());
}

TEST_F(RingViewMotion, unturnsAtOnceForTheNextShow)
{
    move(at(2.5 / 8));
    view.resetLayout();
    EXPECT_EQ(view.ringLayout().startArc, 0.0);
    EXPECT_EQ(view.itemFor({0, 0})->shownFrame(), view.itemFor({0, 0})->frame());
}

TEST_F(RingViewMotion, followsTheSizeOfTheView)
{
    view.resize(800, 800);
    EXPECT_DOUBLE_EQ(view.ringLayout().radius(), 244.0);
    clock.advance(Seconds(0.3));
    EXPECT_NEAR(length(view.itemFor({0, 0})->shownFrame().center() - QPointF(400, 400)), 244.0, 1e-9);
}

/// Sees what is repainted.
class PaintWatcher : public QObject {
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            painted |= static_cast<QPaintEvent *>(event)->region();
        return false;
    }
    QRegion painted;
};

TEST_F(RingViewMotion, repaintsOnlyWhereItemsMove)
{
    QCoreApplication::processEvents();
    PaintWatcher watcher;
    view.installEventFilter(&watcher);
    QCoreApplication::processEvents();
    EXPECT_TRUE(watcher.painted.isEmpty());
    move(at(2.5 / 8));
    clock.advance(Seconds(0.05));
    QCoreApplication::processEvents();
    EXPECT_FALSE(watcher.painted.isEmpty());
    EXPECT_FALSE(watcher.painted.contains(QPoint(200, 200)));
    EXPECT_TRUE(watcher.painted.contains(ViewFlip{400}(view.itemFor({0, 0})->shownFrame().center()).toPoint()));
}

TEST_F(RingViewMotion, showsOneBubbleThatFollowsThePointer)
{
    move(at(2.5 / 8));
    QCoreApplication::processEvents();
    EXPECT_EQ(visibleBubbles(), 1U);
    const QRectF item = view.frameOnStage({0, 2});
    EXPECT_NEAR(stage.lastFrame.center().x(), item.center().x(), 1.0);
    EXPECT_LT(stage.lastFrame.center().y(), item.y()) << "it stands below the item";
    move(at(3.5 / 8));
    QCoreApplication::processEvents();
    EXPECT_EQ(visibleBubbles(), 1U);
    EXPECT_NEAR(stage.lastFrame.center().x(), view.frameOnStage({0, 3}).center().x(), 1.0);
    view.hide();
    EXPECT_EQ(visibleBubbles(), 0U);
}

} // namespace
} // namespace Orbita
