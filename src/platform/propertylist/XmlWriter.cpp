#include "platform/propertylist/XmlPropertyList.h"

#include <QDateTime>
#include <QXmlStreamWriter>

#include <cmath>

namespace Orbita::PropertyList {

namespace {

bool isXmlCharacter(QChar c)
{
    const char16_t unit = c.unicode();
    return unit >= 0x20 ? unit < 0xfffe : unit == '\t' || unit == '\n' || unit == '\r';
}

QString xmlText(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        if (unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
        else if (unit.isSurrogate() || !isXmlCharacter(unit))
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

QString realText(double number)
{
    if (std::isnan(number))
        return QStringLiteral("nan");
    if (std::isinf(number))
        return number > 0 ? QStringLiteral("+infinity") : QStringLiteral("-infinity");
    return QString::number(number, 'g', 17);
}

class XmlWriter {
public:
    explicit XmlWriter(QByteArray *output) : m_xml(output)
    {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(-1); // one tab a level
    }

    bool write(const QVariant &root)
    {
        m_xml.writeStartDocument();
        m_xml.writeStartElement(QStringLiteral("plist"));
        m_xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
        const bool representable = value(root);
        m_xml.writeEndDocument();
        return representable && !m_xml.hasError();
    }

private:
    /// False when \a value, or something in it, is of a type that no property list holds.
    bool value(const QVariant &value)
    {
        switch (value.typeId()) {
        case QMetaType::QVariantList:
        case QMetaType::QStringList:
            return array(value.toList());
        case QMetaType::QVariantMap:
            return dictionary(value.toMap());
        case QMetaType::QString:
            return text("string", value.toString());
        case QMetaType::QByteArray:
            return text("data", QString::fromLatin1(value.toByteArray().toBase64()));
        case QMetaType::Bool:
            m_xml.writeEmptyElement(value.toBool() ? QStringLiteral("true") : QStringLiteral("false"));
            return true;
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
            return text("integer", QString::number(value.toLongLong()));
        case QMetaType::ULongLong:
            return text("integer", QString::number(value.toULongLong()));
        case QMetaType::Float:
        case QMetaType::Double:
            return text("real", realText(value.toDouble()));
        case QMetaType::QDateTime:
            return text("date", value.toDateTime().toUTC().toString(Qt::ISODate));
        default:
            return uid(value);
        }
    }

    bool text(const char *element, const QString &text)
    {
        m_xml.writeStartElement(QLatin1String(element));
        // A reader takes a bare carriage return for a line feed.
        const QStringList lines = xmlText(text).split(u'\r');
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (i > 0)
                m_xml.writeEntityReference(QStringLiteral("#13"));
            m_xml.writeCharacters(lines.at(i));
        }
        m_xml.writeEndElement();
        return true;
    }

    bool array(const QVariantList &list)
    {
        m_xml.writeStartElement(QStringLiteral("array"));
        for (const QVariant &element : list)
            if (!value(element))
                return false;
        m_xml.writeEndElement();
        return true;
    }

    bool dictionary(const QVariantMap &map)
    {
        m_xml.writeStartElement(QStringLiteral("dict"));
        for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
            if (!text("key", entry.key()) || !value(entry.value()))
                return false;
        m_xml.writeEndElement();
        return true;
    }

    bool uid(const QVariant &value)
    {
        if (value.metaType() != QMetaType::fromType<Uid>())
            return false;
        m_xml.writeStartElement(QStringLiteral("dict"));
        text("key", QStringLiteral("CF$UID"));
        text("integer", QString::number(value.value<Uid>().value));
        m_xml.writeEndElement();
        return true;
    }

    QXmlStreamWriter m_xml;
};

} // namespace

Result<QByteArray, WriteError> encodeXml(const QVariant &root)
{
    QByteArray bytes;
    if (!XmlWriter(&bytes).write(root))
        return Failure(WriteError::NotRepresentable);
    return bytes;
}

} // namespace Orbita::PropertyList
