#include "platform/memory/MemoryStage.h"

#include <QWindow>

namespace Orbita {

void MemoryStage::place(QWindow &window, const QRectF &frame)
{
    lastFrame = frame;
    window.setGeometry(flipped(frame, plantedScreens.front().frame.height()).toAlignedRect());
}

} // namespace Orbita
