#pragma once

#include "platform/x11/X11Connection.h"

namespace Orbita {

/// Which process of this machine a window belongs to, as the X server knows it from the program's connection. What the
/// window says itself, in _NET_WM_PID, may be missing, or be the number that a sandbox knows the process by.
class WindowOwners {
public:
    /// \a connection outlives this object.
    explicit WindowOwners(X11Connection &connection);

    /// 0 where the server cannot tell: it is too old, the window is gone, or its program is on another machine.
    [[nodiscard]] qint64 processOf(xcb_window_t window);

private:
    X11Connection &m_connection;
    bool m_canTell = false;
};

} // namespace Orbita
