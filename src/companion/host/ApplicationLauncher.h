#pragma once

#include "base/Result.h"
#include "platform/Workspace.h"

namespace Orbita {

class StartupNotifier;

/// Starts applications in the ways that a Workspace does not know.
class ApplicationLauncher {
public:
    explicit ApplicationLauncher(StartupNotifier &notifier) : m_notifier(notifier) {}

    /// Has the application at \a path open \a url, whether it says that it knows such addresses or not.
    [[nodiscard]] Result<void, Workspace::Error> openUrl(const QUrl &url, const QString &path);

    /// Does the first of the actions "new-window", "new-document" and "new-empty-window" that the desktop file at \a
    /// path offers. Error::Unsupported when it offers none of them.
    [[nodiscard]] Result<void, Workspace::Error> openNewWindow(const QString &path);

    /// The bus name at which the application at \a path is asked to open something; empty for one that is started as a
    /// process of its own.
    [[nodiscard]] static QString busNameOf(const QString &path);

private:
    StartupNotifier &m_notifier;
};

} // namespace Orbita
