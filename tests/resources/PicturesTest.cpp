#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

QImage rendered(const char *name, int side)
{
    QSvgRenderer renderer(QStringLiteral(":/images/%1.svg").arg(QLatin1StringView(name)));
    QImage picture(side, side, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    if (renderer.isValid()) {
        QPainter painter(&picture);
        renderer.render(&painter);
    }
    return picture;
}

TEST(EntryPicture, isATileWithAMargin)
{
    for (const char *name :
         {"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail", "Bookmark", "Script", "Default"}) {
        SCOPED_TRACE(name);
        const QImage picture = rendered(name, 320);
        EXPECT_EQ(picture.pixelColor(160, 15).alpha(), 0) << "the margin is clear";
        EXPECT_EQ(picture.pixelColor(160, 30).alpha(), 255) << "the tile is opaque";
        EXPECT_EQ(picture.pixelColor(160, 290).alpha(), 255) << "the tile is opaque down to its foot";
    }
}

TEST(TrayGlyph, isBlackOnNothing)
{
    const QImage glyph = rendered("small", 16);
    EXPECT_EQ(glyph.pixelColor(8, 8), QColor(Qt::black));
    for (int y = 0; y < glyph.height(); ++y) {
        for (int x = 0; x < glyph.width(); ++x)
            EXPECT_EQ(glyph.pixelColor(x, y).lightness(), 0) << x << ", " << y;
    }
    EXPECT_EQ(glyph.pixelColor(0, 0).alpha(), 0);
}

} // namespace
} // namespace Orbita
