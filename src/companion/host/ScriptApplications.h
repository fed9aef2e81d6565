#pragma once

#include "companion/script/ScriptHost.h"
#include "platform/RunningApplications.h"
#include "platform/Workspace.h"
#include "platform/desktop/DesktopCatalog.h"

#include <QHash>

#include <functional>

namespace Orbita {

class ApplicationLauncher;

/// What scripts do with applications and what those open. The sentences of failures name what was asked for.
class ScriptApplications {
public:
    struct Services {
        Workspace &workspace;
        RunningApplications &runningApplications;
        ApplicationLauncher &launcher;
        std::function<DesktopCatalog()> readInstalled;
        /// Asks a process to quit; the failure is one sentence.
        std::function<Result<void, QString>(qint64 processIdentifier)> quit;
        /// Returns when \a runningApplications knows of all that has happened so far.
        std::function<void()> catchUp;
        /// Returns when the application at a path has what it was asked to open before; at once for an empty path.
        std::function<void(const QString &path)> waitForDelivery;
        /// Waits a few seconds for a condition; false when it still does not hold.
        std::function<bool(const std::function<bool()> &condition)> wait;
    };
    explicit ScriptApplications(Services services) : m_services(std::move(services)) {}

    ScriptResult<void> activate(const QString &name);
    ScriptResult<void> launch(const QString &name);
    ScriptResult<void> quit(const QString &name);
    ScriptResult<bool> isRunning(const QString &name);
    ScriptResult<void> makeNewDocument(const QString &name);
    ScriptResult<void> open(const QString &name, const QStringList &paths);
    ScriptResult<void> openLocation(const QString &name, const QString &url);
    ScriptResult<void> reveal(const QString &path);

private:
    /// An application that a script named.
    struct Named {
        QString path; ///< of what can be started; empty for one that only runs
        std::optional<RunningApplication> running;
    };
    ScriptResult<Named> find(const QString &name);
    [[nodiscard]] std::optional<QString> pathOf(const QString &name);
    [[nodiscard]] std::optional<RunningApplication> runningAt(const QString &path) const;
    ScriptResult<void> start(const QString &name, const QString &path);
    /// Opens \a path, with the application at \a with or, if that is empty, the preferred one.
    ScriptResult<void> openOne(const QString &path, const QString &with);

    Services m_services;
    QHash<QString, QString> m_paths; ///< of installed applications that were asked for, by name
};

} // namespace Orbita
