#include "ring/BackgroundDrag.h"

#include "platform/Stage.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace Orbita {

void BackgroundDrag::press(const QMouseEvent &event)
{
    m_originalMouseLocation = m_stage.fromDesktop(event.globalPosition());
    m_originalWindowLocation = m_stage.fromDesktop(QRectF(m_window.geometry())).topLeft();
}

void BackgroundDrag::move(const QMouseEvent &event)
{
    if (!(event.buttons() & Qt::LeftButton) || !m_window.windowHandle())
        return;
    const QPointF moved = m_stage.fromDesktop(event.globalPosition()) - m_originalMouseLocation;
    m_stage.place(*m_window.windowHandle(), QRectF(m_originalWindowLocation + moved, QSizeF(m_window.size())));
}

} // namespace Orbita
