#include "ring/RingItemPainter.h"

#include "ring/RenderedPictures.h"
#include "ring/RingText.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Orbita {

namespace {

constexpr double dimmedPictureOpacity = 0.45;
constexpr double dimmedCaptionOpacity = 0.6; // it is still to be read

void paintSelection(QPainter &painter, const QRectF &rect)
{
    constexpr double borderWidth = 2.0; // lies within the rectangle
    constexpr double radius = 10.0;
    const double inset = borderWidth / 2;
    painter.setPen(QPen(Qt::white, borderWidth));
    painter.setBrush(QColor::fromRgbF(0.0F, 0.0F, 0.0F, 0.25F));
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
}

void paintPicture(QPainter &painter, const QRectF &rect, const QImage &pixels)
{
    if (pixels.isNull())
        return;
    QRectF fitted(QPointF(), QSizeF(pixels.size()).scaled(rect.size(), Qt::KeepAspectRatio));
    fitted.moveCenter(rect.center());
    painter.drawImage(fitted, pixels);
}

void paintCaption(QPainter &painter, const QRectF &rect, const RingItem &item, double fontSize)
{
    painter.setFont(ringFont(fontSize));
    painter.setPen(item.highlightColor());
    painter.drawText(rect, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, item.caption());
}

} // namespace

int pictureSide(const RingItem &item, double devicePixelRatio)
{
    const QSizeF content = ringItemLayers(item.frame().size(), item.alwaysShowTitle()).contentLayer.size();
    return int(std::ceil(std::max(content.width(), content.height()) * devicePixelRatio));
}

void paintRingItem(QPainter &painter, const RingItem &item, const ViewFlip &flip, RenderedPictures &pictures)
{
    const QPointF lowerLeft = item.shownFrame().topLeft();
    const RingItemLayers layers = ringItemLayers(item.shownFrame().size(), item.alwaysShowTitle());
    const auto placed = [&](const QRectF &layer) { return flip(layer.translated(lowerLeft)); };

    if (item.showsSelection())
        paintSelection(painter, placed(layers.selectionLayer));
    painter.setOpacity(item.isDimmed() ? dimmedPictureOpacity : 1.0);
    const int side = pictureSide(item, painter.device()->devicePixelRatioF());
    paintPicture(painter, placed(layers.contentLayer), pictures.picture(item.image(), side));
    painter.setOpacity(item.isDimmed() ? dimmedCaptionOpacity : 1.0);
    if (item.alwaysShowTitle())
        paintCaption(painter, placed(layers.titleLayer), item, layers.titleFontSize);
    painter.setOpacity(1.0);
    if (item.isHighlighted()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(item.highlightColor());
        painter.drawEllipse(placed(layers.highlightLayer));
    }
}

} // namespace Orbita
