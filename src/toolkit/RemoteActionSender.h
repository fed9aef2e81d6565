#pragma once

#include "toolkit/VXRemoteAction.h"

namespace Orbita {

/// Sends actions to the companion program.
class RemoteActionSender {
public:
    virtual ~RemoteActionSender() = default;

    /// Whether the companion is installed. Ask before sendAction(); it need not run yet.
    [[nodiscard]] virtual bool isRecipientReachable() const = 0;
    virtual void sendAction(const VXRemoteAction &action) = 0;
};

} // namespace Orbita
