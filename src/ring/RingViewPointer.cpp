#include "base/Angle.h"
#include "platform/Stage.h"
#include "ring/DropZone.h"
#include "ring/RingView.h"

#include <QMouseEvent>

#include <utility>

namespace Orbita {

void RingView::hover(QPointF pointer)
{
    m_pointer = pointer;
    m_isHighlighting = false;
    if (!m_layout.sectorAt(m_layout.offsetFromCentre(pointer))) {
        unmagnify();
        return;
    }
    hoverOverTitles(pointer);
    // Asking about titles may have reloaded the ring, so the sector is looked up only now.
    const qint64 sector = m_layout.sectorAt(m_layout.offsetFromCentre(pointer)).value_or(m_lastMouseOverItemIndex);
    if (sector == m_lastMouseOverItemIndex)
        return;
    m_lastMouseOverItemIndex = sector;
    m_mouseOverItemIndex = sector;
    updateItemSizes();
}

void RingView::hoverOverTitles(QPointF pointer)
{
    // By address, since the data source may reload the ring when it is asked.
    for (qint64 section = 0; section < numberOfSections(); ++section) {
        for (qint64 position = 0; position < numberOfItemsInSection(section); ++position)
            hoverOverTitle({section, position}, pointer);
    }
}

void RingView::hoverOverTitle(ItemAddress address, QPointF pointer)
{
    if (m_alwaysShowTitles) {
        itemFor(address)->showTitle();
        return;
    }
    const bool isOver = isEnabled() && itemFor(address)->frame().contains(pointer);
    const bool isShown = isOver && m_dataSource && m_dataSource->ringViewShouldDisplayTitleOfItem(*this, address);
    RingItem *item = itemFor(address);
    if (item && isShown)
        item->showTitle();
    else if (item)
        item->closeTitle();
}

void RingView::unmagnify()
{
    m_layout.setAllRelativeSizes(1.0);
    m_layout.startArc = 0.0;
    m_lastMouseOverItemIndex = -1;
    layoutSubviews(Animated::Yes);
}

void RingView::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    if (!isEnabled() || !isVisible())
        return;
    // A menu or the close button takes the pointer too, without leading it away. The window ends at the disc, in whose
    // rim the pointer is already outside.
    m_services.stage.locatePointer(this, [this](QPointF onStage) {
        const QPointF pointer = flip()(mapFromGlobal(m_services.stage.toDesktop(onStage)));
        if (length(m_layout.offsetFromCentre(pointer)) > 0.5 * width() - 1.0)
            pointerLeft();
    });
}

void RingView::pointerLeft()
{
    closeAllTitles();
    unmagnify();
}

void RingView::trackPointerOver(QWidget &sibling)
{
    sibling.setMouseTracking(true);
    sibling.installEventFilter(this);
}

bool RingView::eventFilter(QObject *watched, QEvent *event)
{
    const auto *sibling = qobject_cast<QWidget *>(watched);
    if (event->type() == QEvent::MouseMove && sibling && isEnabled()) {
        const auto *move = static_cast<QMouseEvent *>(event);
        if (move->buttons() == Qt::NoButton)
            hover(flip()(mapFromGlobal(move->globalPosition())));
    }
    return QWidget::eventFilter(watched, event);
}

void RingView::mousePressEvent(QMouseEvent *event)
{
    const bool isControlPress = event->button() == Qt::LeftButton && (event->modifiers() & Qt::ControlModifier);
    if (event->button() == Qt::LeftButton)
        m_isLeftPressed = !isControlPress;
    if (event->button() == Qt::RightButton || isControlPress)
        rightPress(flip()(event->position()));
    else if (event->button() == Qt::LeftButton)
        press(flip()(event->position()));
}

void RingView::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton))
        hover(flip()(event->position()));
    else if (m_isLeftPressed)
        drag(flip()(event->position()));
}

void RingView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && std::exchange(m_isLeftPressed, false))
        release(flip()(event->position()));
}

double RingView::angleOf(QPointF pointer) const
{
    return clockwiseAngle(m_layout.offsetFromCentre(pointer));
}

ItemAddress RingView::topmostItemAt(QPointF pointer) const
{
    ItemAddress found;
    m_layout.visitArcs([&](ItemAddress address, RingArc) {
        if (itemFor(address)->frame().contains(pointer))
            found = address;
        return false;
    });
    return found;
}

void RingView::rightPress(QPointF pointer)
{
    const double angle = m_layout.angleFromStart(angleOf(pointer));
    ItemAddress item;
    ItemAddress outside;
    // Item by item: the arc of an earlier item goes before the frame of a later one.
    m_layout.visitArcs([&](ItemAddress address, RingArc arc) {
        if (itemFor(address)->frame().contains(pointer))
            item = address;
        else if (angle > arc.start && angle < arc.end())
            outside = address;
        return item.isFound() || outside.isFound();
    });
    if (item.isFound())
        rightClickItem(item);
    else if (outside.isFound() && m_delegate)
        m_delegate->ringViewDidRightClickOutsideOfItem(*this, outside);
}

void RingView::clickItem(ItemAddress address)
{
    if (m_delegate)
        m_delegate->ringViewDidClickItem(*this, address);
}

void RingView::rightClickItem(ItemAddress address)
{
    if (m_delegate)
        m_delegate->ringViewDidRightClickItem(*this, address);
}

} // namespace Orbita
