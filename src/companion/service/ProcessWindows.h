#pragma once

#include "companion/service/QuitPlan.h"
#include "companion/service/WindowOwners.h"
#include "platform/x11/X11Connection.h"

#include <vector>

namespace Orbita {

/// The windows of one process on the display of $DISPLAY, as a task bar sees them: those that the window manager lists,
/// or, where none does, those that a window manager holds or that are on the screen, and take part in being closed.
class ProcessWindows {
public:
    /// Looks at the windows as they are now. Needs a QCoreApplication.
    explicit ProcessWindows(qint64 processIdentifier);

    /// Whether there is a display; what it has is none of the others' answers otherwise.
    [[nodiscard]] bool isDisplayReached() const { return m_connection.isAlive(); }
    /// The process of the window manager; 0 where none shows itself.
    [[nodiscard]] qint64 windowManager() const { return m_windowManager; }
    [[nodiscard]] QuitFacts::Windows kind() const;

    /// Does what their close buttons would. When it returns, the messages have left; the answers are the program's.
    void close();

private:
    void findWindowManager();
    void sort(qint64 processIdentifier);
    [[nodiscard]] std::vector<xcb_window_t> listedWindows();
    [[nodiscard]] std::vector<xcb_window_t> unlistedWindows();
    [[nodiscard]] std::vector<xcb_window_t> childrenOf(xcb_window_t window);
    [[nodiscard]] xcb_window_t heldWithin(xcb_window_t window, int depth);
    [[nodiscard]] bool isHeld(xcb_window_t window);
    [[nodiscard]] bool isOfDesktop(xcb_window_t window);
    [[nodiscard]] bool isOnScreen(xcb_window_t window);
    [[nodiscard]] bool takesPartInClosing(xcb_window_t window);
    void askWindowManager(xcb_window_t window, xcb_timestamp_t time);
    void askDirectly(xcb_window_t window, xcb_timestamp_t time);

    X11Connection m_connection;
    WindowOwners m_owners{m_connection};
    xcb_window_t m_managerWindow = XCB_NONE; ///< none: there is no window manager that lists windows
    qint64 m_windowManager = 0;
    bool m_isNamedByOthers = false;
    bool m_hasDesktopWindows = false;
    std::vector<xcb_window_t> m_closable;
};

} // namespace Orbita
