#pragma once

#include "companion/script/Value.h"

#include <optional>

namespace Orbita {

/// A date as the user's language writes it in full, and a time of day with its seconds.
[[nodiscard]] QString dateText(const QDate &date);
[[nodiscard]] QString timeText(const QTime &time);

/// 1 for "january" and "sunday" to 12 and 7; 0 for any other word.
[[nodiscard]] int calendarNumber(const QString &word);

/// The property \a name of \a date, as "year" or "time string"; nothing for what dates do not have.
[[nodiscard]] std::optional<Value> dateProperty(const QDateTime &date, const QString &name);

/// \a date moved by \a seconds. Throws a ScriptFailure past the years 1 to 9999.
[[nodiscard]] QDateTime movedBy(const QDateTime &date, double seconds);

} // namespace Orbita
