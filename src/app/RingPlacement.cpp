#include "app/RingPlacement.h"

#include <algorithm>

namespace Orbita {

namespace {

constexpr double edgeMargin = 10.0; // points

/// Half open, so that a point on the border of two screens belongs to one of them. The pointer is at the upper left
/// corner of its pixel: the leftmost column is at x(), the topmost row at y() + height().
bool holds(const QRectF &frame, QPointF point)
{
    return point.x() >= frame.x() && point.x() < frame.x() + frame.width() && point.y() > frame.y()
        && point.y() <= frame.y() + frame.height();
}

const Stage::Screen *screenAt(QPointF point, const std::vector<Stage::Screen> &screens)
{
    const auto found
        = std::ranges::find_if(screens, [point](const Stage::Screen &screen) { return holds(screen.frame, point); });
    return found != screens.end() ? &*found : nullptr;
}

} // namespace

double ringSize(MenuSize size)
{
    switch (size) {
    case MenuSize::Small:
        return 400.0;
    case MenuSize::Medium:
        return 500.0;
    case MenuSize::Large:
        return 600.0;
    case MenuSize::ExtraLarge:
        break;
    }
    return 800.0;
}

QPointF requestedCentre(QPointF pointer, MenuPosition position, const std::vector<Stage::Screen> &screens)
{
    if (position != MenuPosition::ScreenCenter)
        return pointer;
    const Stage::Screen *screen = screenAt(pointer, screens);
    return screen ? screen->frame.center() : pointer;
}

QPointF keptOnScreens(QPointF centre, const std::vector<Stage::Screen> &screens)
{
    return screenAt(centre, screens) ? centre : screens.front().frame.center();
}

QRectF ringFrame(QPointF centre, double size, SwiftMode swiftMode, const std::vector<Stage::Screen> &screens)
{
    const double half = size / 2.0;
    if (swiftMode == SwiftMode::Off && screens.size() == 1) {
        const QRectF &screen = screens.front().frame;
        if (screen.x() > centre.x() - half)
            centre.setX(screen.x() + half + edgeMargin);
        else if (centre.x() + half > screen.x() + screen.width())
            centre.setX(screen.x() + screen.width() - half - edgeMargin);
        if (screen.y() > centre.y() - half)
            centre.setY(screen.y() + half + edgeMargin);
    }
    return {centre.x() - half, centre.y() - half, size, size};
}

} // namespace Orbita
