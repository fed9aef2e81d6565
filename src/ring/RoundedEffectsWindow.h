#pragma once

#include "ring/WindowShape.h"

#include <QPointF>
#include <QWidget>

namespace Orbita {

class BezelView;

/// A frameless floating panel with rounded corners that is moved by its background. Its content is its child widgets.
class RoundedEffectsWindow : public QWidget {
    Q_OBJECT
public:
    /// \a stage and \a blur outlive the window.
    RoundedEffectsWindow(Stage &stage, BlurBehind &blur, QWidget *parent = nullptr);

    [[nodiscard]] BezelView &strokeView() const { return *m_strokeView; }

protected:
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void updateMask();
    /// The window's frame in global points, y upwards.
    [[nodiscard]] QRectF stageFrame() const;

    Stage &m_stage;
    WindowShape m_shape;
    BezelView *m_strokeView;
    QPointF m_originalMouseLocation; ///< global points, y upwards, at the last press
    QPointF m_originalWindowLocation;
};

} // namespace Orbita
