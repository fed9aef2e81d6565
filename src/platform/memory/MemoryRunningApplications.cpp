#include "platform/memory/MemoryRunningApplications.h"

#include <QFileInfo>

#include <algorithm>

namespace Orbita {

std::optional<RunningApplication> MemoryRunningApplications::frontmostApplication() const
{
    const auto found = std::ranges::find(m_records, m_frontmost, &RunningApplication::serial);
    return found != m_records.end() ? std::optional(*found) : std::nullopt;
}

bool MemoryRunningApplications::activate(const RunningApplication &application)
{
    activated.push_back(application.serial);
    if (!canActivate || isTerminated(application))
        return false;
    bringToFront(application);
    return true;
}

bool MemoryRunningApplications::isTerminated(const RunningApplication &application) const
{
    return std::ranges::find(m_records, application) == m_records.end();
}

RunningApplication MemoryRunningApplications::start(const QString &path, const QString &name)
{
    RunningApplication record;
    record.bundlePath = path;
    record.executablePath = QStringLiteral("/usr/bin/") + QFileInfo(path).completeBaseName();
    record.bundleIdentifier = QFileInfo(path).completeBaseName();
    record.localizedName = name;
    record.activationPolicy = ActivationPolicy::Regular;
    return add(record);
}

RunningApplication MemoryRunningApplications::add(RunningApplication record)
{
    record.serial = m_nextSerial++;
    if (record.processIdentifier == 0)
        record.processIdentifier = qint64(1000 + record.serial);
    m_records.push_back(record);
    Q_EMIT runningApplicationsChanged();
    return record;
}

void MemoryRunningApplications::terminate(const RunningApplication &application)
{
    std::erase(m_records, application);
    Q_EMIT runningApplicationsChanged();
}

void MemoryRunningApplications::bringToFront(const RunningApplication &application)
{
    m_frontmost = application.serial;
    Q_EMIT frontmostApplicationChanged();
}

} // namespace Orbita
