#pragma once

#include "platform/PropertyList.h"

/// The XML format, on Qt's XML streams.
namespace Orbita::PropertyList {

/// Decodes \a bytes, in which bytes that are no UTF-8 read as U+FFFD. A document type that declares
/// entities or attributes is refused.
[[nodiscard]] Result<QVariant, ReadError> decodeXml(const QByteArray &bytes);

/// Characters that XML cannot carry (control characters, lone surrogates) are written as U+FFFD, dates in whole
/// seconds and a UID as a dictionary of one integer under "CF$UID", as is the custom. \a root is known to be within
/// the limits.
[[nodiscard]] Result<QByteArray, WriteError> encodeXml(const QVariant &root);

} // namespace Orbita::PropertyList
