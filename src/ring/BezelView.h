#pragma once

#include <QWidget>

#include <functional>

class QPainter;

namespace Orbita {

/// Shows a window's fill and outline. The pointer goes through it.
class BezelView : public QWidget {
    Q_OBJECT
public:
    /// Paints within the bounds, in points.
    using Drawing = std::function<void(QPainter &painter, const QRectF &bounds)>;

    explicit BezelView(QWidget *parent = nullptr);

    void setDrawing(Drawing drawing);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Drawing m_drawing;
};

} // namespace Orbita
