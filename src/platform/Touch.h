#pragma once

#include <QPointF>
#include <QVarLengthArray>

namespace Orbita {

/// One finger on a touchpad.
struct Touch {
    quint64 identity = 0;       ///< of this finger from its touching down to its lifting off, on all devices
    QPointF normalizedPosition; ///< 0 to 1 on either axis of the pad, y upwards

    friend bool operator==(const Touch &, const Touch &) = default;
};

/// The fingers that touch a pad at one moment. As many as two hands have fit without a heap allocation.
using Touches = QVarLengthArray<Touch, 10>;

/// The mean distance of \a touches, which are not empty, from their centroid.
[[nodiscard]] float spread(const Touches &touches);

} // namespace Orbita
