#pragma once

#include <QString>

#include <optional>

namespace Orbita {

/// \a string as UTF-8 with every byte percent-escaped but letters, digits and "-._~".
[[nodiscard]] QString stringByAddingEscapeCharacters(const QString &string);

/// Turns each "+" of \a string into a blank, then percent escapes into the UTF-8 text that they stand for. Nothing for
/// an invalid escape and for what is no UTF-8.
[[nodiscard]] std::optional<QString> stringByRemovingEscapeCharacters(const QString &string);

} // namespace Orbita
