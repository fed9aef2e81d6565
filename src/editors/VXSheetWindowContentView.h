#pragma once

#include <QWidget>

namespace Orbita {

/// The white, rounded ground of a sheet, with a hairline round it that sets it off on white.
class VXSheetWindowContentView final : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Whether the window is blended with what is beneath it; otherwise a mask cuts its corners.
    void setBlended(bool isBlended);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_isBlended = true;
};

} // namespace Orbita
