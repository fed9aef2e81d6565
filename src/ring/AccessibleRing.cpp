#include "ring/AccessibleRing.h"

#include "ring/RingView.h"

namespace Orbita {

AccessibleRing::AccessibleRing(RingView *ring) : QAccessibleWidget(ring, QAccessible::PopupMenu) {}

AccessibleRing::~AccessibleRing()
{
    for (const QAccessible::Id id : m_children)
        QAccessible::deleteAccessibleInterface(id);
}

RingView &AccessibleRing::ring() const
{
    return *static_cast<RingView *>(widget());
}

int AccessibleRing::childCount() const
{
    qint64 count = 0;
    for (qint64 section = 0; section < ring().numberOfSections(); ++section)
        count += ring().numberOfItemsInSection(section);
    return int(count);
}

QAccessibleInterface *AccessibleRing::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    while (int(m_children.size()) <= index) {
        auto *item = new AccessibleRingItem(&ring(), int(m_children.size()));
        m_children.push_back(QAccessible::registerAccessibleInterface(item));
    }
    return QAccessible::accessibleInterface(m_children[size_t(index)]);
}

int AccessibleRing::indexOfChild(const QAccessibleInterface *child) const
{
    const auto *item = dynamic_cast<const AccessibleRingItem *>(child);
    return item ? item->index() : -1;
}

QAccessibleInterface *AccessibleRing::childAt(int x, int y) const
{
    for (int index = childCount() - 1; index >= 0; --index) {
        QAccessibleInterface *item = child(index);
        if (item && item->rect().contains(x, y))
            return item;
    }
    return nullptr;
}

QAccessibleInterface *AccessibleRing::focusChild() const
{
    const qint64 index = ring().ringLayout().indexOf(ring().highlightedItem());
    return index == NotFound ? nullptr : child(int(index));
}

const RingItem *AccessibleRingItem::item() const
{
    return m_ring ? m_ring->itemFor(m_ring->ringLayout().addressAt(m_index)) : nullptr;
}

QAccessibleInterface *AccessibleRingItem::parent() const
{
    return m_ring ? QAccessible::queryAccessibleInterface(m_ring) : nullptr;
}

QString AccessibleRingItem::text(QAccessible::Text kind) const
{
    if (!item())
        return {};
    if (kind == QAccessible::Name)
        return item()->title();
    // The dot marks what is running.
    if (kind == QAccessible::Description && item()->isHighlighted())
        return RingView::tr("Running");
    return {};
}

QRect AccessibleRingItem::rect() const
{
    return m_ring ? m_ring->globalFrameOf(m_ring->ringLayout().addressAt(m_index)).toAlignedRect() : QRect();
}

QAccessible::State AccessibleRingItem::state() const
{
    QAccessible::State state;
    if (!item()) {
        state.invalid = true;
        return state;
    }
    state.focusable = true;
    state.selectable = true;
    state.disabled = !m_ring->isEnabled();
    state.invisible = !m_ring->isVisible();
    const bool isChosen = m_ring->ringLayout().indexOf(m_ring->highlightedItem()) == m_index;
    state.focused = isChosen;
    state.selected = isChosen;
    return state;
}

void *AccessibleRingItem::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
}

QStringList AccessibleRingItem::actionNames() const
{
    return {pressAction(), showMenuAction(), setFocusAction()};
}

void AccessibleRingItem::doAction(const QString &action)
{
    if (!item() || !m_ring->isEnabled())
        return;
    const ItemAddress address = m_ring->ringLayout().addressAt(m_index);
    if (action == pressAction())
        m_ring->clickItem(address);
    else if (action == showMenuAction())
        m_ring->rightClickItem(address);
    else if (action == setFocusAction())
        m_ring->highlightItem(address);
}

} // namespace Orbita
