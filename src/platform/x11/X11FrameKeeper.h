#pragma once

#include <QObject>
#include <QRect>

class QWindow;

namespace Orbita {

/// Keeps a window, in fact and in the toolkit's belief, where it was placed.
///
/// While a window manager takes a new window into its frame, the toolkit may read a passing position and keep it for
/// good; what is then measured from the window, such as the places of bubbles, is off. Some window managers move new
/// windows, too. Placing the window again has it told the truth.
class X11FrameKeeper final : public QObject {
public:
    /// The keeper of \a window, made with the first call; the window owns it.
    static X11FrameKeeper &of(QWindow &window);

    /// Gives the window \a frame and watches over it.
    void place(const QRect &frame);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit X11FrameKeeper(QWindow &window);

    QWindow &m_window;
    QRect m_frame;
    int m_attemptsLeft = 0; ///< a window manager that insists has its way in the end
};

} // namespace Orbita
