#include "ring/DragOperation.h"
#include "ring/RingViewFixture.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace Orbita {
namespace {

class RingViewDrop : public RingViewFixture {
protected:
    RingViewDrop() { data.setUrls({QUrl(QStringLiteral("file:///tmp/a"))}); }

    bool enter()
    {
        QDragEnterEvent event({200, 200}, offered, &data, Qt::NoButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&view, &event);
        return event.isAccepted();
    }
    Qt::DropAction update(QPointF point)
    {
        enter(); // who is entered gets the rest
        QDragMoveEvent event(ViewFlip{400}(point).toPoint(), offered, &data, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }
    bool drop(QPointF point)
    {
        enter();
        QDropEvent event(ViewFlip{400}(point), offered, &data, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &event);
        return event.isAccepted();
    }

    const Qt::DropActions offered = Qt::CopyAction | Qt::LinkAction;
    QMimeData data;
};

TEST_F(RingViewDrop, takesFilesAndLinksOnly)
{
    EXPECT_TRUE(enter());
    data.clear();
    data.setText(QStringLiteral("words"));
    EXPECT_FALSE(enter());
}

TEST_F(RingViewDrop, goesWhereItWasHeldIntoTheGapThatItOpensOrOntoWhatTakesIt)
{
    script.container = ItemAddress{0, 4};
    struct Place {
        double sector;
        std::string report;
        ItemAddress gap;
    };
    for (const auto &[sector, report, opened] :
         {Place{1.3, "receive at 0-1", {0, 1}}, Place{1.8, "receive at 0-2", {0, 2}},
          Place{7.8, "receive at 0-8", {0, 8}}, Place{4.1, "receive at 0-4", {0, 4}}, Place{4.5, "open with 0-4", {}},
          Place{4.9, "receive at 0-5", {0, 5}}, Place{0.0, "receive at 0-0", {}}}) {
        SCOPED_TRACE(sector);
        const QPointF point = at(sector / 8);
        script.reports.clear();
        EXPECT_EQ(update(point), report == "open with 0-4" ? Qt::LinkAction : Qt::CopyAction);
        EXPECT_EQ(gap(), opened);
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(&view, &leave);
        EXPECT_FALSE(gap().isFound());
        EXPECT_TRUE(script.reports.empty());
        (void)update(point);
        EXPECT_TRUE(drop(point));
        EXPECT_EQ(script.reports, Reports{report});
        EXPECT_FALSE(gap().isFound());
    }
}

TEST_F(RingViewDrop, goesToTheBeginningOfAnEmptyRing)
{
    load({0});
    EXPECT_EQ(update(at(0.3)), Qt::CopyAction);
    EXPECT_TRUE(drop(at(0.3)));
    EXPECT_EQ(script.reports, Reports{"receive at 0-0"});
}

TEST_F(RingViewDrop, passesOverSectionsThatTakeNone)
{
    load({2, 2});
    script.supportsDrop = [](qint64 section) { return section == 0; };
    EXPECT_TRUE(drop(at(0.9)));
    script.supportsDrop = [](qint64) { return false; };
    EXPECT_FALSE(drop(at(0.9)));
    EXPECT_EQ(script.reports, Reports{"receive at 0-0"});
}

TEST_F(RingViewDrop, isRefusedWhenNobodyTakesIt)
{
    script.acceptsDrops = false;
    EXPECT_FALSE(drop(at(0.3)));
    view.setDelegate(nullptr);
    EXPECT_FALSE(drop(at(0.3)));
}

TEST(DragOperation, isNeverAMove)
{
    const Qt::DropActions all = Qt::CopyAction | Qt::LinkAction | Qt::MoveAction;
    EXPECT_EQ(dropActionFor(DragOperation::Copy, all), Qt::CopyAction);
    EXPECT_EQ(dropActionFor(DragOperation::Generic, all), Qt::LinkAction);
    EXPECT_EQ(dropActionFor(DragOperation::Generic, Qt::CopyAction), Qt::CopyAction);
    EXPECT_EQ(dropActionFor(DragOperation::Copy, Qt::LinkAction), Qt::LinkAction);
    EXPECT_EQ(dropActionFor(DragOperation::Copy, Qt::MoveAction), Qt::IgnoreAction);
}

} // namespace
} // namespace Orbita
