#include "platform/propertylist/XmlPropertyList.h"

#include "platform/XmlMarkup.h"

#include <QDateTime>
#include <QXmlStreamReader>

#include <optional>

namespace Orbita::PropertyList {

namespace {

const QString uidKey = QStringLiteral("CF$UID");

/// All that a property list needs; the reader takes quadratic time over more.
constexpr XmlMarkupLimits markupLimits{16, 0};

/// Reads one document. Functions that return a value leave the reader at the end of the value's element; after
/// fail() their value means nothing.
class XmlReader {
public:
    explicit XmlReader(const QString &text) : m_xml(text) { m_xml.setNamespaceProcessing(false); }

    Result<QVariant, ReadError> read()
    {
        QVariant root;
        if (!nextElement() || m_xml.name() != QLatin1String("plist") || !nextElement())
            fail(ReadError::Malformed);
        else
            root = value(1);
        if (!m_error && (nextElement() || m_xml.hasError()))
            fail(ReadError::Malformed);
        if (m_error)
            return Failure(*m_error);
        return root;
    }

private:
    void fail(ReadError error)
    {
        if (!m_error)
            m_error = error;
        m_xml.raiseError();
    }

    /// Advances to the start of the next element within the current one; false at its end.
    bool nextElement()
    {
        while (!m_xml.atEnd()) {
            switch (m_xml.readNext()) {
            case QXmlStreamReader::StartElement:
                if (++m_elements > maximumValues + 1) // the outermost is no value
                    fail(ReadError::TooLarge);
                return true;
            case QXmlStreamReader::EndElement:
                return false;
            case QXmlStreamReader::Characters:
                if (!m_xml.isWhitespace())
                    fail(ReadError::Malformed);
                break;
            case QXmlStreamReader::EntityReference:
                fail(ReadError::Malformed);
                break;
            default:
                break;
            }
        }
        if (m_xml.hasError())
            fail(ReadError::Malformed);
        return false;
    }

    QVariant value(int depth)
    {
        if (depth > maximumDepth) {
            fail(ReadError::TooDeep);
            return {};
        }
        const QStringView name = m_xml.name();
        if (name == QLatin1String("array"))
            return array(depth);
        if (name == QLatin1String("dict"))
            return dictionary(depth);
        // The name is a view into the reader, which the text replaces.
        const QString type = name.toString();
        return scalar(type, text());
    }

    QVariant array(int depth)
    {
        QVariantList list;
        while (nextElement())
            list.append(value(depth + 1));
        return list;
    }

    QVariant dictionary(int depth)
    {
        QVariantMap map;
        while (nextElement()) {
            if (m_xml.name() != QLatin1String("key")) {
                fail(ReadError::Malformed);
                break;
            }
            const QString key = text();
            if (!nextElement()) {
                fail(ReadError::Malformed);
                break;
            }
            map.insert(key, value(depth + 1));
        }
        if (map.size() == 1 && map.firstKey() == uidKey && map.first().typeId() == QMetaType::LongLong
            && map.first().toLongLong() >= 0)
            return QVariant::fromValue(Uid{map.first().toULongLong()});
        return map;
    }

    QString text()
    {
        QString text = m_xml.readElementText();
        if (m_xml.hasError())
            fail(ReadError::Malformed);
        return text;
    }

    QVariant scalar(const QString &type, const QString &text)
    {
        if (type == QLatin1String("string"))
            return text;
        if (type == QLatin1String("integer"))
            return integer(text.trimmed());
        if (type == QLatin1String("data"))
            return data(text);
        if (type == QLatin1String("true"))
            return true;
        if (type == QLatin1String("false"))
            return false;
        if (type == QLatin1String("real"))
            return real(text.trimmed());
        if (type == QLatin1String("date"))
            return date(text.trimmed());
        fail(ReadError::Malformed);
        return {};
    }

    QVariant integer(const QString &text)
    {
        bool fits = false;
        if (const qint64 number = text.toLongLong(&fits); fits)
            return number;
        const quint64 number = text.toULongLong(&fits);
        if (!fits)
            fail(ReadError::Malformed);
        return number;
    }

    QVariant real(QString text)
    {
        bool valid = false;
        const double number = text.replace(QLatin1String("infinity"), QLatin1String("inf")).toDouble(&valid);
        if (!valid && !qIsInf(number)) // out of range reads as infinity
            fail(ReadError::Malformed);
        return number;
    }

    QVariant date(const QString &text)
    {
        const QDateTime date = QDateTime::fromString(text, Qt::ISODate);
        if (!isRepresentable(date))
            fail(ReadError::Malformed);
        return date.toUTC();
    }

    QVariant data(const QString &text)
    {
        QByteArray base64 = text.toLatin1();
        base64.removeIf([](char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; });
        auto decoded = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
        if (!decoded)
            fail(ReadError::Malformed);
        return decoded.decoded;
    }

    QXmlStreamReader m_xml;
    std::optional<ReadError> m_error;
    int m_elements = 0;
};

} // namespace

Result<QVariant, ReadError> decodeXml(const QByteArray &bytes)
{
    if (!isWithinLimits(bytes, markupLimits))
        return Failure(ReadError::Malformed);
    return XmlReader(QString::fromUtf8(bytes)).read();
}

} // namespace Orbita::PropertyList
