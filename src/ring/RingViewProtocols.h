#pragma once

#include "base/ItemAddress.h"

#include <QPointF>

#include <memory>

class QMimeData;

namespace Orbita {

class RingItem;
class RingView;

/// Something dragged in from another program, for as long as the call lasts.
struct DragInformation {
    const QMimeData &mimeData;
    QPointF position; ///< in the view, points, y upwards
};

/// Where a ring view takes its content from.
class RingViewDataSource {
public:
    virtual ~RingViewDataSource() = default;

    [[nodiscard]] virtual qint64 ringViewNumberOfSections(RingView &view) = 0;
    [[nodiscard]] virtual qint64 ringViewNumberOfItemsInSection(RingView &view, qint64 section) = 0;
    /// A new item for the view to own.
    [[nodiscard]] virtual std::unique_ptr<RingItem> ringViewItemFor(RingView &view, ItemAddress address) = 0;
    /// Whether outside material may be dropped into \a section.
    [[nodiscard]] virtual bool ringViewSectionSupportsDrop(RingView &view, qint64 section) = 0;
    /// Whether the title of the item that the pointer has come over may be shown.
    [[nodiscard]] virtual bool ringViewShouldDisplayTitleOfItem(RingView &view, ItemAddress address) = 0;
};

/// Whom a ring view tells what the user does.
///
/// The view may be reloaded, disabled, resized or hidden in any of these calls, but not destroyed: use deleteLater().
class RingViewDelegate {
public:
    virtual ~RingViewDelegate() = default;

    virtual void ringViewDidClickItem(RingView &view, ItemAddress address) = 0;
    virtual void ringViewDidRightClickItem(RingView &view, ItemAddress address) = 0;
    /// \a address is the item whose arc holds the pointer.
    virtual void ringViewDidRightClickOutsideOfItem(RingView &view, ItemAddress address) = 0;
    /// \a to counts in its section without the moved item: remove first, then insert. The view shows the move already.
    virtual void ringViewDidMoveItem(RingView &view, ItemAddress from, ItemAddress to) = 0;

    /// Whether dropping the item that stood at \a dragged onto \a target is meaningful. Both as before the press.
    [[nodiscard]] virtual bool ringViewCanDropItem(RingView &view, ItemAddress dragged, ItemAddress target) = 0;
    /// The dragged item stays out of the view until it is reloaded.
    virtual void ringViewDidDropItem(RingView &view, ItemAddress dragged, ItemAddress target) = 0;

    /// Takes outside material at an insertion position; answers whether it was accepted.
    [[nodiscard]] virtual bool ringViewDidReceiveDrag(RingView &view, const DragInformation &drag,
                                                      ItemAddress insertion)
        = 0;
    /// Whether outside material can be dropped onto an item.
    [[nodiscard]] virtual bool ringViewCanDrop(RingView &view, const DragInformation &drag, ItemAddress target) = 0;
    /// Drops outside material onto an item; answers whether it was accepted.
    [[nodiscard]] virtual bool ringViewDidDrop(RingView &view, const DragInformation &drag, ItemAddress target) = 0;
};

} // namespace Orbita
