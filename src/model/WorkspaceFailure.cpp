#include "model/WorkspaceFailure.h"

#include "model/Log.h"

namespace Orbita {

namespace {

const char *describe(Workspace::Error error)
{
    switch (error) {
    case Workspace::Error::Missing:
        return "it does not exist";
    case Workspace::Error::NoApplication:
        return "no application for it is installed";
    case Workspace::Error::Untrusted:
        return "it would start an application that is neither installed nor marked executable in a file of yours or "
               "the system's that others may not write";
    case Workspace::Error::LaunchFailed:
        return "the launch failed";
    case Workspace::Error::Unsupported:
        return "this desktop does not support it";
    }
    Q_UNREACHABLE();
}

} // namespace

void logFailure(const Result<void, Workspace::Error> &outcome, const QString &what)
{
    if (!outcome)
        qCWarning(lcModel, "%s: %s.", qUtf8Printable(what), describe(outcome.error()));
}

void launchApplication(const QString &path, Workspace &workspace)
{
    logFailure(workspace.launchApplication(path), QStringLiteral("%1 could not be started").arg(forLog(path)));
}

void openFileWith(const QString &path, const QString &applicationPath, Workspace &workspace)
{
    logFailure(workspace.openFile(path, applicationPath),
               QStringLiteral("%1 could not be opened with %2").arg(forLog(path), forLog(applicationPath)));
}

} // namespace Orbita
