#include "app/RunningEntries.h"

#include "model/RunningAppMenuItem.h"

#include <algorithm>

namespace Orbita {

namespace {

bool mayBecomeEntry(const RunningApplication &application, const RunningEntriesOptions &options)
{
    return options.showsRunningApplications && application.activationPolicy == ActivationPolicy::Regular
        && !options.blacklist.contains(application.bundlePath)
        && (application.bundlePath.isEmpty() || application.bundlePath != options.fileManager);
}

} // namespace

RunningEntriesPlan planRunningEntries(const std::vector<MenuItem::Pointer> &entries,
                                      const std::vector<RunningApplication> &running,
                                      const RunningEntriesOptions &options)
{
    RunningEntriesPlan plan;
    for (const auto &entry : entries) {
        const bool ended = std::ranges::none_of(running, [&entry](const RunningApplication &application) {
            return entry->representsRunningApplication(application);
        });
        if (ended && dynamic_cast<const RunningAppMenuItem *>(entry.get()))
            plan.entriesToRemove.push_back(entry.get());
    }
    for (const RunningApplication &application : running) {
        const bool isShown = std::ranges::any_of(entries, [&application](const MenuItem::Pointer &entry) {
            return entry->representsRunningApplication(application);
        });
        if (!isShown && mayBecomeEntry(application, options))
            plan.applicationsToAdd.push_back(application);
    }
    return plan;
}

} // namespace Orbita
