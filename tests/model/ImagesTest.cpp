#include "model/ImageCache.h"
#include "model/ImageStore.h"
#include "support/TemporaryContainer.h"

#include <QFile>
#include <QImageReader>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

Image picture(QColor color, QSize size = {64, 64})
{
    QImage pixels(size, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(color);
    return Image::fromPixels(pixels);
}

QString key(int number)
{
    return QStringLiteral("key %1").arg(number);
}

TEST(ImageCache, forgetsTheOldestOfThirtySix)
{
    ImageCache cache;
    for (int i = 1; i <= 36; ++i)
        cache.storeImage(picture(Qt::red), key(i));
    EXPECT_TRUE(cache.imageForKey(key(1)).isNull());
    for (int i = 2; i <= 36; ++i)
        EXPECT_FALSE(cache.imageForKey(key(i)).isNull()) << i;
}

TEST(ImageCache, readingDoesNotKeepAnEntry)
{
    ImageCache cache;
    for (int i = 1; i <= 35; ++i)
        cache.storeImage(picture(Qt::red), key(i));
    EXPECT_FALSE(cache.imageForKey(key(1)).isNull());
    cache.storeImage(picture(Qt::red), key(36));
    EXPECT_TRUE(cache.imageForKey(key(1)).isNull());
}

TEST(ImageCache, keepsBothPicturesOfOneKeyAndFindsTheOlder)
{
    ImageCache cache;
    const Image first = picture(Qt::red);
    const Image second = picture(Qt::blue);
    cache.storeImage(first, key(1));
    cache.storeImage(second, key(1));
    EXPECT_EQ(cache.imageForKey(key(1)), first);
    cache.removeImageForKey(key(1));
    EXPECT_EQ(cache.imageForKey(key(1)), second);
    cache.removeImageForKey(key(1));
    EXPECT_TRUE(cache.imageForKey(key(1)).isNull());
}

TEST(ImageCache, takesNeitherNothingNorANamelessPicture)
{
    ImageCache cache;
    cache.storeImage(Image(), key(1));
    cache.storeImage(picture(Qt::red), QString());
    EXPECT_TRUE(cache.imageForKey(key(1)).isNull());
    EXPECT_TRUE(cache.imageForKey(QString()).isNull());
}

TEST(ImageStore, keepsAPictureWithItsTransparencyAsTiff)
{
    const TemporaryContainer container;
    const ImageStore store(container.directories().container);
    const QImage pixels = picture(QColor(200, 40, 10, 77), {320, 320}).render({320, 320});
    store.storeImage(Image::fromPixels(pixels), QStringLiteral("12345"));
    EXPECT_TRUE(store.filePathForKey(QStringLiteral("12345")).endsWith(QLatin1String("/ImageStore/12345.tif")));
    EXPECT_EQ(QImageReader(store.filePathForKey(QStringLiteral("12345"))).format(), "tiff");
    EXPECT_EQ(store.imageForKey(QStringLiteral("12345")).render({320, 320}), pixels);

    store.removeImageForKey(QStringLiteral("12345"));
    EXPECT_FALSE(QFile::exists(store.filePathForKey(QStringLiteral("12345"))));
    EXPECT_TRUE(store.imageForKey(QStringLiteral("12345")).isNull());
}

TEST(ImageStore, storesNoMorePixelsThanAreEverShown)
{
    const TemporaryContainer container;
    const ImageStore store(container.directories().container);
    store.storeImage(picture(Qt::green, {4000, 1000}), QStringLiteral("1"));
    EXPECT_EQ(QImageReader(store.filePathForKey(QStringLiteral("1"))).size(), QSize(640, 160));
}

TEST(ImageStore, hasNothingUnderKeysThatAreNoFileNames)
{
    const TemporaryContainer container;
    const QString outside = container.write(QStringLiteral("data/outside.tif"), "user's own");
    const ImageStore store(container.directories().container);
    for (const QString &hostile : {QString(), QStringLiteral("../outside"), QStringLiteral("/etc/passwd")}) {
        EXPECT_TRUE(store.filePathForKey(hostile).isEmpty());
        store.storeImage(picture(Qt::red), hostile);
        store.removeImageForKey(hostile);
        EXPECT_TRUE(store.imageForKey(hostile).isNull());
    }
    EXPECT_EQ(TemporaryContainer::read(outside), "user's own");
}

TEST(ImageStore, treatsADamagedFileAsNoPicture)
{
    const TemporaryContainer container;
    const ImageStore store(container.directories().container);
    container.write(QStringLiteral("data/ImageStore/9.tif"), "no picture at all");
    EXPECT_TRUE(store.imageForKey(QStringLiteral("9")).isNull());
}

} // namespace
} // namespace Orbita
