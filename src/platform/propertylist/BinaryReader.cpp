#include "platform/propertylist/BinaryPropertyList.h"

#include <QDateTime>
#include <QtEndian>

#include <bit>
#include <cmath>
#include <optional>

namespace Orbita::PropertyList {

namespace {

/// An object without its content.
struct Header {
    int type = 0;
    quint64 size = 0;   ///< elements, pairs, units or bytes; the lower half of the marker for other types
    quint64 offset = 0; ///< where the content starts
};

/// Reads one document. After fail() values mean nothing.
///
/// Every value is counted when it is read, and read again for each of its parents, so the limits bound time and
/// memory whatever refers to whatever; a cycle is nothing but too deep.
class BinaryReader {
public:
    explicit BinaryReader(const QByteArray &bytes) : m_bytes(bytes) {}

    Result<QVariant, ReadError> read()
    {
        QVariant root;
        if (readTrailer())
            root = value(m_root, 1);
        if (m_error)
            return Failure(*m_error);
        return root;
    }

private:
    bool fail(ReadError error)
    {
        if (!m_error)
            m_error = error;
        return false;
    }

    QVariant malformed()
    {
        fail(ReadError::Malformed);
        return {};
    }

    /// The number in at most 8 bytes at \a offset, which must be in the file.
    [[nodiscard]] quint64 number(quint64 offset, quint64 width) const
    {
        quint64 number = 0;
        for (quint64 i = 0; i < width; ++i)
            number = number << 8 | quint8(m_bytes[qsizetype(offset + i)]);
        return number;
    }

    bool readTrailer()
    {
        constexpr quint64 magicSize = sizeof binaryMagic - 1;
        const quint64 size = quint64(m_bytes.size());
        if (size < magicSize + trailerSize)
            return fail(ReadError::Malformed);
        const quint64 trailer = size - trailerSize;
        m_offsetWidth = number(trailer + 6, 1);
        m_referenceWidth = number(trailer + 7, 1);
        m_objects = number(trailer + 8, 8);
        m_root = number(trailer + 16, 8);
        m_table = number(trailer + 24, 8);
        const auto isWidth = [](quint64 width) { return width >= 1 && width <= 8; };
        return (isWidth(m_offsetWidth) && isWidth(m_referenceWidth) && m_table <= trailer
                && m_objects <= (trailer - m_table) / m_offsetWidth)
            || fail(ReadError::Malformed);
    }

    std::optional<Header> header(quint64 index)
    {
        if (index >= m_objects)
            return {};
        quint64 offset = number(m_table + index * m_offsetWidth, m_offsetWidth);
        if (offset >= m_table)
            return {};
        const int marker = int(number(offset++, 1));
        Header header{marker >> 4, quint64(marker & 0xf), offset};
        if (header.size != longSize || header.type < Data || header.type == UniqueId)
            return header;
        if (offset >= m_table)
            return {};
        const quint64 sizeMarker = number(offset++, 1);
        const quint64 width = quint64(1) << (sizeMarker & 0xf);
        if (sizeMarker >> 4 != Integer || width > 8 || width > m_table - offset)
            return {};
        header.size = number(offset, width);
        header.offset = offset + width;
        return header;
    }

    QVariant value(quint64 index, int depth)
    {
        if (depth > maximumDepth)
            fail(ReadError::TooDeep);
        if (++m_values > maximumValues)
            fail(ReadError::TooLarge);
        if (m_error)
            return {};
        const std::optional<Header> object = header(index);
        if (!object)
            return malformed();
        switch (object->type) {
        case Array:
        case Set:
            return array(*object, depth);
        case Dictionary:
            return dictionary(*object, depth);
        default:
            return scalar(*object);
        }
    }

    /// Whether \a header's object has \a count parts of \a width bytes before the table starts.
    bool hasContent(const Header &header, quint64 count, quint64 width)
    {
        return count <= (m_table - header.offset) / width || fail(ReadError::Malformed);
    }

    [[nodiscard]] quint64 reference(const Header &header, quint64 index) const
    {
        return number(header.offset + index * m_referenceWidth, m_referenceWidth);
    }

