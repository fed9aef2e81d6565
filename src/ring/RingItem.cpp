#include "ring/RingItem.h"

#include "ring/RingText.h"

#include <algorithm>

namespace Orbita {

namespace {

constexpr double selectionMargin = 2.0;
constexpr double dotSize = 6.0;
constexpr double dotOffset = -9.0; // the dot's lower edge below the item's: 3 points stay between them
constexpr double smallestCaption = 5.0;
constexpr double largestCaption = 15.0;
constexpr double captionShare = 0.16; // of the item's height
constexpr double captionLeading = 2.0;

QRectF between(const QRectF &from, const QRectF &to, double progress)
{
    const auto mix = [progress](double a, double b) { return a + (b - a) * progress; };
    return {mix(from.x(), to.x()), mix(from.y(), to.y()), mix(from.width(), to.width()),
            mix(from.height(), to.height())};
}

} // namespace

RingItemLayers ringItemLayers(QSizeF size, bool alwaysShowTitle)
{
    const double width = size.width();
    const double height = size.height();
    const double caption = std::max(smallestCaption, std::min(largestCaption, captionShare * height));
    const double contentBottom = alwaysShowTitle ? caption : 0.0;
    return {
        .selectionLayer
        = {-selectionMargin, -selectionMargin, width + 2 * selectionMargin, height + 2 * selectionMargin},
        .contentLayer = {0, contentBottom, width, height - contentBottom},
        .titleLayer = {0, 0, width, caption},
        .highlightLayer = {width * 0.5 - dotSize * 0.5, dotOffset, dotSize, dotSize},
        .titleFontSize = caption - captionLeading,
    };
}

RingItem::RingItem(Image image, QString title)
    : m_image(std::move(image)), m_title(std::move(title)), m_highlightColor(QColor::fromRgbF(0.5F, 0.5F, 0.5F))
{
}

void RingItem::setImage(const Image &image)
{
    m_image = image;
    changed();
}

void RingItem::setTitle(const QString &title)
{
    m_title = title;
    m_captionSide = -1.0;
    if (title.isEmpty())
        closeTitle();
    changed();
}

void RingItem::setHighlighted(bool highlighted)
{
    m_highlighted = highlighted;
    changed();
}

void RingItem::setSelected(bool selected)
{
    if (m_selected == selected)
        return;
    m_selected = selected;
    changed();
}

void RingItem::setDimmed(bool dimmed)
{
    if (m_dimmed == dimmed)
        return;
    m_dimmed = dimmed;
    changed();
}

void RingItem::setHighlightColor(const QColor &color)
{
    if (!color.isValid())
        return;
    m_highlightColor = color;
    changed();
}

void RingItem::setAlwaysShowTitle(bool always)
{
    m_alwaysShowTitle = always;
    changed();
}

void RingItem::showTitle()
{
    if (!m_title.isEmpty() && m_host && m_host->canShowTitles())
        setTitleVisible(true);
}

void RingItem::closeTitle()
{
    setTitleVisible(false);
}

void RingItem::setTitleVisible(bool visible)
{
    if (m_titleVisible == visible)
        return;
    m_titleVisible = visible;
    if (m_host)
        m_host->titleVisibilityChanged();
}

void RingItem::setFrame(const QRectF &frame)
{
    m_frame = frame;
    m_shownFrame = frame;
}

void RingItem::startMoving(const QRectF &frame)
{
    m_departure = m_shownFrame;
    m_frame = frame;
}

void RingItem::moveTo(double progress)
{
    // The arrival is exact, or isMoving() would stay true for ever.
    m_shownFrame = progress < 1.0 ? between(m_departure, m_frame, progress) : m_frame;
}

QRectF RingItem::paintedRect() const
{
    const RingItemLayers layers = ringItemLayers(m_shownFrame.size(), m_alwaysShowTitle);
    QRectF rect = layers.selectionLayer;
    if (m_highlighted)
        rect |= layers.highlightLayer;
    return rect.translated(m_shownFrame.topLeft());
}

const QString &RingItem::caption() const
{
    const double side = m_frame.width();
    if (m_captionSide != side) {
        m_captionSide = side;
        m_caption = elidedLine(m_title, ringFont(ringItemLayers(m_frame.size(), true).titleFontSize), side);
    }
    return m_caption;
}

void RingItem::changed()
{
    if (m_host)
        m_host->itemChanged(*this);
}

} // namespace Orbita
