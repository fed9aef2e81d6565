#include "ring/RingView.h"

#include <QAccessible>

namespace Orbita {

void RingView::closeAllTitles()
{
    forEachItem([](RingItem &item) { item.closeTitle(); });
}

void RingView::selectItem(const RingItem *selected)
{
    forEachItem([selected](RingItem &item) { item.setSelected(&item == selected); });
}

void RingView::highlightItem(ItemAddress address)
{
    m_mouseOverItemIndex = 0;
    closeAllTitles();
    const qint64 index = m_layout.indexOf(address);
    m_isHighlighting = index != NotFound;
    if (m_isHighlighting) {
        m_mouseOverItemIndex = index;
        const auto markItem = [this, address, request = ++m_highlightRequest] {
            if (request != m_highlightRequest)
                return; // another one is highlighted by now, or the ring was reloaded
            RingItem *item = itemFor(address);
            if (!item)
                return;
            if (!item->alwaysShowTitle())
                item->showTitle();
            selectItem(item);
        };
        QMetaObject::invokeMethod(this, markItem, Qt::QueuedConnection);
    }
    updateItemSizes();
    if (m_isHighlighting) {
        QAccessibleEvent event(this, QAccessible::Focus);
        event.setChild(int(index));
        QAccessible::updateAccessibility(&event);
    }
}

ItemAddress RingView::highlightedItem() const
{
    return m_layout.addressAt(m_mouseOverItemIndex);
}

} // namespace Orbita
