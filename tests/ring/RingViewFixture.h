#pragma once

#include "base/Angle.h"
#include "platform/memory/MemoryStage.h"
#include "ring/ManualAnimationClock.h"
#include "ring/RenderedPictures.h"
#include "ring/RingView.h"

#include <QCoreApplication>
#include <QMouseEvent>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Orbita {

using Reports = std::vector<std::string>;

/// Plays both roles for a ring: items with names "0-0", "0-1", ... and a written record of every report.
class ScriptedRing : public RingViewDataSource, public RingViewDelegate {
public:
    std::vector<qint64> sections{8};
    Reports reports;
    std::vector<ItemAddress> asked;       ///< what may be dropped onto, in the order of the questions
    std::optional<ItemAddress> container; ///< the one item that can be dropped onto
    std::function<bool(qint64)> supportsDrop = [](qint64) { return true; };
    std::function<bool(ItemAddress)> displaysTitle = [](ItemAddress) { return true; };
    std::function<void()> onClick = [] {};
    bool acceptsDrops = true;
    bool alwaysShowsCaption = false;

    static std::string text(ItemAddress a) { return std::to_string(a.section) + "-" + std::to_string(a.position); }
    bool report(const std::string &what, ItemAddress address)
    {
        reports.push_back(what + " " + text(address));
        return acceptsDrops;
    }

    qint64 ringViewNumberOfSections(RingView &) override { return qint64(sections.size()); }
    qint64 ringViewNumberOfItemsInSection(RingView &, qint64 section) override { return sections[size_t(section)]; }
    std::unique_ptr<RingItem> ringViewItemFor(RingView &, ItemAddress address) override
    {
        auto item = std::make_unique<RingItem>(Image(), QString::fromStdString(text(address)));
        item->setHighlighted(false);
        item->setAlwaysShowTitle(alwaysShowsCaption);
        return item;
    }
    bool ringViewSectionSupportsDrop(RingView &, qint64 section) override { return supportsDrop(section); }
    bool ringViewShouldDisplayTitleOfItem(RingView &, ItemAddress address) override { return displaysTitle(address); }

    void ringViewDidClickItem(RingView &, ItemAddress address) override
    {
        report("click", address);
        onClick();
    }
    void ringViewDidRightClickItem(RingView &, ItemAddress address) override { report("right click", address); }
    void ringViewDidRightClickOutsideOfItem(RingView &, ItemAddress address) override { report("beside", address); }
    void ringViewDidMoveItem(RingView &, ItemAddress from, ItemAddress to) override
    {
        report("move " + text(from) + " to", to);
    }
    bool ringViewCanDropItem(RingView &, ItemAddress, ItemAddress target) override
    {
        asked.push_back(target);
        return target == container;
    }
    void ringViewDidDropItem(RingView &, ItemAddress dragged, ItemAddress target) override
    {
        report("drop " + text(dragged) + " onto", target);
    }
    bool ringViewDidReceiveDrag(RingView &, const DragInformation &, ItemAddress insertion) override
    {
        return report("receive at", insertion);
    }
    bool ringViewCanDrop(RingView &, const DragInformation &, ItemAddress target) override
    {
        return target == container;
    }
    bool ringViewDidDrop(RingView &, const DragInformation &, ItemAddress target) override
    {
        return report("open with", target);
    }
};

/// A shown ring of 400 by 400 points whose clock stands still.
class RingViewFixture : public testing::Test {
protected:
    RingViewFixture()
    {
        view.setDataSource(&script);
        view.setDelegate(&script);
        view.setMagnifyItemsOnMouseOver(true);
        view.resize(400, 400);
        view.show();
        view.reloadData();
    }
    void load(std::vector<qint64> sections)
    {
        script.sections = std::move(sections);
        view.reloadData();
    }

    /// The point at \a radius from the centre, \a turn of the circle clockwise from twelve o'clock; y upwards.
    [[nodiscard]] static QPointF at(double turn, double radius = 122.0)
    {
        return pointAtAngle(radius, turn * TwoPi) + QPointF(200, 200);
    }
    [[nodiscard]] RingItem &item(qint64 position) const { return *view.itemFor({0, position}); }
    [[nodiscard]] QPointF centerOf(qint64 position) const { return item(position).frame().center(); }

    void mouse(QEvent::Type type, QPointF point, Qt::MouseButton button, Qt::MouseButtons held,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPointF inWidget = ViewFlip{400}(point);
        QMouseEvent event(type, inWidget, view.mapToGlobal(inWidget), button, held, modifiers);
        QCoreApplication::sendEvent(&view, &event);
    }
    void move(QPointF point) { mouse(QEvent::MouseMove, point, Qt::NoButton, Qt::NoButton); }
    void press(QPointF point, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mouse(QEvent::MouseButtonPress, point, Qt::LeftButton, Qt::LeftButton, modifiers);
    }
    void drag(QPointF point) { mouse(QEvent::MouseMove, point, Qt::NoButton, Qt::LeftButton); }
    void release(QPointF point) { mouse(QEvent::MouseButtonRelease, point, Qt::LeftButton, Qt::NoButton); }
    void rightPress(QPointF point) { mouse(QEvent::MouseButtonPress, point, Qt::RightButton, Qt::RightButton); }

    /// The names of the items that pass \a filter, in ring order.
    template <typename Filter>
    [[nodiscard]] std::string names(Filter filter) const
    {
        std::string names;
        for (qint64 index = 0; index < view.ringLayout().totalNumberOfItems; ++index) {
            const RingItem *item = view.itemFor(view.ringLayout().addressAt(index));
            if (item && filter(*item))
                names += item->title().toStdString() + " ";
        }
        return names;
    }
    [[nodiscard]] std::string order() const
    {
        return names([](const RingItem &) { return true; });
    }
    [[nodiscard]] std::string titles() const { return names(std::mem_fn(&RingItem::titleVisible)); }
    [[nodiscard]] std::string selected() const { return names(std::mem_fn(&RingItem::isSelected)); }
    [[nodiscard]] double weight(qint64 position) const { return view.ringLayout().relativeSizeOfItem({0, position}); }
    [[nodiscard]] ItemAddress gap() const { return view.ringLayout().gap; }

    MemoryStage stage;
    ManualAnimationClock clock;
    RenderedPictures pictures;
    ScriptedRing script;
    RingView view{{stage, clock, pictures}};
};

} // namespace Orbita
