#pragma once

#include "base/Result.h"
#include "platform/Image.h"

#include <QStringList>

class QMimeData;

namespace Orbita {

/// File name patterns of the pictures that are taken: "*.png", ...
[[nodiscard]] QStringList pictureNamePatterns();

/// The picture in the file at \a path, read now: the file may vanish afterwards. Otherwise a sentence for the user that
/// says why not.
[[nodiscard]] Result<Image, QString> readPicture(const QString &path);

/// Whether \a data holds a local file or picture data; what is in them is not looked at.
[[nodiscard]] bool mayHoldPicture(const QMimeData &data);
/// The picture in what \a data holds, with the limits of a file; or a sentence for the user.
[[nodiscard]] Result<Image, QString> readPicture(const QMimeData &data);

} // namespace Orbita
