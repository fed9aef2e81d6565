#pragma once

#include "companion/service/QuitPlan.h"
#include "platform/x11/X11Connection.h"

#include <vector>

namespace Orbita {

/// The windows of one process on the display of $DISPLAY, as a task bar sees them: those that the window manager lists,
/// or, without one, those on the screen that take part in being closed.
class ProcessWindows {
public:
    /// Looks at the windows as they are now. Needs a QCoreApplication.
    explicit ProcessWindows(qint64 processIdentifier);

    /// Whether there is a display; what it has is none of the others' answers otherwise.
    [[nodiscard]] bool isDisplayReached() const { return m_connection.isAlive(); }
    [[nodiscard]] bool isOfWindowManager() const { return m_isOfWindowManager; }
    [[nodiscard]] QuitFacts::Windows kind() const;

    /// Does what their close buttons would. When it returns, the messages have left; the answers are the program's.
    void close();

private:
    [[nodiscard]] std::vector<xcb_window_t> candidates();
    [[nodiscard]] bool isOfDesktop(xcb_window_t window);
    [[nodiscard]] bool isOnScreen(xcb_window_t window);
    [[nodiscard]] bool takesPartInClosing(xcb_window_t window);
    void askWindowManager(xcb_window_t window, xcb_timestamp_t time);
    void askDirectly(xcb_window_t window, xcb_timestamp_t time);

    X11Connection m_connection;
    xcb_window_t m_managerWindow = XCB_NONE; ///< none: there is no window manager
    bool m_isOfWindowManager = false;
    bool m_hasDesktopWindows = false;
    std::vector<xcb_window_t> m_closable;
};

} // namespace Orbita
