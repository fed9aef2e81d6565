#include "companion/host/ScriptApplications.h"

#include "companion/host/ApplicationLauncher.h"
#include "companion/host/ApplicationNames.h"

#include <QFileInfo>
#include <QUrl>

#include <algorithm>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;
using Error = Workspace::Error;

/// What was asked for, within a sentence.
QString quoted(const QString &name)
{
    constexpr qsizetype maximumLength = 200;
    const QString shown = name.size() > maximumLength ? name.left(maximumLength) + u'…' : name;
    return u"\"%1\""_s.arg(shown.simplified());
}

Failure<ScriptFailure> fail(int number, const QString &sentence)
{
    return Failure(ScriptFailure{number, sentence});
}

ScriptResult<void> checked(const Result<void, Error> &result, const QString &what)
{
    if (result)
        return {};
    switch (result.error()) {
    case Error::Missing:
        return fail(ScriptFailure::notFound, u"There is nothing at %1."_s.arg(quoted(what)));
    case Error::NoApplication:
        return fail(ScriptFailure::general, u"No application is installed that opens %1."_s.arg(quoted(what)));
    case Error::Untrusted:
        return fail(
            ScriptFailure::general,
            u"%1 would start an application that is neither installed nor marked executable."_s.arg(quoted(what)));
    case Error::LaunchFailed:
    case Error::Unsupported:
        break;
    }
    return fail(ScriptFailure::general, u"%1 cannot be opened."_s.arg(quoted(what)));
}

/// The core entry that \a name means whatever the case of its letters.
QString coreEntryName(const QString &name)
{
    for (const char *entry : {"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail"}) {
        if (name.compare(QLatin1String(entry), Qt::CaseInsensitive) == 0)
            return QString::fromLatin1(entry);
    }
    return name;
}

/// The file manager has a document opened by the application that the user prefers for it.
bool opensWithDefault(const QString &name)
{
    return name.isEmpty() || coreEntryName(name) == "Finder"_L1;
}

ScriptFailure noSuchApplication(const QString &name)
{
    return {ScriptFailure::noSuchApplication, u"There is no application called %1."_s.arg(quoted(name))};
}

} // namespace

std::optional<QString> ScriptApplications::pathOf(const QString &name)
{
    if (const auto core = m_services.workspace.coreApplication(coreEntryName(name)))
        return core;
    if (name.startsWith(u'/'))
        return isApplicationPath(name) && QFileInfo::exists(name) ? std::optional(name) : std::nullopt;
    const auto known = m_paths.constFind(name);
    if (known != m_paths.cend())
        return *known;
    const auto path = applicationNamed(name, m_services.readInstalled().entries());
    if (path)
        m_paths.insert(name, *path);
    return path;
}

std::optional<RunningApplication> ScriptApplications::runningAt(const QString &path) const
{
    const auto records = m_services.runningApplications.runningApplications();
    const auto found = std::ranges::find(records, path, &RunningApplication::bundlePath);
    return found != records.end() ? std::optional(*found) : std::nullopt;
}

ScriptResult<ScriptApplications::Named> ScriptApplications::find(const QString &name)
{
    m_services.catchUp();
    if (const auto path = pathOf(name))
        return Named{*path, runningAt(*path)};
    for (const RunningApplication &record : m_services.runningApplications.runningApplications()) {
        if (record.localizedName.compare(name, Qt::CaseInsensitive) == 0)
            return Named{record.bundlePath, record};
    }
    return Failure(noSuchApplication(name));
}

ScriptResult<void> ScriptApplications::start(const QString &name, const QString &path)
{
    if (!m_services.workspace.launchApplication(path))
        return fail(ScriptFailure::noSuchApplication, u"The application %1 cannot be started."_s.arg(quoted(name)));
    m_services.waitForDelivery(path);
    // What the script does next may be meant for its window. One without a window never appears.
    m_services.wait([&] { return runningAt(path).has_value(); });
    return {};
}

ScriptResult<void> ScriptApplications::activate(const QString &name)
{
    const auto application = find(name);
    if (!application)
        return Failure(application.error());
    if (application->running && m_services.runningApplications.activate(*application->running))
        return {};
    if (application->path.isEmpty())
        return fail(ScriptFailure::general, u"The application %1 cannot be brought to the front."_s.arg(quoted(name)));
    return start(name, application->path);
}

