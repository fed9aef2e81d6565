#pragma once

#include "ring/BackgroundDrag.h"
#include "ring/WindowShape.h"

#include <QWidget>

namespace Orbita {

class VXSheetWindowContentView;

/// A frameless, rounded, white panel above other windows that is moved by its background and blocks the program's
/// other windows. Light whatever colours the desktop has.
class VXSheetWindow final : public QWidget {
    Q_OBJECT
public:
    /// 320 x 240 points. \a stage and \a blur outlive the window.
    VXSheetWindow(Stage &stage, BlurBehind &blur);

    /// Fills the window. What is shown in the sheet stands in it.
    [[nodiscard]] VXSheetWindowContentView &contentView() const { return *m_contentView; }
    /// Shows the window in the middle of the screen that has the pointer, or as much of \a size as that holds, and
    /// gives it the keyboard. At once or, where the pointer must be searched for, a little later.
    void present(QSizeF size);
    /// Presents the window again as it was at first, unless it can be reached where it stands: unless its middle and,
    /// in the middle, the upper 40 points by which it is moved are on screens. Happens by itself when screens change.
    void recover();

Q_SIGNALS:
    /// The window closes, whoever asked for it. Once.
    void willClose();

protected:
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void presentAt(const QRectF &frame);
    void followBackdrop();
    [[nodiscard]] bool isInReach() const;

    Stage &m_stage;
    WindowShape m_shape;
    BackgroundDrag m_drag;
    VXSheetWindowContentView *m_contentView;
    QSizeF m_wantedSize; ///< points; null before the window is presented
    bool m_isClosed = false;
};

} // namespace Orbita
