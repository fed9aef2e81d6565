#pragma once

#include "platform/desktop/ApplicationTable.h"
#include "platform/x11/X11Connection.h"

#include <vector>

namespace Orbita {

/// Watches \a windows and reads what is to know of them, without their icons, in one round trip for all. Those that
/// have vanished are left out.
[[nodiscard]] std::vector<ApplicationWindow> readWindows(X11Connection &connection,
                                                         const std::vector<xcb_window_t> &windows);

/// The icon that \a window carries itself; null when it has none or one that makes no sense.
[[nodiscard]] Image readWindowIcon(X11Connection &connection, xcb_window_t window);

/// Those of \a windows that their programs have closed: they are gone, or unmapped and in no state that a window
/// manager would give to one that is merely minimised or on another workspace.
[[nodiscard]] std::vector<xcb_window_t> withdrawnWindows(X11Connection &connection,
                                                         const std::vector<xcb_window_t> &windows);

/// Whether a change of \a property changes what readWindows() tells.
[[nodiscard]] bool isWindowFact(const X11Connection &connection, xcb_atom_t property);

} // namespace Orbita
