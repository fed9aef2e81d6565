#include "model/DraftRecord.h"

#include "model/ImageStore.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImageReader>

#include <algorithm>

namespace Orbita {

namespace {

constexpr auto digestKind = QCryptographicHash::Sha256;

bool isDigest(const QVariant &value)
{
    return value.typeId() == QMetaType::QByteArray
        && value.toByteArray().size() == QCryptographicHash::hashLength(digestKind);
}

} // namespace

std::optional<DraftRecord> DraftRecord::fromPropertyList(const QVariant &stored)
{
    const QVariantMap dictionary = stored.toMap();
    const QVariantList entries = dictionary.value(QStringLiteral("entries")).toList();
    const QVariant text = dictionary.value(QStringLiteral("text"));
    const QVariant picture = dictionary.value(QStringLiteral("picture"), QByteArray());
    const QVariant changed = dictionary.value(QStringLiteral("changed"));
    if (entries.isEmpty() || !std::ranges::all_of(entries, isDigest) || text.typeId() != QMetaType::QString
        || picture.typeId() != QMetaType::QByteArray || changed.typeId() != QMetaType::QDateTime)
        return std::nullopt;
    DraftRecord record{{}, text.toString(), picture.toByteArray(), changed.toDateTime()};
    for (const QVariant &entry : entries)
        record.entries.append(entry.toByteArray());
    return record;
}

QVariantMap DraftRecord::toPropertyList() const
{
    QVariantList digests;
    for (const QByteArray &entry : entries)
        digests.append(entry);
    QVariantMap dictionary{
        {QStringLiteral("entries"), digests}, {QStringLiteral("text"), text}, {QStringLiteral("changed"), changed}};
    if (!picture.isEmpty())
        dictionary.insert(QStringLiteral("picture"), picture);
    return dictionary;
}

qsizetype DraftRecord::size() const
{
    constexpr qsizetype frame = 128; // the dictionary, its keys and the date
    constexpr qsizetype perEntry = 64;
    return frame + perEntry * entries.size() + qsizetype(sizeof(QChar)) * text.size() + picture.size();
}

QByteArray identityDigest(const QString &identity)
{
    return QCryptographicHash::hash(identity.toUtf8(), digestKind);
}

QByteArray pngRepresentation(const Image &image)
{
    QByteArray png;
    QBuffer buffer(&png);
    const QImage pixels = image.render({ImageStore::maximumSide, ImageStore::maximumSide});
    return pixels.save(&buffer, "png") ? png : QByteArray();
}

std::optional<Image> imageFromPng(const QByteArray &png)
{
    QBuffer buffer;
    buffer.setData(png);
    QImageReader reader(&buffer, "png");
    const QSize size = reader.size();
    if (size.width() > ImageStore::maximumSide || size.height() > ImageStore::maximumSide)
        return std::nullopt;
    const QImage pixels = reader.read();
    return pixels.isNull() ? std::nullopt : std::optional(Image::fromPixels(pixels));
}

} // namespace Orbita
