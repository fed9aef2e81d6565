#pragma once

#include "ring/AnimationClock.h"
#include "ring/RingItem.h"
#include "ring/RingLayout.h"
#include "ring/RingViewProtocols.h"
#include "ring/TitleBubbles.h"
#include "ring/ViewFlip.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

namespace Orbita {

struct DropTarget;
class RenderedPictures;
class Stage;

/// What the rings of a program share. All outlive the views.
struct RingServices {
    Stage &stage;
    AnimationClock &clock;
    RenderedPictures &pictures;
};

/// Items on a circle round the centre of the view. Hovering magnifies and titles them, pressing clicks and drags them.
///
/// The view decides nothing about items: it takes them from its data source and reports every act to its delegate.
/// Positions and frames are points with y upwards. A disabled ring is transparent to the pointer.
class RingView : public QWidget, private RingItemHost {
    Q_OBJECT
public:
    explicit RingView(const RingServices &services, QWidget *parent = nullptr);
    ~RingView() override;

    /// Borrowed, may be null. What a missing one would be told or asked is left out.
    void setDataSource(RingViewDataSource *dataSource) { m_dataSource = dataSource; }
    void setDelegate(RingViewDelegate *delegate) { m_delegate = delegate; }
    [[nodiscard]] bool magnifyItemsOnMouseOver() const { return m_magnifyItemsOnMouseOver; }
    void setMagnifyItemsOnMouseOver(bool magnify) { m_magnifyItemsOnMouseOver = magnify; }
    /// Whether every item's bubble is shown at all times, from the next pointer movement on.
    [[nodiscard]] bool alwaysShowTitles() const { return m_alwaysShowTitles; }
    void setAlwaysShowTitles(bool always) { m_alwaysShowTitles = always; }

    [[nodiscard]] qint64 numberOfSections() const { return qint64(m_sections.size()); }
    [[nodiscard]] qint64 numberOfItemsInSection(qint64 section) const;
    /// The item there, owned by the view until the next load; null when there is none.
    [[nodiscard]] RingItem *itemFor(ItemAddress address) const;
    /// Weights, start arc and gap as they stand now.
    [[nodiscard]] const RingLayout &ringLayout() const { return m_layout; }
    [[nodiscard]] qint64 mouseOverItemIndex() const { return m_mouseOverItemIndex; }
    /// The item under the press, out of the ring until it is put back; null when there is none.
    [[nodiscard]] const RingItem *draggedItem() const { return m_press.draggedItem.get(); }
    /// The item's rectangle in the toolkit's global coordinates, y downwards; empty when there is none.
    [[nodiscard]] QRectF globalFrameOf(ItemAddress address) const;
    /// The item's rectangle in the stage's, y upwards; empty when there is none.
    [[nodiscard]] QRectF frameOnStage(ItemAddress address) const;

    /// Takes all items anew from the data source. With true the new ring stands at once; with false it glides there.
    void reloadData(bool instantly = true);
    void layoutSubviews(Animated animated = Animated::Yes);
    /// Turns the ring back at once, for the next time it is shown.
    void resetLayout();
    /// Weighs all items by the sector under the pointer and turns the ring to suit.
    void updateItemSizes(Animated animated = Animated::Yes);

    void closeAllTitles();
    /// Frames \a item alone; none with null. The next layout ends it.
    void selectItem(const RingItem *item);
    /// Marks an item as chosen by keyboard: magnified at once, framed and titled after the current event.
    void highlightItem(ItemAddress address);
    /// The item of the sector last pointed at or highlighted; not found when there is none.
    [[nodiscard]] ItemAddress highlightedItem() const;
    /// Whether that item was chosen by keyboard, and the pointer has not moved over the ring since.
    [[nodiscard]] bool isHighlighting() const { return m_isHighlighting; }

    /// Moves over \a sibling, a widget that covers part of the ring, count as moves over the ring.
    void trackPointerOver(QWidget &sibling);
    /// Ends a drag of an item, if there is one, where it is: others may have heard of the release first.
    void finishDrag();
    /// Does what a click on the item does.
    void clickItem(ItemAddress address);
    /// Does what a right click on the item does.
    void rightClickItem(ItemAddress address);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// From the press of the left button to its release.
    struct Press {
        std::unique_ptr<RingItem> draggedItem;
        ItemAddress original; ///< where it stood
        QPointF lastPoint;    ///< of the press, then of the last drag step
        bool holdsItem = false;
        bool didDrag = false;
    };

    // RingItemHost
    void itemChanged(const RingItem &item) override;
    void titleVisibilityChanged() override;
    [[nodiscard]] bool canShowTitles() const override { return isVisible() && isEnabled(); }

    // Loading
    using Sections = std::vector<std::vector<std::unique_ptr<RingItem>>>;
    void loadSections(const Sections &former);
    void loadItem(ItemAddress address, const Sections &former);
    template <typename Visit>
    void forEachItem(Visit visit) const;

    // Movement and painting
    [[nodiscard]] ViewFlip flip() const { return {double(height())}; }
    void moveItems(const std::vector<QRectF> &frames);
    void placeItems(const std::vector<QRectF> &frames);
    bool stepMotion(AnimationClock::Time now);
    void repaintItem(const RingItem &item);
    void reserveRoomForPictures();
    void updateBubbles();

    // Pointer
    void hover(QPointF pointer);
    void hoverOverTitles(QPointF pointer);
    void hoverOverTitle(ItemAddress address, QPointF pointer);
    void unmagnify();
    void pointerLeft();
    void press(QPointF pointer);
    void drag(QPointF pointer);
    void release(QPointF pointer);
    [[nodiscard]] bool finishPress(QPointF pointer);
    void rightPress(QPointF pointer);
    [[nodiscard]] ItemAddress topmostItemAt(QPointF pointer) const;
    void takeItem(ItemAddress address);
    void putItem(ItemAddress address);
    void abandonPress();
    void followDropTarget(const std::optional<DropTarget> &target);
    [[nodiscard]] double angleOf(QPointF pointer) const;

    // Drags from outside
    [[nodiscard]] std::optional<DropTarget> outsideTarget(const DragInformation &drag);
    [[nodiscard]] bool performDrag(const DragInformation &drag, const std::optional<DropTarget> &target);
    void closeGap();

    RingServices m_services;
    RingViewDataSource *m_dataSource = nullptr;
    RingViewDelegate *m_delegate = nullptr;
    Sections m_sections;
    RingLayout m_layout;
    Press m_press;
    TitleBubbles m_bubbles;
    QPointF m_pointer; ///< where the pointer was last seen
    qint64 m_mouseOverItemIndex = NotFound;
    qint64 m_lastMouseOverItemIndex = -1;
    AnimationClock::Time m_motionStart{};
    qsizetype m_pictureNeed = 0;    ///< bytes, the most since the last load
    quint64 m_highlightRequest = 0; ///< tells a highlight from the one that replaced it
    bool m_isMoving = false;
    bool m_bubblesAreDue = false;
    bool m_isLeftPressed = false; ///< and not as a right click, with Control
    bool m_isHighlighting = false;
    bool m_zoomingEnabled = true;
    bool m_magnifyItemsOnMouseOver = false;
    bool m_alwaysShowTitles = false;
};

template <typename Visit>
void RingView::forEachItem(Visit visit) const
{
    for (const auto &section : m_sections) {
        for (const std::unique_ptr<RingItem> &item : section)
            visit(*item);
    }
}

} // namespace Orbita
