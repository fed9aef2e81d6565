#pragma once

#include "platform/Image.h"

#include <QString>

namespace Orbita {

struct ItemServices;

class BookmarkedFile;

/// The desktop's icon of \a file, kept in the picture cache under \a identity as long as the file is there.
[[nodiscard]] Image cachedIcon(const QString &identity, const BookmarkedFile &file, ItemServices &services);

} // namespace Orbita
