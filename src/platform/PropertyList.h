#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

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
    TooLarge,   ///< More than maximumSize bytes.
    TooDeep,    ///< Nested deeper than maximumDepth.
    Malformed,  ///< Not a property list.
};

enum class WriteError {
    NotRepresentable, ///< A value of a type that no property list can hold.
    Failed,           ///< The file could not be written; an older one is as it was.
};

inline constexpr qint64 maximumSize = 64 * 1024 * 1024; ///< bytes
inline constexpr int maximumDepth = 512;

/// Decodes \a bytes in either format.
///
/// Array is QVariantList, dictionary QVariantMap, string QString, data QByteArray, integer qint64 (quint64 above
/// its range), real double, boolean bool, date QDateTime (UTC), UID Uid. Untrusted input is fine.
[[nodiscard]] Result<QVariant, ReadError> decode(const QByteArray &bytes);
[[nodiscard]] Result<QByteArray, WriteError> encode(const QVariant &root, Format format);

/// Reads the property list in the file at \a path.
[[nodiscard]] Result<QVariant, ReadError> read(const QString &path);

/// Writes \a root to \a path so that after a crash at any moment either the old or the new content is there.
[[nodiscard]] Result<void, WriteError> write(const QString &path, const QVariant &root, Format format);

} // namespace Orbita::PropertyList

Q_DECLARE_METATYPE(Orbita::PropertyList::Uid)
