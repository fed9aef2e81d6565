#include "platform/propertylist/BinaryPropertyList.h"

#include <QDateTime>
#include <QHash>

#include <algorithm>
#include <bit>
#include <limits>
#include <vector>

namespace Orbita::PropertyList {

namespace {

void appendNumber(QByteArray &bytes, quint64 number, int width)
{
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        bytes.append(char(number >> shift));
}

/// The bytes that \a number takes: 1, 2, 4 or 8.
int widthOf(quint64 number)
{
    return number <= 0xff ? 1 : number <= 0xffff ? 2 : number <= 0xffffffff ? 4 : 8;
}

QByteArray marker(BinaryType type, int low)
{
    return QByteArray(1, char(type << 4 | low));
}

QByteArray integer(quint64 number, int width)
{
    QByteArray object = marker(Integer, std::countr_zero(unsigned(width)));
    appendNumber(object, number, width);
    return object;
}

QByteArray sized(BinaryType type, qsizetype size)
{
    if (size < longSize)
        return marker(type, int(size));
    return marker(type, longSize) + integer(quint64(size), widthOf(quint64(size)));
}

QByteArray signedInteger(qint64 number)
{
    return integer(quint64(number), number < 0 ? 8 : widthOf(quint64(number)));
}

QByteArray unsignedInteger(quint64 number)
{
    if (number <= quint64(std::numeric_limits<qint64>::max()))
        return signedInteger(qint64(number));
    QByteArray object = marker(Integer, 4); // in 8 bytes it would be a negative one
    appendNumber(object, 0, 8);
    appendNumber(object, number, 8);
    return object;
}

QByteArray real(BinaryType type, double number)
{
    QByteArray object = marker(type, 3);
    appendNumber(object, std::bit_cast<quint64>(number), 8);
    return object;
}

QByteArray text(const QString &text)
{
    if (std::all_of(text.cbegin(), text.cend(), [](QChar unit) { return unit.unicode() < 0x80; }))
        return sized(Ascii, text.size()) + text.toLatin1();
    QByteArray object = sized(Utf16, text.size());
    for (const QChar unit : text)
        appendNumber(object, unit.unicode(), sizeof(char16_t));
    return object;
}

QByteArray uid(quint64 number)
{
    const int width = widthOf(number);
    QByteArray object = marker(UniqueId, width - 1);
    appendNumber(object, number, width);
    return object;
}

struct Object {
    QByteArray head;                 ///< all of it but the references
    std::vector<quint32> references; ///< numbers of other objects
};

/// Collects the objects first, because the width of a reference depends on how many there are.
class BinaryWriter {
public:
    /// Returns the number of \a value's object. A text that was added before is shared.
    quint32 add(const QVariant &value)
    {
        if (value.typeId() == QMetaType::QString)
            return addText(value.toString());
        const auto index = quint32(m_objects.size());
        m_objects.emplace_back();
        Object object;
        if (value.typeId() == QMetaType::QVariantMap)
            object = dictionary(value.toMap());
        else if (value.typeId() == QMetaType::QVariantList || value.typeId() == QMetaType::QStringList)
            object = array(value.toList());
        else
            object.head = scalar(value);
        m_objects[index] = std::move(object);
        return index;
    }

    /// False when a value was of a type that no property list holds.
    [[nodiscard]] bool isRepresentable() const { return m_isRepresentable; }

    /// The document; the object added first is its root.
    [[nodiscard]] QByteArray document() const
    {
        QByteArray bytes(binaryMagic);
        const int referenceWidth = widthOf(m_objects.size());
        std::vector<qsizetype> offsets;
        for (const Object &object : m_objects) {
            offsets.push_back(bytes.size());
            bytes += object.head;
            for (const quint32 reference : object.references)
                appendNumber(bytes, reference, referenceWidth);
        }
        const qsizetype table = bytes.size();
        const int offsetWidth = widthOf(quint64(table));
        for (const qsizetype offset : offsets)
            appendNumber(bytes, quint64(offset), offsetWidth);
        bytes += QByteArray(6, '\0') + char(offsetWidth) + char(referenceWidth);
        appendNumber(bytes, m_objects.size(), 8);
        appendNumber(bytes, 0, 8);
        appendNumber(bytes, quint64(table), 8);
        return bytes;
    }

private:
    quint32 addText(const QString &string)
    {
        const auto known = m_texts.constFind(string);
        if (known != m_texts.cend())
            return *known;
        const auto index = quint32(m_objects.size());
        m_objects.push_back({text(string), {}});
        m_texts.insert(string, index);
        return index;
    }

    Object array(const QVariantList &list)
    {
        Object object{sized(Array, list.size()), {}};
        for (const QVariant &element : list)
            object.references.push_back(add(element));
        return object;
    }

    Object dictionary(const QVariantMap &map)
    {
        Object object{sized(Dictionary, map.size()), {}};
        for (auto entry = map.keyBegin(); entry != map.keyEnd(); ++entry)
            object.references.push_back(addText(*entry));
        for (const QVariant &value : map)
            object.references.push_back(add(value));
        return object;
    }

    QByteArray scalar(const QVariant &value)
    {
        switch (value.typeId()) {
        case QMetaType::Bool:
            return marker(Simple, value.toBool() ? trueMarker : falseMarker);
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
            return signedInteger(value.toLongLong());
        case QMetaType::ULongLong:
            return unsignedInteger(value.toULongLong());
        case QMetaType::Float:
        case QMetaType::Double:
            return real(Real, value.toDouble());
        case QMetaType::QByteArray:
            return sized(Data, value.toByteArray().size()) + value.toByteArray();
        case QMetaType::QDateTime:
            return real(Date, double(value.toDateTime().toMSecsSinceEpoch()) / 1000.0 - double(dateEpoch));
        default:
            if (value.metaType() == QMetaType::fromType<Uid>())
                return uid(value.value<Uid>().value);
            m_isRepresentable = false;
            return {};
        }
    }

    std::vector<Object> m_objects;
    QHash<QString, quint32> m_texts;
    bool m_isRepresentable = true;
};

} // namespace

Result<QByteArray, WriteError> encodeBinary(const QVariant &root)
{
    BinaryWriter writer;
    writer.add(root);
    if (!writer.isRepresentable())
        return Failure(WriteError::NotRepresentable);
    return writer.document();
}

} // namespace Orbita::PropertyList
