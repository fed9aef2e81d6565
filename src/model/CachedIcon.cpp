#include "model/CachedIcon.h"

#include "model/BookmarkedFile.h"
#include "model/ImageCache.h"
#include "model/ItemServices.h"

namespace Orbita {

Image cachedIcon(const QString &identity, const BookmarkedFile &file, ItemServices &services)
{
    Image image = services.imageCache.imageForKey(identity);
    if (!image.isNull())
        return image;
    image = file.icon();
    image.setSize(Image::itemSize);
    if (file.isPresent())
        services.imageCache.storeImage(image, identity);
    return image;
}

} // namespace Orbita
