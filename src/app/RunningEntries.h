#pragma once

#include "model/MenuItem.h"
#include "platform/RunningApplications.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace Orbita {

/// Which running-application entries a ring has to gain and lose.
struct RunningEntriesPlan {
    std::vector<const MenuItem *> entriesToRemove;
    std::vector<RunningApplication> applicationsToAdd; ///< in the order in which they are appended

    [[nodiscard]] bool isEmpty() const { return entriesToRemove.empty() && applicationsToAdd.empty(); }
};

struct RunningEntriesOptions {
    QStringList blacklist;              ///< bundle paths that never become entries
    std::optional<QString> fileManager; ///< the bundle path of the file manager, which never becomes one either
    bool showsRunningApplications = true;
};

/// Compares the entries of a ring with the applications that run.
///
/// An entry goes when its application has ended. An application is added when no entry stands for it, it is regular,
/// and the options allow it.
[[nodiscard]] RunningEntriesPlan planRunningEntries(const std::vector<MenuItem::Pointer> &entries,
                                                    const std::vector<RunningApplication> &running,
                                                    const RunningEntriesOptions &options);

} // namespace Orbita
