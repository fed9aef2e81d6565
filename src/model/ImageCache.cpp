#include "model/ImageCache.h"

#include <algorithm>

namespace Orbita {

void ImageCache::storeImage(const Image &image, const QString &key)
{
    if (image.isNull() || key.isNull())
        return;
    if (m_entries.size() >= capacity)
        m_entries.erase(m_entries.begin(), m_entries.end() - (capacity - 1));
    m_entries.push_back({key, image});
}

Image ImageCache::imageForKey(const QString &key) const
{
    const auto found = std::ranges::find(m_entries, key, &Entry::key);
    return found != m_entries.end() ? found->image : Image();
}

void ImageCache::removeImageForKey(const QString &key)
{
    const auto found = std::ranges::find(m_entries, key, &Entry::key);
    if (found != m_entries.end())
        m_entries.erase(found);
}

} // namespace Orbita
