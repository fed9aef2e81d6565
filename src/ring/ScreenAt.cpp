#include "ring/ScreenAt.h"

#include "platform/Stage.h"

#include <algorithm>

namespace Orbita {

QRectF screenAt(const Stage &stage, QPointF point)
{
    const std::vector<Stage::Screen> screens = stage.screens();
    const auto found
        = std::ranges::find_if(screens, [point](const Stage::Screen &screen) { return screen.frame.contains(point); });
    return found == screens.end() ? screens.front().frame : found->frame;
}

} // namespace Orbita
