#pragma once

#include "ring/BackgroundDrag.h"
#include "ring/WindowShape.h"

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

    WindowShape m_shape;
    BackgroundDrag m_drag;
    BezelView *m_strokeView;
};

} // namespace Orbita
