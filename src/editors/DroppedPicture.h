#pragma once

#include "base/Result.h"
#include "platform/Image.h"

#include <QByteArray>
#include <QStringList>

#include <optional>
#include <variant>

class QMimeData;

namespace Orbita {

/// File name patterns of the pictures that are taken: "*.png", ...
[[nodiscard]] QStringList pictureNamePatterns();

/// A picture that the user gave and nobody has looked at yet: the path of its file, or what the file would hold.
using GivenPicture = std::variant<QString, QByteArray>;

/// Whether \a data holds a local file or picture data; what is in them is not looked at.
[[nodiscard]] bool mayHoldPicture(const QMimeData &data);
/// What \a data holds of that, fetched now: whoever offers it may be gone afterwards.
[[nodiscard]] std::optional<GivenPicture> givenPicture(const QMimeData &data);

/// The picture in \a given, which needs its file no more; or a sentence for the user that says why there is none. May
/// take seconds. Any thread.
[[nodiscard]] Result<Image, QString> readPicture(const GivenPicture &given);

} // namespace Orbita
