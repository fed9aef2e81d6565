#include "platform/desktop/ApplicationTable.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace Orbita {

ApplicationTable::ApplicationTable(qint64 ownProcess, IconForBundle iconForBundle)
    : m_ownProcess(ownProcess), m_iconForBundle(std::move(iconForBundle))
{
}

void ApplicationTable::setWindow(const ApplicationWindow &window, const DesktopCatalog &catalog)
{
    m_windows[window.window] = window;
    place(window, catalog);
    forgetEnded();
}

void ApplicationTable::removeWindow(quint32 window)
{
    const auto group = groupOf(window);
    if (group == m_groups.end())
        return;
    group->windows.erase(window);
    m_windows.erase(window);
    std::erase_if(group->processes, [&](const auto &process) {
        return !m_held.contains(process.first) && !hasWindowOf(*group, process.first);
    });
    refresh(*group);
    forgetEnded();
}

void ApplicationTable::holdProcesses(std::set<qint64> processes)
{
    m_held = std::move(processes);
}

void ApplicationTable::removeProcess(qint64 process)
{
    m_held.erase(process);
    for (auto &[id, window] : m_windows) {
        if (window.process.processIdentifier == process)
            window.process = {};
    }
    for (Group &group : m_groups) {
        if (group.processes.erase(process) > 0)
            refresh(group);
    }
    forgetEnded();
}

void ApplicationTable::regroup(const DesktopCatalog &catalog)
{
    const auto newKey = [&](quint32 id) {
        const ApplicationWindow &window = m_windows.at(id);
        return keyOf(window, catalog.entryFor(window.identity));
    };
    for (Group &group : m_groups) {
        if (group.windows.empty())
            continue;
        const QString key = newKey(*group.windows.begin());
        const bool stayTogether = std::ranges::all_of(group.windows, [&](quint32 id) { return newKey(id) == key; });
        if (stayTogether && groupWithKey(key) == m_groups.end())
            group.key = key;
    }
    for (const auto &[id, window] : m_windows)
        place(window, catalog);
    forgetEnded();
}

void ApplicationTable::clear()
{
    m_windows.clear();
    m_groups.clear();
    m_held.clear();
}

std::vector<RunningApplication> ApplicationTable::applications() const
{
    std::vector<RunningApplication> records;
    std::ranges::transform(m_groups, std::back_inserter(records), &Group::record);
    return records;
}

const RunningApplication *ApplicationTable::find(quint64 serial) const
{
    const auto group = std::ranges::find(m_groups, serial, [](const Group &g) { return g.record.serial; });
    return group != m_groups.end() ? &group->record : nullptr;
}

const RunningApplication *ApplicationTable::ownerOf(quint32 window) const
{
    const auto group = groupOf(window);
    const bool isForeign = group != m_groups.end() && m_windows.at(window).process.processIdentifier != m_ownProcess;
    return isForeign ? &group->record : nullptr;
}

std::vector<quint32> ApplicationTable::windowsToActivate(quint64 serial) const
{
    const auto group = std::ranges::find(m_groups, serial, [](const Group &g) { return g.record.serial; });
    if (group == m_groups.end())
        return {};
    std::vector<quint32> found;
    std::ranges::copy_if(group->windows, std::back_inserter(found), [this](quint32 id) {
        const ApplicationWindow &window = m_windows.at(id);
        return window.isListed || window.isTransient;
    });
    return found.empty() ? std::vector<quint32>(group->windows.begin(), group->windows.end()) : found;
}

std::set<qint64> ApplicationTable::processes() const
{
    std::set<qint64> found;
    for (const Group &group : m_groups) {
        for (const auto &[process, facts] : group.processes)
            found.insert(process);
    }
    return found;
}

bool ApplicationTable::wantsIcon(quint32 window) const
{
    const auto group = groupOf(window);
    return group != m_groups.end() && !group->entry && m_windows.at(window).icon.isNull();
}

QString ApplicationTable::keyOf(const ApplicationWindow &window, const DesktopEntry *entry) const
{
    if (entry != nullptr)
        return QStringLiteral("file:") + entry->path;
    if (!window.identity.windowClass.isEmpty())
        return QStringLiteral("class:") + window.identity.windowClass.toLower();
    const qint64 process = window.process.processIdentifier;
    if (process == 0)
        return QStringLiteral("window:%1").arg(window.window);
    const auto sibling
        = std::ranges::find_if(m_groups, [&](const Group &group) { return group.processes.contains(process); });
    return sibling != m_groups.end() ? sibling->key : QStringLiteral("process:%1").arg(process);
}

