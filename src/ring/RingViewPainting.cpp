#include "platform/Stage.h"
#include "ring/RenderedPictures.h"
#include "ring/RingItemPainter.h"
#include "ring/RingView.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <limits>

namespace Orbita {

namespace {

/// Beyond this many items one large repaint is cheaper than a region of many rectangles.
constexpr size_t mostRectangles = 128;

} // namespace

void RingView::placeItems(const std::vector<QRectF> &frames)
{
    size_t index = 0;
    forEachItem([&](RingItem &item) { item.setFrame(frames[index++]); });
    reserveRoomForPictures();
    titleVisibilityChanged();
    update();
}

void RingView::moveItems(const std::vector<QRectF> &frames)
{
    size_t index = 0;
    bool isNews = false;
    forEachItem(
        [&](const RingItem &item) { isNews |= item.frame() != frames[index++] || item.shownFrame().isEmpty(); });
    if (!isNews)
        return; // whatever is under way keeps its pace

    index = 0;
    forEachItem([&](RingItem &item) { item.startMoving(frames[index++]); });
    reserveRoomForPictures();
    titleVisibilityChanged();
    m_motionStart = m_services.clock.now();
    if (!std::exchange(m_isMoving, true))
        m_services.clock.animate(this, [this](AnimationClock::Time now) { return m_isMoving = stepMotion(now); });
}

bool RingView::stepMotion(AnimationClock::Time now)
{
    const AnimationClock::Time duration = AnimationClock::defaultDuration;
    const double progress = std::clamp((now - m_motionStart) / duration, 0.0, 1.0);
    const double way = eased(progress);
    const bool repaintsAll = m_layout.totalNumberOfItems > qint64(mostRectangles);
    bool isMoving = false;
    forEachItem([&](RingItem &item) {
        if (!item.isMoving())
            return;
        if (!repaintsAll)
            repaintItem(item);
        item.moveTo(progress < 1.0 ? way : 1.0);
        isMoving |= item.isMoving();
        if (!repaintsAll)
            repaintItem(item);
    });
    if (repaintsAll)
        update();
    return isMoving && progress < 1.0;
}

void RingView::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const ViewFlip toWidget = flip();
    const auto paint = [&](const RingItem &item) {
        if (event->region().intersects(toWidget(item.paintedRect()).toAlignedRect()))
            paintRingItem(painter, item, toWidget, m_services.pictures);
    };
    forEachItem(paint);
    if (m_press.draggedItem)
        paint(*m_press.draggedItem);
}

void RingView::repaintItem(const RingItem &item)
{
    // Antialiased edges reach one pixel further.
    update(flip()(item.paintedRect()).toAlignedRect().adjusted(-1, -1, 1, 1));
}

void RingView::itemChanged(const RingItem &item)
{
    repaintItem(item);
}

void RingView::reserveRoomForPictures()
{
    if (m_layout.totalNumberOfItems == 0)
        return;
    int least = std::numeric_limits<int>::max();
    int most = 0;
    forEachItem([&](const RingItem &item) {
        const int side = pictureSide(item, devicePixelRatioF());
        least = std::min(least, side);
        most = std::max(most, side);
    });
    // While the pointer goes round, every item is seen in every size.
    const qsizetype need = RenderedPictures::bytesFor(std::min(least, most), most) * m_layout.totalNumberOfItems;
    m_pictureNeed = std::max(m_pictureNeed, need);
    m_services.pictures.setNeed(this, m_pictureNeed);
}

void RingView::titleVisibilityChanged()
{
    if (std::exchange(m_bubblesAreDue, true))
        return;
    // One pass for all that the current event shows, closes and moves.
    QMetaObject::invokeMethod(this, &RingView::updateBubbles, Qt::QueuedConnection);
}

void RingView::updateBubbles()
{
    m_bubblesAreDue = false;
    std::vector<TitleBubbles::Title> titles;
    if (canShowTitles()) {
        for (qint64 index = 0; index < m_layout.totalNumberOfItems; ++index) {
            const ItemAddress address = m_layout.addressAt(index);
            const RingItem *item = itemFor(address);
            if (item && item->titleVisible())
                titles.push_back({item->title(), frameOnStage(address)});
        }
    }
    m_bubbles.show(titles, window());
}

} // namespace Orbita
