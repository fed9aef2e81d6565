#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVariant>

#include <optional>

namespace Orbita::PropertyList {

/// A property list's unique identifier, as keyed archives use to refer to their objects.
struct Uid {
    quint64 value = 0;
    friend bool operator==(Uid, Uid) = default;
};

enum class Format { Xml, Binary };

enum class ReadError {
    Missing,    ///< There is no such file.
    Unreadable, ///< The file is there but cannot be read (permission, no regular file, input error).
    TooLarge,   ///< More than maximumSize bytes, or more than maximumValues values once expanded.
    TooDeep,    ///< Nested deeper than maximumDepth.
    Malformed,  ///< Not a property list.
};

enum class WriteError {
    NotRepresentable, ///< A value of a type that no property list can hold, or more than decode() would accept.
    Failed,           ///< The file could not be written; an older one is as it was.
};

/// Whether a property list can hold \a date: it is valid and in one of the years 1 to 9999.
[[nodiscard]] bool isRepresentable(const QDateTime &date);

inline constexpr qint64 maximumSize = 16LL * 1024 * 1024; ///< bytes
inline constexpr int maximumDepth = 512;
inline constexpr int maximumValues = 1'000'000; ///< at any depth, the root and keys included

/// Decodes \a bytes in either format.
///
/// Array is QVariantList, dictionary QVariantMap, string QString, data QByteArray, integer qint64 (quint64 above
/// its range), real double, boolean bool, date QDateTime (UTC), UID Uid. Untrusted input is fine.
[[nodiscard]] Result<QVariant, ReadError> decode(const QByteArray &bytes);
[[nodiscard]] Result<QByteArray, WriteError> encode(const QVariant &root, Format format);

/// \a value as it reads after a round trip through a property list: a QStringList as a QVariantList, an int as a
/// qint64. Nothing when no property list can hold it.
[[nodiscard]] std::optional<QVariant> normalized(const QVariant &value);

/// Reads the property list in the file at \a path.
[[nodiscard]] Result<QVariant, ReadError> read(const QString &path);

/// Writes \a root to \a path so that after a crash at any moment either the old or the new content is there.
[[nodiscard]] Result<void, WriteError> write(const QString &path, const QVariant &root, Format format);

} // namespace Orbita::PropertyList

Q_DECLARE_METATYPE(Orbita::PropertyList::Uid)
