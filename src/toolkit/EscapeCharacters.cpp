#include "toolkit/EscapeCharacters.h"

#include <QByteArray>
#include <QStringDecoder>
#include <QUrl>

#include <cctype>

namespace Orbita {

namespace {

/// The bytes that \a escaped stands for; nothing where a percent sign has no two hexadecimal digits behind it.
std::optional<QByteArray> decodeEscapes(const QByteArray &escaped)
{
    const auto isDigit = [&escaped](qsizetype index) {
        return index < escaped.size() && std::isxdigit(static_cast<unsigned char>(escaped[index])) != 0;
    };
    for (qsizetype at = escaped.indexOf('%'); at >= 0; at = escaped.indexOf('%', at + 1)) {
        if (!isDigit(at + 1) || !isDigit(at + 2))
            return std::nullopt;
    }
    return QByteArray::fromPercentEncoding(escaped);
}

} // namespace

QString stringByAddingEscapeCharacters(const QString &string)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(string));
}

std::optional<QString> stringByRemovingEscapeCharacters(const QString &string)
{
    const auto bytes = decodeEscapes(QString(string).replace(u'+', u' ').toUtf8());
    if (!bytes)
        return std::nullopt;
    using Flag = QStringDecoder::Flag;
    // Stateless: otherwise a text that ends in the middle of a character would be waiting for the rest of it.
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    QString text = decoder(*bytes);
    return decoder.hasError() ? std::nullopt : std::optional(std::move(text));
}

} // namespace Orbita
