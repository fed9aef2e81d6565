#pragma once

#include "toolkit/VXRemoteAction.h"

#include <functional>
#include <optional>

namespace Orbita {

/// What an observer does with an incoming action, and what it sends back, if anything.
using ActionSelector = std::function<std::optional<VXRemoteAction>(const VXRemoteAction &)>;

/// One registration of an observer for the actions of one name.
struct VXActionObserverEntry {
    const void *observer; ///< whose registration it is; not looked into
    ActionSelector selector;
    QString name;
};

} // namespace Orbita
