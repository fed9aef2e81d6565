#pragma once

#include "platform/PropertyList.h"

/// The binary format: the magic, the objects, a table of their offsets, and a trailer of 32 bytes that says where the
/// table is and which object is the root. Arrays and dictionaries refer to their elements by number, so one object may
/// have many parents. All numbers are big-endian.
///
/// The codec is ours because the kept library for it, libplist, ends the program on a key with a NUL in it, and
/// recurses and expands shared objects without bound. Tests hold it against that library.
namespace Orbita::PropertyList {

inline constexpr char binaryMagic[] = "bplist00";

/// The upper half of an object's marker. The lower half holds a size or, for Simple, the value.
enum BinaryType {
    Simple = 0x0,  ///< falseMarker, trueMarker
    Integer = 0x1, ///< 2^n bytes, signed from 8 on
    Real = 0x2,    ///< 2^n bytes
    Date = 0x3,    ///< a real of 8 bytes: seconds since the start of 2001, UTC
    Data = 0x4,
    Ascii = 0x5,
    Utf16 = 0x6,    ///< the size counts units
    UniqueId = 0x8, ///< n + 1 bytes
    Array = 0xa,
    Set = 0xc,
    Dictionary = 0xd, ///< all keys, then all values
};
inline constexpr int falseMarker = 0x08;
inline constexpr int trueMarker = 0x09;
inline constexpr int longSize = 0xf; ///< in place of a size: it follows as an Integer

inline constexpr int trailerSize = 32;
inline constexpr qint64 dateEpoch = 978'307'200; ///< the start of 2001 in seconds since 1970

[[nodiscard]] Result<QVariant, ReadError> decodeBinary(const QByteArray &bytes);

/// \a root is known to be within the limits.
[[nodiscard]] Result<QByteArray, WriteError> encodeBinary(const QVariant &root);

} // namespace Orbita::PropertyList
