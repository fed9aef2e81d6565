#include "app/RingPlacement.h"

#include <algorithm>

namespace Orbita {

namespace {

constexpr double edgeMargin = 10.0; // points

/// Half open, so that a point on the border of two screens belongs to one of them.
bool holds(const QRectF &frame, QPointF point)
{
    return point.x() >= frame.x() && point.x() < frame.x() + frame.width() && point.y() >= frame.y()
        && point.y() < frame.y() + frame.height();
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
    const auto found = std::ranges::find_if(
        screens, [pointer](const Stage::Screen &screen) { return holds(screen.frame, pointer); });
    return found != screens.end() ? found->frame.center() : pointer;
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