ScriptResult<void> ScriptApplications::launch(const QString &name)
{
    const auto application = find(name);
    if (!application)
        return Failure(application.error());
    if (application->running)
        return {};
    // Whether a new window comes up in front is the window manager's choice.
    const auto frontmost = m_services.runningApplications.frontmostApplication();
    auto started = start(name, application->path);
    if (started && frontmost)
        m_services.runningApplications.activate(*frontmost);
    return started;
}

ScriptResult<void> ScriptApplications::quit(const QString &name)
{
    const auto application = find(name);
    if (!application)
        return Failure(application.error());
    if (!application->running)
        return {};
    const qint64 process = application->running->processIdentifier;
    if (process == 0)
        return fail(ScriptFailure::general, u"It is not known which process %1 is."_s.arg(quoted(name)));
    const auto asked = m_services.quit(process);
    return asked ? ScriptResult<void>() : fail(ScriptFailure::general, asked.error());
}

ScriptResult<bool> ScriptApplications::isRunning(const QString &name)
{
    const auto application = find(name);
    if (!application)
        return Failure(application.error());
    return application->running.has_value();
}

ScriptResult<void> ScriptApplications::makeNewDocument(const QString &name)
{
    const auto application = find(name);
    if (!application)
        return Failure(application.error());
    if (application->path.isEmpty())
        return fail(ScriptFailure::notUnderstood, u"%1 makes no new documents."_s.arg(quoted(name)));
    auto opened = m_services.launcher.openNewWindow(application->path);
    // Most applications that know of no such action open a window each time they are started.
    if (!opened && opened.error() == Error::Unsupported)
        opened = m_services.workspace.launchApplication(application->path);
    if (!opened)
        return fail(ScriptFailure::notUnderstood, u"%1 makes no new documents."_s.arg(quoted(name)));
    m_services.waitForDelivery(application->path);
    return {};
}

ScriptResult<void> ScriptApplications::openOne(const QString &path, const QString &with)
{
    Workspace &workspace = m_services.workspace;
    auto opened = checked(with.isEmpty() ? workspace.openFile(path) : workspace.openFile(path, with), path);
    if (!opened)
        return opened;
    if (!with.isEmpty())
        m_services.waitForDelivery(with);
    else
        m_services.waitForDelivery(
            isApplicationPath(path) ? path : workspace.defaultApplicationForFile(path).value_or(QString()));
    return {};
}

ScriptResult<void> ScriptApplications::open(const QString &name, const QStringList &paths)
{
    QString with;
    if (!opensWithDefault(name)) {
        const auto application = find(name);
        if (!application || application->path.isEmpty())
            return Failure(application ? noSuchApplication(name) : application.error());
        with = application->path;
    }
    for (const QString &path : paths) {
        if (!QFileInfo::exists(path))
            return fail(ScriptFailure::notFound, u"There is nothing at %1."_s.arg(quoted(path)));
    }
    for (const QString &path : paths) {
        if (auto opened = openOne(path, with); !opened)
            return opened;
    }
    return {};
}

ScriptResult<void> ScriptApplications::openLocation(const QString &name, const QString &url)
{
    const QUrl address(url.trimmed());
    if (!address.isValid() || address.scheme().isEmpty())
        return fail(ScriptFailure::general, u"%1 is no address with a scheme such as https."_s.arg(quoted(url)));
    if (address.isLocalFile())
        return open(name, {address.toLocalFile()});
    if (opensWithDefault(name)) {
        auto opened = checked(m_services.workspace.openUrl(address), url);
        if (opened)
            m_services.waitForDelivery(
                m_services.workspace.defaultApplicationForScheme(address.scheme()).value_or(QString()));
        return opened;
    }
    const auto application = find(name);
    if (!application || application->path.isEmpty())
        return Failure(application ? noSuchApplication(name) : application.error());
    auto opened = checked(m_services.launcher.openUrl(address, application->path), url);
    if (opened)
        m_services.waitForDelivery(application->path);
    return opened;
}

ScriptResult<void> ScriptApplications::reveal(const QString &path)
{
    return checked(m_services.workspace.showInFileManager(path), path);
}

} // namespace Orbita
