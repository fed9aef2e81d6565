#include "platform/PropertyList.h"

#include "platform/BoundedRead.h"
#include "platform/AtomicFile.h"
#include "platform/propertylist/BinaryPropertyList.h"
#include "platform/propertylist/XmlPropertyList.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Orbita::PropertyList {

namespace {

/// Opens the regular file at \a path without waiting, as a named pipe would make us, and checks its size.
Result<int, ReadError> openForReading(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return Failure(errno == ENOENT || errno == ENOTDIR ? ReadError::Missing : ReadError::Unreadable);
    struct stat status = {};
    const bool isFile = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    if (isFile && status.st_size <= maximumSize)
        return descriptor;
    ::close(descriptor);
    return Failure(isFile ? ReadError::TooLarge : ReadError::Unreadable);
}

/// Whether \a value at \a depth fits into the limits; \a values counts it and what it holds.
bool isWithinLimits(const QVariant &value, int depth, int &values)
{
    values += value.metaType() == QMetaType::fromType<Uid>() ? 3 : 1; // a UID is a dictionary of one in XML
    if (depth > maximumDepth || values > maximumValues)
        return false;
    if (value.typeId() == QMetaType::QDateTime && !isRepresentable(value.toDateTime()))
        return false;
    if (value.typeId() == QMetaType::QVariantMap) {
        const auto map = value.toMap();
        values += int(std::min<qsizetype>(map.size(), maximumValues));
        return std::all_of(map.cbegin(), map.cend(),
                           [&](const auto &v) { return isWithinLimits(v, depth + 1, values); });
    }
    const auto list = value.typeId() == QMetaType::QVariantList ? value.toList() : QVariantList();
    return std::all_of(list.cbegin(), list.cend(), [&](const auto &v) { return isWithinLimits(v, depth + 1, values); });
}

} // namespace

bool isRepresentable(const QDateTime &date)
{
    const int year = date.toUTC().date().year();
    return date.isValid() && year >= 1 && year <= 9999;
}

Result<QVariant, ReadError> decode(const QByteArray &bytes)
{
    if (bytes.size() > maximumSize)
        return Failure(ReadError::TooLarge);
    return bytes.startsWith(binaryMagic) ? decodeBinary(bytes) : decodeXml(bytes);
}

Result<QByteArray, WriteError> encode(const QVariant &root, Format format)
{
    int values = 0;
    if (!isWithinLimits(root, 1, values))
        return Failure(WriteError::NotRepresentable);
    auto bytes = format == Format::Binary ? encodeBinary(root) : encodeXml(root);
    if (bytes && bytes->size() > maximumSize)
        return Failure(WriteError::NotRepresentable);
    return bytes;
}

std::optional<QVariant> normalized(const QVariant &value)
{
    const auto bytes = encode(value, Format::Xml);
    if (!bytes)
        return {};
    auto decoded = decode(*bytes);
    if (!decoded)
        return {};
    return std::move(decoded).value();
}

Result<QVariant, ReadError> read(const QString &path)
{
    const auto descriptor = openForReading(path);
    if (!descriptor)
        return Failure(descriptor.error());
    QFile file;
    if (!file.open(*descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return Failure(ReadError::Unreadable);
    const QByteArray bytes = readAtMost(file, maximumSize + 1); // it may have grown since its size was asked
    if (file.error() != QFileDevice::NoError)
        return Failure(ReadError::Unreadable);
    return decode(bytes);
}

Result<void, WriteError> write(const QString &path, const QVariant &root, Format format)
{
    const auto bytes = encode(root, format);
    if (!bytes)
        return Failure(bytes.error());
    if (!writeFileAtomically(path, *bytes))
        return Failure(WriteError::Failed);
    return {};
}

} // namespace Orbita::PropertyList
