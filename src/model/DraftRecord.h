#pragma once

#include "model/Draft.h"

#include <QByteArray>
#include <QList>
#include <QVariant>

namespace Orbita {

/// A draft as it is stored: a dictionary with "entries" (array of data), "text" (string), "changed" (date) and, where
/// there is one, "picture" (data, a PNG file).
struct DraftRecord {
    /// Digests of the identities that the draft's entry may have in the item file; the one that it has by now is last.
    QList<QByteArray> entries;
    QString text;
    QByteArray picture; ///< empty: none
    QDateTime changed;  ///< UTC

    /// Nothing where \a stored is no such dictionary. The picture is not looked at.
    [[nodiscard]] static std::optional<DraftRecord> fromPropertyList(const QVariant &stored);
    [[nodiscard]] QVariantMap toPropertyList() const;
    /// What the record takes of the file, at most; bytes.
    [[nodiscard]] qsizetype size() const;
};

/// Stands for \a identity, which holds an entry's whole text.
[[nodiscard]] QByteArray identityDigest(const QString &identity);

/// \a image as a PNG file of at most ImageStore::maximumSide pixels; empty when it cannot be read.
[[nodiscard]] QByteArray pngRepresentation(const Image &image);
/// Nothing unless \a png is a picture that pngRepresentation() could have made.
[[nodiscard]] std::optional<Image> imageFromPng(const QByteArray &png);

} // namespace Orbita
