#include "ring/RingView.h"

#include "platform/Stage.h"
#include "ring/RenderedPictures.h"

#include <QAccessible>
#include <QResizeEvent>

namespace Orbita {

namespace {

/// Where an item sets out that has no predecessor: it grows from where it belongs.
QRectF middleOf(const QRectF &frame)
{
    return {frame.center(), QSizeF(0, 0)};
}

} // namespace

RingView::RingView(const RingServices &services, QWidget *parent)
    : QWidget(parent), m_services(services), m_bubbles(services.stage)
{
    setMouseTracking(true);
    setAcceptDrops(true);
    setFocusPolicy(Qt::NoFocus); // keys are the controller's
    setAccessibleName(QStringLiteral("Orbita"));
    connect(&m_services.pictures, &RenderedPictures::rendered, this, [this](quintptr key) {
        forEachItem([&](const RingItem &item) {
            if (item.image().key() == key)
                repaintItem(item);
        });
    });
}

RingView::~RingView()
{
    m_services.pictures.setNeed(this, 0);
}

qint64 RingView::numberOfItemsInSection(qint64 section) const
{
    return section >= 0 && section < numberOfSections() ? qint64(m_sections[size_t(section)].size()) : 0;
}

RingItem *RingView::itemFor(ItemAddress address) const
{
    const bool exists = address.position >= 0 && address.position < numberOfItemsInSection(address.section);
    return exists ? m_sections[size_t(address.section)][size_t(address.position)].get() : nullptr;
}

QRectF RingView::globalFrameOf(ItemAddress address) const
{
    const RingItem *item = itemFor(address);
    if (!item)
        return {};
    const QRectF inWidget = flip()(item->frame());
    return {mapToGlobal(inWidget.topLeft()), inWidget.size()};
}

QRectF RingView::frameOnStage(ItemAddress address) const
{
    const QRectF frame = globalFrameOf(address);
    return frame.isNull() ? frame : m_services.stage.fromDesktop(frame);
}

void RingView::reloadData(bool instantly)
{
    const Sections former = std::exchange(m_sections, {});
    m_press = {};
    m_layout.gap = {};
    m_layout.relativeSizes.clear();
    m_layout.totalNumberOfItems = 0;
    m_pictureNeed = 0;
    ++m_highlightRequest;
    if (m_dataSource)
        loadSections(former);
    if (m_mouseOverItemIndex >= m_layout.totalNumberOfItems) {
        m_lastMouseOverItemIndex = -1;
        m_mouseOverItemIndex = NotFound;
    }
    updateItemSizes(instantly ? Animated::No : Animated::Yes);
    update();
    titleVisibilityChanged();
    QAccessibleEvent event(this, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

void RingView::loadSections(const Sections &former)
{
    for (qint64 section = 0; section < m_dataSource->ringViewNumberOfSections(*this); ++section) {
        m_sections.emplace_back();
        m_layout.relativeSizes.emplace_back();
        for (qint64 position = 0; position < m_dataSource->ringViewNumberOfItemsInSection(*this, section); ++position)
            loadItem({section, position}, former);
    }
}

void RingView::loadItem(ItemAddress address, const Sections &former)
{
    std::unique_ptr<RingItem> item = m_dataSource->ringViewItemFor(*this, address);
    Q_ASSERT(item);
    item->setHost(this);
    item->setSelected(false);
    // Seen first where the item stood whose place it takes, so that a gliding reload looks like one ring.
    const auto section = size_t(address.section);
    const auto position = size_t(address.position);
    if (section < former.size() && position < former[section].size())
        item->setShownFrame(former[section][position]->shownFrame());
    else
        item->setShownFrame(QRectF());
    m_sections.back().push_back(std::move(item));
    m_layout.relativeSizes.back().push_back(1.0);
    ++m_layout.totalNumberOfItems;
}

void RingView::layoutSubviews(Animated animated)
{
    selectItem(nullptr);
    m_layout.size = size();
    const std::vector<QRectF> frames = m_layout.frames();
    size_t index = 0;
    forEachItem([&](RingItem &item) {
        if (item.shownFrame().isNull())
            item.setShownFrame(middleOf(frames[index]));
        ++index;
    });
    const bool glides
        = animated == Animated::Yes && isVisible() && m_services.clock.duration() > AnimationClock::Time::zero();
    if (glides)
        moveItems(frames);
    else
        placeItems(frames);
}

void RingView::resetLayout()
{
    m_layout.startArc = 0.0;
    layoutSubviews(Animated::No);
}

void RingView::updateItemSizes(Animated animated)
{
    const bool magnifies = m_zoomingEnabled && m_magnifyItemsOnMouseOver;
    m_layout.magnify(m_mouseOverItemIndex, magnifies ? Magnification::On : Magnification::Off);
    layoutSubviews(animated);
}

void RingView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layoutSubviews(Animated::Yes);
}

void RingView::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    abandonPress();
    closeAllTitles();
    updateBubbles();
}

void RingView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::EnabledChange)
        return;
    setAttribute(Qt::WA_TransparentForMouseEvents, !isEnabled());
    if (isEnabled())
        return;
    abandonPress();
    closeAllTitles();
}

} // namespace Orbita
