#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QIODevice>

namespace Orbita {

/// What \a device has left to read, at most \a limit bytes.
///
/// QIODevice::read() with a limit allocates that much, twice over, before it reads. A single such block of some
/// megabytes makes the allocator keep far more memory for good than it would otherwise.
[[nodiscard]] QByteArray readAtMost(QIODevice &device, qint64 limit);

enum class FileError {
    Missing,
    Unreadable, ///< no regular file, not permitted, or damaged on the disk
    TooLarge,
};

/// What the regular file, or the resource, at \a path holds, which is at most \a limit bytes. Never waits for another
/// program, as opening a named pipe would: only the disk may keep it waiting.
[[nodiscard]] Result<QByteArray, FileError> readRegularFile(const QString &path, qint64 limit);

} // namespace Orbita
