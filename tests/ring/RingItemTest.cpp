#include "ring/RingItem.h"
#include "ring/RenderedPictures.h"
#include "ring/RingItemPainter.h"
#include "ring/RingText.h"

#include <QFontMetricsF>
#include <QPainter>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

Image redSquare()
{
    QImage pixels(64, 64, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::red);
    return Image::fromPixels(pixels);
}

TEST(RingItemLayers, giveTheCaptionAShareThatGrowsWithTheItemWithinBounds)
{
    struct Row {
        double height;
        double caption;
        double fontSize;
    };
    for (const auto &[height, caption, fontSize] : {Row{48, 7.68, 5.68}, Row{200, 15, 13}, Row{20, 5, 3}}) {
        SCOPED_TRACE(height);
        const RingItemLayers layers = ringItemLayers({height, height}, true);
        EXPECT_EQ(layers.titleLayer, QRectF(0, 0, height, caption));
        EXPECT_NEAR(layers.titleFontSize, fontSize, 1e-9);
        EXPECT_EQ(layers.contentLayer, QRectF(0, caption, height, height - caption));
        EXPECT_EQ(ringItemLayers({height, height}, false).contentLayer, QRectF(0, 0, height, height));
    }
}

TEST(RingItem, showsItsSelectionOnlyWithAPictureAndKeepsItsColourWhenGivenNone)
{
    RingItem item(Image(), u"name"_s);
    item.setSelected(true);
    EXPECT_FALSE(item.showsSelection());
    item.setImage(redSquare());
    EXPECT_TRUE(item.showsSelection());
    EXPECT_NEAR(item.highlightColor().redF(), 0.5, 1e-4);
    item.setHighlightColor(Qt::black);
    item.setHighlightColor(QColor());
    EXPECT_EQ(item.highlightColor(), QColor(Qt::black));
}

TEST(RingItem, cutsLongCaptionsAtTheEnd)
{
    RingItem item(Image(), u"A name\nmuch longer than any item on the ring is wide"_s);
    item.setFrame(QRectF(0, 0, 100, 100));
    EXPECT_TRUE(item.caption().startsWith(u"A name m"_s));
    EXPECT_TRUE(item.caption().endsWith(QChar(0x2026)));
    EXPECT_LE(QFontMetricsF(ringFont(13)).horizontalAdvance(item.caption()), 100.0);
}

TEST(RingItemPainter, paintsEveryPartWhereItBelongs)
{
    RenderedPictures pictures;
    RingItem item(redSquare(), u"name"_s);
    item.setHighlightColor(Qt::blue);
    item.setSelected(true);
    item.setFrame(QRectF(20, 20, 60, 60));
    const auto paint = [&] {
        QImage canvas(100, 100, QImage::Format_ARGB32_Premultiplied);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        paintRingItem(painter, item, ViewFlip{100}, pictures);
        return canvas;
    };
    (void)paint();
    pictures.waitUntilIdle();
    const QImage shown = paint();
    EXPECT_EQ(shown.pixelColor(50, 50), QColor(Qt::red));
    EXPECT_EQ(shown.pixelColor(50, 86), QColor(Qt::blue)) << "the dot is below the item";
    EXPECT_EQ(shown.pixelColor(50, 19), QColor(Qt::white)) << "the frame's upper border";
    EXPECT_EQ(shown.pixelColor(50, 95).alpha(), 0);

    item.setDimmed(true);
    EXPECT_EQ(paint().pixelColor(50, 86), QColor(Qt::blue)) << "the dot is not dimmed";
    item.setHighlighted(false);
    item.setSelected(false);
    EXPECT_NEAR(paint().pixelColor(50, 50).alphaF(), 0.45, 0.01);
    item.setDimmed(false);
    item.setAlwaysShowTitle(true);
    const QImage captioned = paint();
    EXPECT_EQ(captioned.pixelColor(50, 86).alpha(), 0);
    EXPECT_EQ(captioned.pixelColor(50, 19).alpha(), 0);
    EXPECT_EQ(captioned.pixelColor(22, 78).alpha(), 0) << "the picture ends above the caption";
}

} // namespace
} // namespace Orbita