    QVariant array(const Header &header, int depth)
    {
        QVariantList list;
        if (!hasContent(header, header.size, m_referenceWidth))
            return {};
        for (quint64 i = 0; i < header.size && !m_error; ++i)
            list.append(value(reference(header, i), depth + 1));
        return list;
    }

    QVariant dictionary(const Header &header, int depth)
    {
        QVariantMap map;
        if (!hasContent(header, header.size, 2 * m_referenceWidth))
            return {};
        for (quint64 i = 0; i < header.size && !m_error; ++i) {
            const QVariant key = value(reference(header, i), depth + 1);
            if (key.typeId() != QMetaType::QString)
                return malformed();
            map.insert(key.toString(), value(reference(header, header.size + i), depth + 1));
        }
        return map;
    }

    QVariant scalar(const Header &header)
    {
        const quint64 width = header.type == Integer || header.type == Real || header.type == Date
            ? quint64(1) << header.size
            : header.type == UniqueId ? header.size + 1
            : header.type == Utf16    ? sizeof(char16_t)
                                      : 1;
        const bool isCounted = header.type == Data || header.type == Ascii || header.type == Utf16;
        if (header.type != Simple && !hasContent(header, isCounted ? header.size : 1, width))
            return {};
        switch (header.type) {
        case Simple:
            return header.size == falseMarker || header.size == trueMarker ? QVariant(header.size == trueMarker)
                                                                           : malformed();
        case Integer:
            return integer(header.offset, width);
        case Real:
            return real(header.offset, width);
        case Date:
            return date(real(header.offset, width));
        case UniqueId:
            return width <= 8 ? QVariant::fromValue(Uid{number(header.offset, width)}) : malformed();
        case Data:
        case Ascii:
        case Utf16:
            return text(header, m_bytes.mid(qsizetype(header.offset), qsizetype(header.size * width)));
        default:
            return malformed();
        }
    }

    QVariant integer(quint64 offset, quint64 width)
    {
        if (width < 8)
            return qint64(number(offset, width));
        if (width > 16)
            return malformed();
        const quint64 low = number(offset + width - 8, 8);
        const quint64 high = width == 16 ? number(offset, 8) : quint64(qint64(low) >> 63);
        const bool isSigned = high == quint64(qint64(low) >> 63);
        if (isSigned)
            return qint64(low);
        return high == 0 ? QVariant(low) : malformed();
    }

    QVariant real(quint64 offset, quint64 width)
    {
        if (width == sizeof(float))
            return double(std::bit_cast<float>(quint32(number(offset, width))));
        return width == sizeof(double) ? QVariant(std::bit_cast<double>(number(offset, width))) : malformed();
    }

    QVariant date(const QVariant &seconds)
    {
        constexpr double limit = 1e12; // more than the years that a date may have, less than overflows
        if (!(std::abs(seconds.toDouble()) < limit))
            return malformed();
        const qint64 milliseconds = dateEpoch * 1000 + std::llround(seconds.toDouble() * 1000);
        const QDateTime date = QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
        return isRepresentable(date) ? date : malformed();
    }

    QVariant text(const Header &header, const QByteArray &content)
    {
        m_contentSize += content.size();
        if (m_contentSize > maximumSize) {
            fail(ReadError::TooLarge);
            return {};
        }
        if (header.type == Data)
            return content;
        if (header.type == Ascii)
            return QString::fromUtf8(content);
        QString text(content.size() / 2, Qt::Uninitialized);
        qFromBigEndian<char16_t>(content.constData(), text.size(), text.data());
        return text;
    }

    const QByteArray &m_bytes;
    quint64 m_offsetWidth = 0;
    quint64 m_referenceWidth = 0;
    quint64 m_objects = 0;
    quint64 m_root = 0;
    quint64 m_table = 0; ///< where the objects end and the table of offsets starts
    int m_values = 0;
    qint64 m_contentSize = 0;
    std::optional<ReadError> m_error;
};

} // namespace

Result<QVariant, ReadError> decodeBinary(const QByteArray &bytes)
{
    return BinaryReader(bytes).read();
}

} // namespace Orbita::PropertyList
