#pragma once

#include <QRegion>

#include <xcb/xcb.h>

#include <vector>

class QWindow;

namespace Orbita {

/// The toolkit's connection. What concerns a window of this program is sent there, because only then is it certain
/// to arrive after the toolkit's own requests for that window. Null when the program does not run on X11.
[[nodiscard]] xcb_connection_t *toolkitConnection();

/// The X window of \a window, made when there is none yet.
[[nodiscard]] xcb_window_t xWindow(QWindow &window);

/// \a region (points) in device pixels: every pixel that it touches. Clipped to what the protocol can say.
[[nodiscard]] std::vector<xcb_rectangle_t> deviceRectangles(const QRegion &region, double devicePixelRatio);

} // namespace Orbita
