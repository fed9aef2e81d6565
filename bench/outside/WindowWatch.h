#pragma once

#include "desktop/harness/XServer.h"

#include <QRect>
#include <QSet>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace Orbita {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// Memory shared with the X server, for reading pixels without sending them through a socket.
class SharedPixels {
public:
    SharedPixels(const XConnection &connection, QSize largest);
    ~SharedPixels();
    SharedPixels(const SharedPixels &) = delete;
    SharedPixels &operator=(const SharedPixels &) = delete;

    /// The pixels of \a rect, row by row, valid until the next call; null if they cannot be read.
    [[nodiscard]] const quint32 *read(xcb_drawable_t drawable, QRect rect) const;

private:
    const XConnection &m_connection;
    quint32 m_segment = 0;
    quint32 *m_pixels = nullptr;
};

/// Watches for the windows of one WM_CLASS: when one is mapped, has painted content, is seen on the screen, is gone.
///
/// Content is painted once the window's pixels are no longer one flat colour. It is seen once a pixel of the screen
/// where the window stands is not what it was at arm(), so nothing else should change there.
class WindowWatch {
public:
    /// Since the start of the round; what is missing did not happen in time.
    struct Times {
        std::optional<Milliseconds> mapped;
        std::optional<Milliseconds> painted;
        std::optional<Milliseconds> seen;
    };

    WindowWatch(const QByteArray &display, const QString &className);

    /// Forgets the window and all that happened, and takes a picture of the screen.
    void arm();
    /// Watches until the first window that is mapped is painted and seen, or until \a bound after \a start.
    Times watch(Clock::time_point start, std::chrono::milliseconds bound);
    /// Waits until that window is not mapped any more. Nothing if that did not happen in time.
    std::optional<Milliseconds> watchUntilGone(Clock::time_point start, std::chrono::milliseconds bound);
    /// The process of that window, 0 if it does not tell.
    [[nodiscard]] qint64 pid() const { return m_pid; }

private:
    [[nodiscard]] bool isWanted(xcb_window_t window) const;
    void follow(xcb_window_t window);
    void adopt(xcb_window_t window);
    void adoptWithin(xcb_window_t window, int depth);
    XReply<xcb_generic_event_t> nextEvent(Clock::time_point until);
    void handle(const xcb_generic_event_t &event);
    void look();
    [[nodiscard]] QRect targetOnScreen() const;
    [[nodiscard]] bool isPainted(QRect onScreen) const;
    [[nodiscard]] bool isSeen(QRect onScreen) const;

    XConnection m_connection;
    QString m_className;
    QRect m_screen;
    quint8 m_damageEvent = 0;
    std::unique_ptr<SharedPixels> m_pixels;
    std::vector<quint32> m_before;
    QSet<xcb_window_t> m_damageWatched;
    xcb_window_t m_target = XCB_WINDOW_NONE;
    qint64 m_pid = 0;
    bool m_gone = false;
    Clock::time_point m_start;
    Times m_times;
};

} // namespace Orbita
