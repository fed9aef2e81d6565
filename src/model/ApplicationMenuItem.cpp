#include "model/ApplicationMenuItem.h"

#include "model/ItemServices.h"
#include "model/WorkspaceFailure.h"
#include "toolkit/RemoteActionSender.h"

#include <algorithm>

namespace Orbita {

bool ApplicationMenuItem::isRunning() const
{
    return runningApplication().has_value();
}

std::optional<RunningApplication> ApplicationMenuItem::runningApplication() const
{
    const auto running = m_services.runningApplications.runningApplications();
    const auto found = std::ranges::find_if(
        running, [this](const RunningApplication &record) { return representsRunningApplication(record); });
    return found != running.end() ? std::optional(*found) : std::nullopt;
}

void ApplicationMenuItem::quit()
{
    const auto application = runningApplication();
    // Without a known process there is nothing to name: 0 would mean the companion's own process group.
    if (!application || application->processIdentifier <= 0 || !m_services.toolkit.isRecipientReachable())
        return;
    VXRemoteAction action(QStringLiteral("terminate"));
    action.setValueForParameter(QString::number(application->processIdentifier), QStringLiteral("processId"));
    m_services.toolkit.sendAction(action);
}

bool ApplicationMenuItem::activateRunning()
{
    const auto application = runningApplication();
    return application && m_services.runningApplications.activate(*application);
}

void ApplicationMenuItem::activateOrLaunch(const QString &path)
{
    if (!activateRunning())
        launchApplication(path, m_services.workspace);
}

void ApplicationMenuItem::openFile(const QString &path, const QString &applicationPath)
{
    openFileWith(path, applicationPath, m_services.workspace);
}

bool bundleHoldsExecutable(const QString &bundlePath, const QString &executablePath)
{
    const auto bundle = QStringView(bundlePath).chopped(bundlePath.endsWith(u'/') ? 1 : 0);
    if (bundle.isEmpty() || !executablePath.startsWith(bundle))
        return false;
    const auto rest = QStringView(executablePath).mid(bundle.size());
    return (rest.isEmpty() || rest.startsWith(u'/')) && !rest.contains(QLatin1String(".app"));
}

} // namespace Orbita
