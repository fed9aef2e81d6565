#include "model/CachedIcon.h"

#include "model/ImageCache.h"
#include "model/ItemServices.h"
#include "platform/Workspace.h"

namespace Orbita {

Image cachedIcon(const QString &identity, const QString &path, ItemServices &services)
{
    Image image = services.imageCache.imageForKey(identity);
    if (image.isNull()) {
        image = services.workspace.icon(path);
        image.setSize(Image::itemSize);
        services.imageCache.storeImage(image, identity);
    }
    return image;
}

} // namespace Orbita
