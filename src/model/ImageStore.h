#pragma once

#include "platform/Image.h"

#include <QCache>
#include <QDateTime>
#include <QSet>
#include <QString>
#include <QVariantList>

namespace Orbita {

/// A folder of pictures that the user chose for items: one TIFF file "KEY.tif" per picture.
class ImageStore {
public:
    /// Keeps its pictures in "ImageStore" inside \a libraryFolder, which is made with the first picture.
    explicit ImageStore(const QString &libraryFolder);

    /// Where the picture of \a key lies. Empty for an empty key and for one that is no plain file name.
    [[nodiscard]] QString filePathForKey(const QString &key) const;
    /// Writes \a image atomically, at most maximumSide pixels large. False when that failed, which is logged: an older
    /// picture is as it was then.
    [[nodiscard]] bool storeImage(const Image &image, const QString &key) const;
    /// \a fallback when there is no picture, and drawn in its place where it turns out to be damaged. The same picture
    /// each time, as long as its file stays as it is.
    [[nodiscard]] Image imageForKey(const QString &key, const Image &fallback = {}) const;
    void removeImageForKey(const QString &key) const;
    /// Has the picture removed by removeDiscarded(): the entry that named it is still so stored.
    void discardImageForKey(const QString &key);
    /// Removes the discarded pictures, but for those that an entry of \a saved, the stored list, names after all.
    void removeDiscarded(const QVariantList &saved);

    /// Twice the side that items are drawn with in points, for screens with two pixels per point.
    static constexpr int maximumSide = 640;

private:
    /// A picture, and how its file was when it was made.
    struct Picture {
        QDateTime changed;
        qint64 size; ///< bytes
        Image fallback;
        Image image;
    };

    QString m_folder;
    QSet<QString> m_discarded;                         ///< keys
    mutable QCache<QString, Picture> m_pictures{1024}; // by key, so that what was rendered of them is found again
};

} // namespace Orbita
