#pragma once

#include "platform/BackgroundJobs.h"
#include "platform/Image.h"

#include <QCache>
#include <QHash>
#include <QObject>
#include <QSet>

namespace Orbita {

/// Pictures rendered once for each size class, ready to be painted.
///
/// Rendering happens in the background, so that neither a ring nor the end of the program waits for a picture, which
/// may never be ready. Pictures not painted for longest go first when there are too many.
class RenderedPictures : public QObject {
    Q_OBJECT
public:
    static constexpr qsizetype defaultCapacity = 8 * 1024 * 1024; // bytes

    explicit RenderedPictures(qsizetype capacity = defaultCapacity, QObject *parent = nullptr);

    /// The side of the size class for a square of \a side device pixels: the least at or above it, or the largest.
    [[nodiscard]] static int sizeClass(int side);

    /// \a image rendered for a square of \a side device pixels. While that is not ready: the nearest other size at
    /// hand, else nothing, and rendered() follows. Nothing for good when the picture cannot be read.
    [[nodiscard]] QImage picture(const Image &image, int side);
    /// Renders ahead what picture() would have to wait for.
    void prepare(const Image &image, int side);

    /// Keeps room for \a bytes that \a user paints at a time, beyond the capacity if it must be; 0 when it is done.
    void setNeed(const QObject *user, qsizetype bytes);
    /// The room that one picture takes in all size classes for squares from \a least to \a most device pixels.
    [[nodiscard]] static qsizetype bytesFor(int least, int most);

    [[nodiscard]] qsizetype bytes() const { return m_pictures.totalCost(); }
    [[nodiscard]] bool isIdle() const { return m_pending.isEmpty(); }
    /// Renders all that was asked for before it returns.
    void waitUntilIdle() { m_jobs.waitUntilIdle(); }

Q_SIGNALS:
    /// A picture of the image with that key is ready.
    void rendered(quintptr key);

private:
    struct Key {
        quintptr image = 0;
        int side = 0;
        friend bool operator==(const Key &, const Key &) = default;
        friend size_t qHash(const Key &key, size_t seed = 0) { return qHashMulti(seed, key.image, key.side); }
    };
    struct Picture {
        Image image; ///< kept, or another image could come by its key
        QImage pixels;
    };
    void render(const Image &image, Key key);
    void keep(const Image &image, Key key, const QImage &pixels);
    [[nodiscard]] QImage nearest(Key key);

    QCache<Key, Picture> m_pictures;
    QSet<Key> m_pending;
    QHash<const QObject *, qsizetype> m_needs;
    qsizetype m_capacity;
    BackgroundJobs m_jobs;
};

} // namespace Orbita
