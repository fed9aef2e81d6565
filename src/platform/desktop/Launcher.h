#pragma once

#include "platform/Glib.h"

#include "base/Result.h"
#include "platform/Workspace.h"

#include <QStringList>

namespace Orbita {

class StartupNotifier;

/// Starts \a application, or asks it over D-Bus, to open \a uris (encoded; none to just start it).
///
/// A child leads a session of its own, has no files of ours but the standard three, starts with default signals, is
/// reaped and outlives us. It gets an activation token; it gets a startup-notification id, too, when its entry says
/// that it knows about those.
[[nodiscard]] Result<void, Workspace::Error> launch(GDesktopAppInfo *application, const QStringList &uris,
                                                    StartupNotifier &notifier);

} // namespace Orbita
