#pragma once

#include "platform/Glib.h"

#include <QString>

#include <vector>

namespace Orbita {

/// Takes over \a info as the desktop entry that it is; null, with \a info released, for anything else.
[[nodiscard]] GObjectPointer<GDesktopAppInfo> asDesktopEntry(GAppInfo *info);

/// The default application of a content type; null when there is none.
[[nodiscard]] GObjectPointer<GDesktopAppInfo> defaultApplicationForType(const QString &contentType);

/// The default application for URLs of \a scheme; null when there is none.
[[nodiscard]] GObjectPointer<GDesktopAppInfo> schemeHandler(const QString &scheme);

/// All applications that say that they open a content type, in the desktop's order.
[[nodiscard]] std::vector<GObjectPointer<GDesktopAppInfo>> applicationsForType(const QString &contentType);

} // namespace Orbita
