#pragma once

#include "ring/DiscPainter.h"

#include <QObject>
#include <QRegion>

#include <functional>
#include <optional>

class QWidget;

namespace Orbita {

class BlurBehind;
class Stage;

/// Gives a frameless window a shape of its own, whatever the desktop offers.
///
/// With a compositor the window is translucent, clicks outside the shape reach what is beneath, and the backdrop is
/// blurred where that is offered; without one the window is cut out. Follows the desktop while it runs.
class WindowShape : public QObject {
    Q_OBJECT
public:
    /// The region within \a inset points of the edges of a window of \a size; points, y downwards.
    using Outline = std::function<QRegion(QSize size, int inset)>;

    /// Where the body ends and where the blur does.
    struct Insets {
        int body = 1;
        std::optional<int> blur = 2; ///< nothing for a window that hides what is behind it
    };

    WindowShape(QWidget &window, Stage &stage, BlurBehind &blur, Outline outline, Insets insets);

    [[nodiscard]] Backdrop backdrop() const;

Q_SIGNALS:
    void backdropChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void apply();

    QWidget &m_window;
    Stage &m_stage;
    BlurBehind &m_blur;
    Outline m_outline;
    Insets m_insets;
};

} // namespace Orbita
