#include "model/ApplicationMenuItem.h"

#include "model/ItemServices.h"
#include "model/Log.h"
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

void ApplicationMenuItem::activateOrLaunch(const QString &path)
{
    const auto application = runningApplication();
    if (application && m_services.runningApplications.activate(*application))
        return;
    if (const auto launched = m_services.workspace.launchApplication(path); !launched)
        qCWarning(lcModel, "%s could not be started: %s", qUtf8Printable(path),
                  qUtf8Printable(describe(launched.error())));
}

void ApplicationMenuItem::openFile(const QString &path, const QString &applicationPath)
{
    if (const auto opened = m_services.workspace.openFile(path, applicationPath); !opened)
        qCWarning(lcModel, "%s could not be opened with %s: %s", qUtf8Printable(path), qUtf8Printable(applicationPath),
                  qUtf8Printable(describe(opened.error())));
}

bool bundleHoldsExecutable(const QString &bundlePath, const QString &executablePath)
{
    if (bundlePath.isEmpty() || !executablePath.startsWith(bundlePath))
        return false;
    return !QStringView(executablePath).mid(bundlePath.size()).contains(QLatin1String(".app"));
}

QString describe(Workspace::Error error)
{
    switch (error) {
    case Workspace::Error::Missing:
        return QStringLiteral("it does not exist");
    case Workspace::Error::NoApplication:
        return QStringLiteral("no application for it is installed");
    case Workspace::Error::LaunchFailed:
        return QStringLiteral("the launch failed");
    case Workspace::Error::Unsupported:
        return QStringLiteral("this desktop does not support it");
    }
    Q_UNREACHABLE();
}

} // namespace Orbita
