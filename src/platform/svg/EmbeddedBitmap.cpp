#include "platform/svg/EmbeddedBitmap.h"

#include <QBuffer>
#include <QImageReader>
#include <QRegularExpression>
#include <QSet>

namespace Orbita {

namespace {

constexpr int maximumSide = 8192; // pixels

/// The bytes within \a address; empty unless renderers cannot but read the same.
QByteArray embeddedBytes(QStringView address)
{
    static const QRegularExpression base64Address(QStringLiteral("^data:image/[\\w.+-]+;base64,"));
    const auto start = base64Address.match(address);
    if (!start.hasMatch())
        return {};
    QByteArray base64 = address.sliced(start.capturedLength()).toLatin1();
    base64.removeIf([](char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; });
    return QByteArray::fromBase64Encoding(std::move(base64), QByteArray::AbortOnBase64DecodingErrors).decoded;
}

} // namespace

std::optional<qint64> embeddedPixels(QStringView address, qint64 most)
{
    static const QSet<QByteArray> bitmapFormats{"png", "jpg", "jpeg", "gif", "webp"};
    QByteArray bytes = embeddedBytes(address.trimmed());
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer); // goes by what the bytes say, as the renderer does
    if (!bitmapFormats.contains(reader.format()))
        return std::nullopt;
    const QSize size = reader.size();
    const qint64 pixels = qint64(size.width()) * size.height();
    const bool isSmall = size.isValid() && size.width() <= maximumSide && size.height() <= maximumSide;
    if (!isSmall || pixels > most || reader.read().isNull())
        return std::nullopt;
    return pixels;
}

} // namespace Orbita
