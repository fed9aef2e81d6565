#pragma once

#include "ring/MouseSensitiveView.h"

#include <QColor>

namespace Orbita {

/// The round button with a cross in the middle of a ring. Takes the pointer but never the keyboard.
class CloseButton : public MouseSensitiveView {
    Q_OBJECT
public:
    explicit CloseButton(QWidget *parent = nullptr);

    /// The cross's colour while it is not pressed, dark grey at first.
    [[nodiscard]] QColor defaultColor() const { return m_defaultColor; }
    void setDefaultColor(const QColor &color);
    /// While it is pressed, light grey at first.
    [[nodiscard]] QColor highlightColor() const { return m_highlightColor; }
    void setHighlightColor(const QColor &color);
    /// The colour in use now. An invalid colour leaves the drawing as it was.
    [[nodiscard]] QColor strokeColor() const { return m_strokeColor; }
    void setStrokeColor(const QColor &color);
    void setIsHighlighted(bool highlighted) override;

    /// Does what a click in its middle does, for assistive technology.
    void click();

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_defaultColor = QColor::fromRgbF(1 / 3.0F, 1 / 3.0F, 1 / 3.0F);
    QColor m_highlightColor = QColor::fromRgbF(2 / 3.0F, 2 / 3.0F, 2 / 3.0F);
    QColor m_strokeColor = m_defaultColor;
};

} // namespace Orbita
