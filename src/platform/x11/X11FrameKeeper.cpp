#include "platform/x11/X11FrameKeeper.h"

#include <QEvent>
#include <QWindow>

namespace Orbita {

namespace {

constexpr int maximumAttempts = 4;

} // namespace

X11FrameKeeper &X11FrameKeeper::of(QWindow &window)
{
    for (QObject *child : window.children()) {
        if (auto *keeper = dynamic_cast<X11FrameKeeper *>(child))
            return *keeper;
    }
    return *new X11FrameKeeper(window);
}

X11FrameKeeper::X11FrameKeeper(QWindow &window) : QObject(&window), m_window(window)
{
    window.installEventFilter(this);
}

void X11FrameKeeper::place(const QRect &frame)
{
    m_frame = frame;
    m_attemptsLeft = maximumAttempts;
    m_window.setGeometry(frame);
}

bool X11FrameKeeper::eventFilter(QObject *, QEvent *event)
{
    // The toolkit tells of its first wrong belief by a resize, if at all; at the latest it shows when it paints.
    const bool mayTellOfAMove = event->type() == QEvent::Move || event->type() == QEvent::Resize
        || event->type() == QEvent::Expose || event->type() == QEvent::UpdateRequest;
    if (mayTellOfAMove && m_attemptsLeft > 0 && m_window.isVisible() && m_window.geometry() != m_frame) {
        --m_attemptsLeft;
        const auto placeAgain = [this] {
            if (m_window.geometry() != m_frame)
                m_window.setGeometry(m_frame);
        };
        // Not from within the toolkit's own handling of the move.
        QMetaObject::invokeMethod(this, placeAgain, Qt::QueuedConnection);
    }
    return false;
}

} // namespace Orbita
