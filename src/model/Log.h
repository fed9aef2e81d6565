#pragma once

#include <QLoggingCategory>
#include <QString>

namespace Orbita {

Q_DECLARE_LOGGING_CATEGORY(lcModel)

/// \a text, which may come from anywhere, as part of one log line: without line breaks and control characters, and cut
/// where it is long.
[[nodiscard]] QString forLog(const QString &text);

} // namespace Orbita
