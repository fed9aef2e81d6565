#pragma once

#include "base/Result.h"

#include <QString>
#include <QUrl>

namespace Orbita {

/// What a new link to \a urlString is called: the host, else the first ten characters and "...", or all of them when
/// there are no more than ten.
[[nodiscard]] QString linkName(const QString &urlString);

/// The address that the link \a urlString leads to, or the end of a sentence that says why it leads nowhere: it is
/// empty, longer than 64 Ki characters, malformed, without a scheme, or holds a program or a page of its own
/// ("javascript:", "data:").
[[nodiscard]] Result<QUrl, const char *> linkAddress(const QString &urlString);

} // namespace Orbita
