#include "base/Angle.h"
#include "ring/DropZone.h"
#include "ring/RingView.h"

#include <algorithm>

namespace Orbita {

namespace {

/// How far the pointer moves after a press before that is a drag.
constexpr double dragDistance = 20.0;

} // namespace

void RingView::press(QPointF pointer)
{
    abandonPress(); // its release may have gone to another window
    m_press.didDrag = false;
    m_zoomingEnabled = false;
    m_layout.setAllRelativeSizes(1.0);
    const ItemAddress hit = topmostItemAt(pointer);
    if (!hit.isFound())
        return;
    m_press.lastPoint = pointer;
    m_press.original = hit;
    m_layout.startArc = 0.0;
    takeItem(hit);
}

void RingView::drag(QPointF pointer)
{
    if (!m_press.didDrag && length(pointer - m_press.lastPoint) < dragDistance)
        return;
    m_press.didDrag = true;
    hover(pointer);
    if (!m_press.holdsItem)
        return;
    m_press.lastPoint = pointer;
    const double angle = angleOf(pointer);
    RingItem &item = *m_press.draggedItem;
    repaintItem(item);
    item.setFrame(m_layout.frameOnCircle(angle, item.frame().size()));
    repaintItem(item);

    const ItemAddress original = m_press.original;
    const auto target = dropTargetAt(m_layout, angle, [&](ItemAddress standing) {
        return m_delegate && m_delegate->ringViewCanDropItem(*this, original, addressBeforePress(original, standing));
    });
    if (m_press.holdsItem) // the delegate may have reloaded the ring
        followDropTarget(target);
}

void RingView::followDropTarget(const std::optional<DropTarget> &target)
{
    if (!target)
        return;
    // The layout clears the selection again: an item that would take the drop is told by the gap that closes.
    selectItem(target->zone == DropZone::Onto ? itemFor(target->item) : nullptr);
    m_layout.gap = target->insertion();
    layoutSubviews(Animated::Yes);
}

void RingView::release(QPointF pointer)
{
    m_zoomingEnabled = true;
    if (m_press.holdsItem && finishPress(pointer))
        return;
    m_lastMouseOverItemIndex = -1;
    hover(pointer);
    layoutSubviews(Animated::Yes);
}

/// Answers whether the ring waits for a reload now, without the dropped item.
bool RingView::finishPress(QPointF pointer)
{
    const ItemAddress original = m_press.original;
    const ItemAddress gap = std::exchange(m_layout.gap, {});
    m_press.holdsItem = false;
    if (!m_press.didDrag) {
        putItem(original);
        clickItem(original);
        return false;
    }
    if (gap.isFound()) {
        putItem(gap);
        if (m_delegate)
            m_delegate->ringViewDidMoveItem(*this, original, gap);
        return false;
    }
    const std::optional<ArcHit> hit = arcAt(m_layout, angleOf(pointer), ArcEnd::Included);
    if (!hit) {
        putItem(original); // the only item has nowhere else to go
        return false;
    }
    selectItem(nullptr);
    if (m_delegate)
        m_delegate->ringViewDidDropItem(*this, original, addressBeforePress(original, hit->item));
    return true;
}

void RingView::takeItem(ItemAddress address)
{
    auto &items = m_sections[size_t(address.section)];
    auto &weights = m_layout.relativeSizes[size_t(address.section)];
    m_press.draggedItem = std::move(items[size_t(address.position)]);
    m_press.holdsItem = true;
    items.erase(items.begin() + address.position);
    weights.erase(weights.begin() + address.position);
}

void RingView::putItem(ItemAddress address)
{
    auto &items = m_sections[size_t(address.section)];
    auto &weights = m_layout.relativeSizes[size_t(address.section)];
    const auto position = std::clamp<qint64>(address.position, 0, qint64(items.size()));
    items.insert(items.begin() + position, std::move(m_press.draggedItem));
    weights.insert(weights.begin() + position, 1.0);
}

void RingView::finishDrag()
{
    if (m_press.holdsItem && m_press.didDrag)
        release(m_press.lastPoint);
}

void RingView::abandonPress()
{
    m_zoomingEnabled = true;
    if (!std::exchange(m_press.holdsItem, false))
        return;
    m_layout.gap = {};
    putItem(m_press.original);
    layoutSubviews(Animated::Yes);
}

} // namespace Orbita
