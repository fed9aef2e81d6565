#pragma once

#include "platform/Image.h"

#include <QString>

#include <vector>

namespace Orbita {

/// A small cache of item pictures by item identity, first in, first out.
///
/// Reading does not make an entry younger, and storing under a key that is taken adds a second entry behind the first:
/// remove the old picture before you replace it.
class ImageCache {
public:
    static constexpr std::size_t capacity = 35;

    /// Nothing happens for a null image or key; the oldest entries make room.
    void storeImage(const Image &image, const QString &key);
    /// The oldest picture stored under \a key; null when there is none.
    [[nodiscard]] Image imageForKey(const QString &key) const;
    /// Removes the oldest entry of \a key.
    void removeImageForKey(const QString &key);

private:
    struct Entry {
        QString key;
        Image image;
    };
    std::vector<Entry> m_entries; // oldest first
};

} // namespace Orbita
