#pragma once

#include <QByteArrayView>

namespace Orbita {

/// What a document may have of that which QXmlStreamReader takes quadratic time over.
struct XmlMarkupLimits {
    int attributes;   ///< of one tag
    int declarations; ///< of entities and of attributes, each of at most 1000 bytes
};

/// Whether the markup in \a xml keeps to \a limits, told without reading it as XML. It is in UTF-8 or another encoding
/// in which an ASCII character is one byte. Never true where a parameter entity is declared; comments and the like may
/// be counted as tags.
[[nodiscard]] bool isWithinLimits(QByteArrayView xml, XmlMarkupLimits limits);

} // namespace Orbita
