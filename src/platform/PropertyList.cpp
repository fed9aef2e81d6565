#include "platform/PropertyList.h"

#include "platform/AtomicFile.h"
#include "platform/BoundedRead.h"
#include "platform/propertylist/BinaryPropertyList.h"
#include "platform/propertylist/XmlPropertyList.h"

#include <algorithm>

namespace Orbita::PropertyList {

namespace {

ReadError readError(FileError error)
{
    switch (error) {
    case FileError::Missing:
        return ReadError::Missing;
    case FileError::TooLarge:
        return ReadError::TooLarge;
    case FileError::Unreadable:
        break;
    }
    return ReadError::Unreadable;
}

/// Adds up what a reader would count.
class Size {
public:
    /// Whether \a value at \a depth, with what was counted before it, fits into the limits.
    bool hasRoomFor(const QVariant &value, int depth)
    {
        if (value.metaType() == QMetaType::fromType<Uid>()) // a dictionary of one in XML
            return count(3) && depth < maximumDepth;
        if (!count(1) || depth > maximumDepth)
            return false;
        const auto hasRoom = [this, depth](const QVariant &part) { return hasRoomFor(part, depth + 1); };
        switch (value.typeId()) {
        case QMetaType::QVariantMap: {
            const auto map = value.toMap();
            const bool hasRoomForKeys = std::all_of(map.keyBegin(), map.keyEnd(), hasRoom);
            return hasRoomForKeys && std::all_of(map.cbegin(), map.cend(), hasRoom);
        }
        case QMetaType::QVariantList:
        case QMetaType::QStringList: {
            const auto list = value.toList();
            return std::all_of(list.cbegin(), list.cend(), hasRoom);
        }
        case QMetaType::QString:
            return addContent(sizeOf(value.toString()));
        case QMetaType::QByteArray:
            return addContent(value.toByteArray().size());
        case QMetaType::QDateTime:
            return isRepresentable(value.toDateTime());
        default:
            return true;
        }
    }

private:
    bool count(int values) { return (m_values += values) <= maximumValues; }
    /// Bytes in the binary format; in XML they are no fewer.
    static qsizetype sizeOf(const QString &text)
    {
        const bool isAscii = std::all_of(text.cbegin(), text.cend(), [](QChar unit) { return unit.unicode() < 0x80; });
        return isAscii ? text.size() : text.size() * qsizetype(sizeof(char16_t));
    }
    /// A text that stands in many places is written once and read as often.
    bool addContent(qsizetype bytes) { return (m_content += bytes) <= maximumSize; }

    int m_values = 0;
    qint64 m_content = 0;
};

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
    if (!Size().hasRoomFor(root, 1))
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
    const auto bytes = readRegularFile(path, maximumSize);
    if (!bytes)
        return Failure(readError(bytes.error()));
    return decode(*bytes);
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
