#include "ring/DragOperation.h"
#include "ring/RingViewFixture.h"
#include "support/RowName.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace Orbita {
namespace {

using Reports = std::vector<std::string>;

class RingViewDrop : public RingViewFixture {
protected:
    RingViewDrop() { data.setUrls({QUrl(QStringLiteral("file:///tmp/a"))}); }

    bool enter(Qt::DropActions offered = Qt::CopyAction | Qt::LinkAction)
    {
        QDragEnterEvent event({200, 200}, offered, &data, Qt::NoButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&view, &event);
        return event.isAccepted();
    }
    Qt::DropAction update(QPointF point, Qt::DropActions offered = Qt::CopyAction | Qt::LinkAction)
    {
        enter(); // who is entered gets the rest
        QDragMoveEvent event(ViewFlip{400}(point).toPoint(), offered, &data, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }
    bool drop(QPointF point)
    {
        enter();
        QDropEvent event(ViewFlip{400}(point), Qt::CopyAction | Qt::LinkAction, &data, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &event);
        return event.isAccepted();
    }
    QMimeData data;
};

TEST_F(RingViewDrop, takesFilesAndLinksOnly)
{
    EXPECT_TRUE(enter());
    data.clear();
    data.setText(QStringLiteral("words"));
    EXPECT_FALSE(enter());
}

TEST_F(RingViewDrop, opensAGapOrClosesItOverWhatTakesTheDrop)
{
    script.canDropOnto = [](ItemAddress address) { return address == ItemAddress{0, 4}; };
    EXPECT_EQ(update(at(1.3 / 8)), Qt::CopyAction);
    EXPECT_EQ(gap(), (ItemAddress{0, 1}));
    EXPECT_EQ(update(at(1.8 / 8)), Qt::CopyAction);
    EXPECT_EQ(gap(), (ItemAddress{0, 2}));
    EXPECT_EQ(update(at(4.1 / 8)), Qt::CopyAction);
    EXPECT_EQ(gap(), (ItemAddress{0, 4}));
    EXPECT_EQ(update(at(4.5 / 8)), Qt::LinkAction);
    EXPECT_FALSE(gap().isFound());
    EXPECT_EQ(update(at(4.9 / 8)), Qt::CopyAction);
    EXPECT_EQ(gap(), (ItemAddress{0, 5}));

    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&view, &leave);
    EXPECT_FALSE(gap().isFound());
    EXPECT_TRUE(script.reports.empty());
}

struct DropRow {
    const char *name;
    double turn;
    std::string report;
};

class Dropped : public RingViewDrop, public testing::WithParamInterface<DropRow> {};

TEST_P(Dropped, goesWhereItWasHeld)
{
    script.canDropOnto = [](ItemAddress address) { return address == ItemAddress{0, 4}; };
    (void)update(at(GetParam().turn));
    EXPECT_TRUE(drop(at(GetParam().turn)));
    EXPECT_EQ(script.reports, Reports{GetParam().report});
    EXPECT_FALSE(gap().isFound());
}

INSTANTIATE_TEST_SUITE_P(Places, Dropped,
                         testing::Values(DropRow{"before", 1.3 / 8, "receive at 0-1"},
                                         DropRow{"after", 1.8 / 8, "receive at 0-2"},
                                         DropRow{"past the last", 7.8 / 8, "receive at 0-8"},
                                         DropRow{"onto", 4.5 / 8, "open with 0-4"},
                                         DropRow{"first quarter before", 4.1 / 8, "receive at 0-4"},
                                         DropRow{"last quarter after", 4.9 / 8, "receive at 0-5"},
                                         DropRow{"a border goes to the beginning", 0.0, "receive at 0-0"}),
                         rowName<DropRow>);

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
    EXPECT_EQ(script.reports, Reports{"receive at 0-0"});
    script.supportsDrop = [](qint64) { return false; };
    EXPECT_FALSE(drop(at(0.9)));
    EXPECT_EQ(script.reports.size(), 1U);
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
