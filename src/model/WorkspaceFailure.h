#pragma once

#include "platform/Workspace.h"

#include <QString>

namespace Orbita {

/// Logs in one line why \a outcome is a failure, if it is one. \a what says what did not happen: "X could not be
/// opened".
void logFailure(const Result<void, Workspace::Error> &outcome, const QString &what);

/// Starts the application at \a path. A failure is logged.
void launchApplication(const QString &path, Workspace &workspace);

/// Opens the file at \a path with the application at \a applicationPath. A failure is logged.
void openFileWith(const QString &path, const QString &applicationPath, Workspace &workspace);

} // namespace Orbita
