#include "ring/RenderedPictures.h"

#include "desktop/harness/Wait.h"

#include <QSemaphore>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>

namespace Orbita {
namespace {

/// Counts what is rendered; a gate holds the renderer back when asked.
class CountingSource final : public ImageSource {
public:
    explicit CountingSource(bool readable = true) : m_readable(readable) {}
    [[nodiscard]] QImage render(QSize devicePixels) const override
    {
        ++rendered;
        if (gate)
            gate->acquire();
        ++done;
        QImage pixels(m_readable ? devicePixels : QSize(), QImage::Format_ARGB32_Premultiplied);
        pixels.fill(Qt::red);
        return pixels;
    }
    mutable std::atomic<int> rendered{0};
    mutable std::atomic<int> done{0};
    QSemaphore *gate = nullptr;

private:
    bool m_readable;
};

Image newImage()
{
    return Image::fromSource(std::make_shared<CountingSource>());
}

TEST(RenderedPictures, choosesTheClassAtOrAboveTheSize)
{
    EXPECT_EQ(RenderedPictures::sizeClass(1), 24);
    EXPECT_EQ(RenderedPictures::sizeClass(24), 24);
    EXPECT_EQ(RenderedPictures::sizeClass(25), 32);
    EXPECT_EQ(RenderedPictures::sizeClass(512), 512);
    EXPECT_EQ(RenderedPictures::sizeClass(4000), 512);
}

TEST(RenderedPictures, rendersEachClassOnceInTheBackground)
{
    const auto source = std::make_shared<CountingSource>();
    const Image image = Image::fromSource(source);
    RenderedPictures pictures;
    std::vector<quintptr> ready;
    QObject::connect(&pictures, &RenderedPictures::rendered, &pictures, [&](quintptr key) { ready.push_back(key); });
    EXPECT_TRUE(pictures.picture(image, 50).isNull()) << "nothing waits for the renderer";
    EXPECT_TRUE(pictures.picture(image, 60).isNull());
    pictures.waitUntilIdle();
    EXPECT_EQ(ready, std::vector{image.key()});
    EXPECT_EQ(source->rendered, 1);
    EXPECT_EQ(pictures.picture(image, 50).width(), 64);

    EXPECT_EQ(pictures.picture(image, 100).width(), 64) << "the other size fills in meanwhile";
    pictures.waitUntilIdle();
    EXPECT_EQ(pictures.picture(image, 100).width(), 128);
    EXPECT_EQ(source->rendered, 2);
}

TEST(RenderedPictures, tryAnUnreadablePictureOnce)
{
    RenderedPictures pictures;
    const auto source = std::make_shared<CountingSource>(false);
    const Image image = Image::fromSource(source);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(pictures.picture(image, 64).isNull());
        pictures.waitUntilIdle();
    }
    EXPECT_EQ(source->rendered, 1);
    EXPECT_TRUE(pictures.picture(Image(), 64).isNull());
    EXPECT_TRUE(pictures.isIdle());
}

TEST(RenderedPictures, dropWhatWasNotPaintedForLongest)
{
    const auto room = 3 * RenderedPictures::bytesFor(64, 64);
    RenderedPictures pictures(room);
    std::vector<Image> images;
    for (int i = 0; i < 4; ++i) {
        images.push_back(newImage());
        (void)pictures.picture(images.back(), 64);
        pictures.waitUntilIdle();
        (void)pictures.picture(images.front(), 64);
    }
    EXPECT_LE(pictures.bytes(), room);
    EXPECT_FALSE(pictures.picture(images[0], 64).isNull());
    EXPECT_TRUE(pictures.picture(images[1], 64).isNull());
    pictures.waitUntilIdle();
}

TEST(RenderedPictures, keepRoomForWhatOneRingHasPrepared)
{
    const auto room = RenderedPictures::bytesFor(64, 64);
    RenderedPictures pictures(room);
    const QObject ring;
    pictures.setNeed(&ring, 5 * room);
    std::vector<Image> images;
    for (int i = 0; i < 5; ++i) {
        images.push_back(newImage());
        pictures.prepare(images.back(), 64);
    }
    pictures.waitUntilIdle();
    for (const Image &image : images)
        EXPECT_EQ(pictures.picture(image, 64).width(), 64);
    EXPECT_TRUE(pictures.isIdle());
    pictures.setNeed(&ring, 0);
    EXPECT_LE(pictures.bytes(), room);
}

TEST(RenderedPictures, keepTheirImagesAlive)
{
    RenderedPictures pictures;
    auto source = std::make_shared<CountingSource>();
    const std::weak_ptr<const ImageSource> watched = source;
    pictures.prepare(Image::fromSource(std::move(source)), 64);
    pictures.waitUntilIdle();
    EXPECT_FALSE(watched.expired()) << "its key could come again for another picture";
}

TEST(RenderedPictures, neverWaitForAPictureThatDoesNotCome)
{
    QSemaphore gate;
    const auto stuck = std::make_shared<CountingSource>();
    stuck->gate = &gate;
    {
        RenderedPictures pictures;
        for (int side = 24; side < 24 << QThread::idealThreadCount() && side < 600; side *= 2)
            pictures.prepare(Image::fromSource(stuck), side);
        const Image other = newImage();
        EXPECT_TRUE(eventually([&] { return !pictures.picture(other, 64).isNull(); }));
        EXPECT_FALSE(pictures.isIdle());
    }
    gate.release(stuck->rendered);
    EXPECT_TRUE(eventually([&] { return stuck->done == stuck->rendered; })) << "nobody is there any more";
}

} // namespace
} // namespace Orbita
