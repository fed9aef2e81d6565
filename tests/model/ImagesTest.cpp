#include "model/ImageCache.h"
#include "model/ImageStore.h"
#include "support/TemporaryContainer.h"

#include <QFile>
#include <QImageReader>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

Image picture(QColor color, QSize size = {64, 64})
{
    QImage pixels(size, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(color);
    return Image::fromPixels(pixels);
}

TEST(ImageCache, forgetsTheOldestOfThirtySixThoughItWasRead)
{
    ImageCache cache;
    for (int i = 1; i <= 36; ++i) {
        cache.storeImage(picture(Qt::red), QString::number(i));
        EXPECT_EQ(cache.imageForKey(u"1"_s).isNull(), i == 36) << i;
    }
    for (int i = 2; i <= 36; ++i)
        EXPECT_FALSE(cache.imageForKey(QString::number(i)).isNull()) << i;
}

TEST(ImageCache, keepsBothPicturesOfOneKeyAndFindsTheOlder)
{
    ImageCache cache;
    const Image first = picture(Qt::red);
    const Image second = picture(Qt::blue);
    cache.storeImage(first, u"1"_s);
    cache.storeImage(second, u"1"_s);
    for (const Image &expected : {first, second, Image()}) {
        EXPECT_EQ(cache.imageForKey(u"1"_s), expected);
        cache.removeImageForKey(u"1"_s);
    }
}

class ImageStoreTest : public testing::Test {
protected:
    const TemporaryContainer container;
    const ImageStore store{container.directories().container};
};

TEST_F(ImageStoreTest, keepsAPictureWithItsTransparencyAsTiff)
{
    const QImage pixels = picture(QColor(200, 40, 10, 77), {320, 320}).render({320, 320});
    EXPECT_TRUE(store.storeImage(Image::fromPixels(pixels), u"12345"_s));
    const QString path = store.filePathForKey(u"12345"_s);
    EXPECT_TRUE(path.endsWith("/ImageStore/12345.tif"_L1));
    EXPECT_EQ(QImageReader(path).format(), "tiff");
    EXPECT_EQ(store.imageForKey(u"12345"_s).render({320, 320}), pixels);
    store.removeImageForKey(u"12345"_s);
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_TRUE(store.imageForKey(u"12345"_s).isNull());
}

TEST_F(ImageStoreTest, storesNoMorePixelsThanAreEverShown)
{
    EXPECT_TRUE(store.storeImage(picture(Qt::green, {4000, 1000}), u"1"_s));
    EXPECT_EQ(QImageReader(store.filePathForKey(u"1"_s)).size(), QSize(640, 160));
}

TEST_F(ImageStoreTest, noticesAFileThatWasReplaced)
{
    for (const QColor color : {Qt::red, Qt::blue}) {
        // Sizes of their own: both files may be of the same millisecond.
        const QImage pixels = picture(color, color == Qt::red ? QSize(16, 16) : QSize(99, 99)).render({99, 99});
        ASSERT_TRUE(pixels.save(container.write(u"data/ImageStore/1.tif"_s, {}), "tiff"));
        const Image image = store.imageForKey(u"1"_s);
        EXPECT_EQ(image.render({1, 1}).pixelColor(0, 0), color);
        EXPECT_EQ(image, store.imageForKey(u"1"_s)) << "or it would be drawn anew for each ring";
    }
}

TEST_F(ImageStoreTest, hasNothingUnderKeysThatAreNoFileNamesAndInDamagedFiles)
{
    const QString outside = container.write(u"data/outside.tif"_s, "user's own");
    for (const QString &hostile : {QString(), u"../outside"_s, u"/etc/passwd"_s}) {
        EXPECT_TRUE(store.filePathForKey(hostile).isEmpty());
        EXPECT_FALSE(store.storeImage(picture(Qt::red), hostile));
        store.removeImageForKey(hostile);
        EXPECT_TRUE(store.imageForKey(hostile).isNull());
    }
    EXPECT_EQ(TemporaryContainer::read(outside), "user's own");
    container.write(u"data/ImageStore/9.tif"_s, "no picture at all");
    EXPECT_TRUE(store.imageForKey(u"9"_s).isNull());

    const Image builtIn = Image::named(u"Script"_s);
    ASSERT_TRUE(store.storeImage(picture(Qt::red), u"8"_s));
    const QString behindItsHeader = store.filePathForKey(u"8"_s);
    QByteArray bytes = TemporaryContainer::read(behindItsHeader);
    bytes.replace(8, 200, QByteArray(200, '\xff'));
    container.write(u"data/ImageStore/8.tif"_s, bytes);
    EXPECT_EQ(store.imageForKey(u"8"_s, builtIn).render({32, 32}), builtIn.render({32, 32}));
}

} // namespace
} // namespace Orbita
