#include "platform/x11/X11OwnWindow.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Orbita {

namespace {

/// \a pixels within the 16 bits that a coordinate of the protocol has.
int clipped(double pixels)
{
    using Limits = std::numeric_limits<int16_t>;
    return int(std::clamp<double>(pixels, Limits::min(), Limits::max()));
}

} // namespace

xcb_connection_t *toolkitConnection()
{
    const auto *native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native != nullptr ? native->connection() : nullptr;
}

xcb_window_t xWindow(QWindow &window)
{
    return xcb_window_t(window.winId());
}

std::vector<xcb_rectangle_t> deviceRectangles(const QRegion &region, double devicePixelRatio)
{
    std::vector<xcb_rectangle_t> rectangles;
    rectangles.reserve(std::size_t(region.rectCount()));
    for (const QRect &rect : region) {
        const int left = clipped(std::floor(rect.x() * devicePixelRatio));
        const int top = clipped(std::floor(rect.y() * devicePixelRatio));
        const int right = clipped(std::ceil((rect.x() + rect.width()) * devicePixelRatio));
        const int bottom = clipped(std::ceil((rect.y() + rect.height()) * devicePixelRatio));
        rectangles.push_back({int16_t(left), int16_t(top), uint16_t(right - left), uint16_t(bottom - top)});
    }
    return rectangles;
}

} // namespace Orbita
