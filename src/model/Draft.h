#pragma once

#include "platform/Image.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace Orbita {

/// What a user has written in an editor and not saved.
struct Draft {
    QString text;
    std::optional<Image> picture; ///< where the user has given another one
    QDateTime changed;            ///< UTC
};

} // namespace Orbita