ApplicationTable::Groups::iterator ApplicationTable::groupWithKey(const QString &key)
{
    return std::ranges::find(m_groups, key, &Group::key);
}

ApplicationTable::Groups::iterator ApplicationTable::groupOf(quint32 window)
{
    return std::ranges::find_if(m_groups, [&](const Group &group) { return group.windows.contains(window); });
}

ApplicationTable::Groups::const_iterator ApplicationTable::groupOf(quint32 window) const
{
    return std::ranges::find_if(m_groups, [&](const Group &group) { return group.windows.contains(window); });
}

bool ApplicationTable::hasWindowOf(const Group &group, qint64 process) const
{
    return std::ranges::any_of(group.windows,
                               [&](quint32 id) { return m_windows.at(id).process.processIdentifier == process; });
}

void ApplicationTable::place(const ApplicationWindow &window, const DesktopCatalog &catalog)
{
    const DesktopEntry *entry = catalog.entryFor(window.identity);
    const QString key = keyOf(window, entry);
    const auto current = groupOf(window.window);
    auto target = groupWithKey(key);
    if (current != m_groups.end() && current != target) {
        if (target == m_groups.end() && current->windows.size() == 1) {
            current->key = key; // the same run under a better name
            target = current;
        } else {
            moveAway(*current, window);
        }
    }
    if (target == m_groups.end()) {
        target = m_groups.insert(m_groups.end(), Group());
        target->key = key;
        target->record.serial = m_nextSerial++;
    }
    setEntry(*target, entry);
    target->windows.insert(window.window);
    if (window.process.processIdentifier != 0)
        target->processes[window.process.processIdentifier] = window.process;
    refresh(*target);
}

void ApplicationTable::setEntry(Group &group, const DesktopEntry *entry)
{
    const auto found = entry != nullptr ? std::optional(*entry) : std::nullopt;
    if (std::exchange(group.entry, found) != found)
        group.record.icon = found && m_iconForBundle ? m_iconForBundle(found->path) : Image();
}

void ApplicationTable::moveAway(Group &group, const ApplicationWindow &window)
{
    group.windows.erase(window.window);
    const qint64 process = window.process.processIdentifier;
    if (!hasWindowOf(group, process))
        group.processes.erase(process);
    refresh(group);
}

void ApplicationTable::forgetEnded()
{
    std::erase_if(m_groups, [this](const Group &group) {
        const bool lives = std::ranges::any_of(group.processes,
                                               [this](const auto &process) { return m_held.contains(process.first); });
        return group.windows.empty() && !lives;
    });
}

void ApplicationTable::refresh(Group &group)
{
    RunningApplication &record = group.record;
    const auto oldest = std::ranges::min_element(
        group.processes, {}, [](const auto &process) { return std::pair(process.second.startTime, process.first); });
    const ProcessFacts process = oldest != group.processes.end() ? oldest->second : ProcessFacts();
    record.processIdentifier = process.processIdentifier;
    record.executablePath = process.executablePath;

    const bool isRegular = std::ranges::any_of(group.windows, [this](quint32 id) {
        const ApplicationWindow &window = m_windows.at(id);
        return window.isListed && window.process.processIdentifier != m_ownProcess;
    });
    record.activationPolicy = isRegular ? ActivationPolicy::Regular : ActivationPolicy::Accessory;
    if (group.windows.empty())
        return; // it keeps the name and the icon that it had with its last window

    record.bundlePath = group.entry ? group.entry->path : QString();
    const auto withIcon
        = std::ranges::find_if(group.windows, [this](quint32 id) { return !m_windows.at(id).icon.isNull(); });
    if (record.icon.isNull() && withIcon != group.windows.end())
        record.icon = m_windows.at(*withIcon).icon;
    record.bundleIdentifier = group.entry ? group.entry->id : m_windows.at(*group.windows.begin()).identity.windowClass;
    record.localizedName = nameOf(group);
}

QString ApplicationTable::nameOf(const Group &group) const
{
    const ApplicationWindow &window = m_windows.at(*group.windows.begin());
    const QString candidates[]{
        group.entry ? group.entry->name : QString(),
        group.entry ? group.entry->id : QString(),
        window.identity.windowClass,
        window.title,
        QFileInfo(group.record.executablePath).fileName(),
    };
    const auto found = std::ranges::find_if(candidates, [](const QString &name) { return !name.isEmpty(); });
    return found != std::end(candidates) ? *found : QStringLiteral("0x%1").arg(window.window, 0, 16);
}

} // namespace Orbita
