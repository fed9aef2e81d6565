#include "ring/RenderedPictures.h"

#include <QThread>

#include <algorithm>
#include <array>
#include <numeric>

namespace Orbita {

namespace {

// Neighbours differ by half at most, so that painting one smaller never skips pixels.
constexpr std::array<int, 10> classes{24, 32, 48, 64, 96, 128, 192, 256, 384, 512};
constexpr int mostThreads = 4;
constexpr qsizetype bytesPerEntry = 64; // what a picture costs that could not be read

/// One processor stays free for painting where there is more than one.
int threadCount()
{
    return std::clamp(QThread::idealThreadCount() - 1, 1, mostThreads);
}

} // namespace

RenderedPictures::RenderedPictures(qsizetype capacity, QObject *parent)
    : QObject(parent), m_pictures(capacity), m_capacity(capacity), m_jobs(threadCount())
{
}

int RenderedPictures::sizeClass(int side)
{
    const auto *found = std::lower_bound(classes.begin(), classes.end(), side);
    return found == classes.end() ? classes.back() : *found;
}

QImage RenderedPictures::picture(const Image &image, int side)
{
    if (image.isNull())
        return {};
    const Key key{image.key(), sizeClass(side)};
    if (const Picture *ready = m_pictures.object(key))
        return ready->pixels;
    render(image, key);
    return nearest(key);
}

void RenderedPictures::prepare(const Image &image, int side)
{
    const Key key{image.key(), sizeClass(side)};
    if (!image.isNull() && !m_pictures.contains(key))
        render(image, key);
}

void RenderedPictures::setNeed(const QObject *user, qsizetype bytes)
{
    if (bytes > 0)
        m_needs.insert(user, bytes);
    else
        m_needs.remove(user);
    const qsizetype needed = std::accumulate(m_needs.cbegin(), m_needs.cend(), qsizetype(0));
    m_pictures.setMaxCost(std::max(m_capacity, needed));
}

qsizetype RenderedPictures::bytesFor(int least, int most)
{
    const auto *begin = std::find(classes.begin(), classes.end(), sizeClass(least));
    const auto *end = std::find(classes.begin(), classes.end(), sizeClass(most)) + 1;
    return std::accumulate(begin, end, qsizetype(0),
                           [](qsizetype sum, int side) { return sum + qsizetype(side) * side * 4 + bytesPerEntry; });
}

void RenderedPictures::render(const Image &image, Key key)
{
    if (m_pending.contains(key))
        return;
    m_pending.insert(key);
    m_jobs.start([this, image, key]() -> BackgroundJobs::Delivery {
        const QImage pixels = image.render({key.side, key.side});
        return [this, image, key, pixels] { keep(image, key, pixels); };
    });
}

void RenderedPictures::keep(const Image &image, Key key, const QImage &pixels)
{
    m_pending.remove(key);
    m_pictures.insert(key, new Picture{image, pixels}, pixels.sizeInBytes() + bytesPerEntry);
    Q_EMIT rendered(key.image);
}

QImage RenderedPictures::nearest(Key key)
{
    const auto *wanted = std::find(classes.begin(), classes.end(), key.side);
    const auto lookUp = [this, &key](int side) { return m_pictures.object(Key{key.image, side}); };
    for (const auto *side = wanted; side != classes.end(); ++side) {
        if (const Picture *found = lookUp(*side))
            return found->pixels;
    }
    for (const auto *side = wanted; side != classes.begin();) {
        if (const Picture *found = lookUp(*--side))
            return found->pixels;
    }
    return {};
}

} // namespace Orbita
