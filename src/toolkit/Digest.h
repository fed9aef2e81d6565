#pragma once

#include <QString>

namespace Orbita {

/// The MD5 digest of \a string as 32 lower-case hexadecimal digits.
///
/// Of its UTF-8 bytes only as many count as the string has UTF-16 units: for a text with characters outside ASCII the
/// last bytes are left out. Both sides of the exchange do so.
[[nodiscard]] QString md5(const QString &string);
/// The same of \a salt followed by \a string.
[[nodiscard]] QString md5WithSalt(const QString &string, const QString &salt);

/// Names a script to the side that has to know it, without giving it away.
[[nodiscard]] QString scriptQuestion(const QString &script);
/// Shows that the answering side holds the very script that was asked for.
[[nodiscard]] QString scriptAnswer(const QString &script);

} // namespace Orbita
