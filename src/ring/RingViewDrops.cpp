#include "ring/DragOperation.h"
#include "ring/DropZone.h"
#include "ring/RingView.h"

#include <QDropEvent>
#include <QMimeData>

namespace Orbita {

namespace {

/// Answers \a event with \a operation, or refuses it when the other program offers nothing that fits.
void answer(QDropEvent &event, DragOperation operation)
{
    const Qt::DropAction action = dropActionFor(operation, event.possibleActions());
    event.setDropAction(action);
    event.setAccepted(action != Qt::IgnoreAction);
}

} // namespace

void RingView::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        answer(*event, DragOperation::Copy);
    else
        event->ignore();
}

void RingView::dragMoveEvent(QDragMoveEvent *event)
{
    const DragInformation drag{*event->mimeData(), flip()(event->position())};
    const std::optional<DropTarget> target = outsideTarget(drag);
    if (target)
        followDropTarget(target);
    else
        selectItem(nullptr);
    answer(*event, target && target->zone == DropZone::Onto ? DragOperation::Generic : DragOperation::Copy);
}

void RingView::dragLeaveEvent(QDragLeaveEvent *)
{
    closeGap();
}

void RingView::dropEvent(QDropEvent *event)
{
    const DragInformation drag{*event->mimeData(), flip()(event->position())};
    const std::optional<DropTarget> target = outsideTarget(drag);
    answer(*event, target && target->zone == DropZone::Onto ? DragOperation::Generic : DragOperation::Copy);
    if (!event->isAccepted() || !m_delegate || !performDrag(drag, target))
        event->ignore();
    closeGap();
}

std::optional<DropTarget> RingView::outsideTarget(const DragInformation &drag)
{
    return dropTargetAt(m_layout, angleOf(drag.position),
                        [&](ItemAddress item) { return m_delegate && m_delegate->ringViewCanDrop(*this, drag, item); });
}

bool RingView::performDrag(const DragInformation &drag, const std::optional<DropTarget> &target)
{
    selectItem(nullptr);
    m_layout.gap = {};
    if (target && target->zone == DropZone::Onto)
        return m_delegate->ringViewDidDrop(*this, drag, target->item);
    const auto supportsDrop
        = [this](qint64 section) { return m_dataSource && m_dataSource->ringViewSectionSupportsDrop(*this, section); };
    if (target && supportsDrop(target->item.section))
        return m_delegate->ringViewDidReceiveDrag(*this, drag, target->insertion());
    return supportsDrop(0) && m_delegate->ringViewDidReceiveDrag(*this, drag, {0, 0});
}

void RingView::closeGap()
{
    selectItem(nullptr);
    m_layout.gap = {};
    layoutSubviews(Animated::Yes);
}

} // namespace Orbita
