#include "platform/BoundedRead.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Orbita {

namespace {

/// Opens the regular file at \a path, judging what was opened: a path may lead to a pipe a moment after it was looked
/// at.
Result<void, FileError> open(QFile &file, const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return Failure(errno == ENOENT || errno == ENOTDIR ? FileError::Missing : FileError::Unreadable);
    struct stat status = {};
    const bool isRegular = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    if (isRegular && file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return {};
    ::close(descriptor);
    return Failure(FileError::Unreadable);
}

Result<void, FileError> openResource(QFile &file, const QString &path)
{
    file.setFileName(path);
    if (!file.open(QIODevice::ReadOnly))
        return Failure(FileError::Missing);
    return {};
}

} // namespace

QByteArray readAtMost(QIODevice &device, qint64 limit)
{
    QByteArray content;
    content.reserve(std::min(device.size(), limit)); // what says it is empty, as below /proc, may still hold something
    std::array<char, 16 * 1024> piece;
    while (content.size() < limit) {
        const qint64 wanted = std::min<qint64>(piece.size(), limit - content.size());
        const qint64 count = device.read(piece.data(), wanted);
        if (count <= 0)
            break;
        content.append(piece.data(), count);
    }
    return content;
}

Result<QByteArray, FileError> readRegularFile(const QString &path, qint64 limit)
{
    QFile file;
    if (const auto opened = path.startsWith(u':') ? openResource(file, path) : open(file, path); !opened)
        return Failure(opened.error());
    if (file.size() > limit)
        return Failure(FileError::TooLarge);
    const QByteArray content = readAtMost(file, limit + 1); // it may have grown since its size was asked
    if (file.error() != QFileDevice::NoError)
        return Failure(FileError::Unreadable);
    if (content.size() > limit)
        return Failure(FileError::TooLarge);
    return content;
}

} // namespace Orbita
