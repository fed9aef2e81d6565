#pragma once

#include <QPointF>

class QMouseEvent;
class QWidget;

namespace Orbita {

class Stage;

/// Moves a frameless window with the pointer while its background is held. The window hands it its mouse events.
class BackgroundDrag {
public:
    /// \a window, which stands on \a stage, and \a stage outlive the drag.
    BackgroundDrag(QWidget &window, Stage &stage) : m_window(window), m_stage(stage) {}

    void press(const QMouseEvent &event);
    /// Moves the window along while the left button is down.
    void move(const QMouseEvent &event);

private:
    QWidget &m_window;
    Stage &m_stage;
    QPointF m_originalMouseLocation; ///< global points, y upwards, at the last press
    QPointF m_originalWindowLocation;
};

} // namespace Orbita
