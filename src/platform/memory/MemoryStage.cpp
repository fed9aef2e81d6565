#include "platform/memory/MemoryStage.h"

#include <QWindow>

namespace Orbita {

void MemoryStage::place(QWindow &window, const QRectF &frame)
{
    lastFrame = frame;
    window.setGeometry(toDesktop(frame).toAlignedRect());
}

} // namespace Orbita
