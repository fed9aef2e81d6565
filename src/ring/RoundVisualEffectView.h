#pragma once

#include <QWidget>

namespace Orbita {

/// A round pane of light glass with a white outline, for use within a translucent window.
class RoundVisualEffectView : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace Orbita
