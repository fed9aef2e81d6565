#pragma once

#include "platform/Image.h"

#include <QString>

namespace Orbita {

struct ItemServices;

/// The desktop's icon of the file or application at \a path, kept in the picture cache under \a identity.
[[nodiscard]] Image cachedIcon(const QString &identity, const QString &path, ItemServices &services);

} // namespace Orbita
