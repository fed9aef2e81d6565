#pragma once

#include <QByteArray>
#include <QIODevice>

namespace Orbita {

/// What \a device has left to read, at most \a limit bytes.
///
/// QIODevice::read() with a limit allocates that much, twice over, before it reads. A single such block of some
/// megabytes makes the allocator keep far more memory for good than it would otherwise.
[[nodiscard]] QByteArray readAtMost(QIODevice &device, qint64 limit);

} // namespace Orbita
