#pragma once

#include "platform/x11/X11Connection.h"

#include <QObject>
#include <QPoint>

namespace Orbita {

/// The window manager of the screen, which may be missing, and may end and start again at any time.
///
/// Requests go out over a connection that the caller names, so that they reach the server after what was sent there
/// before, such as the mapping of the window; the caller flushes it.
class X11WindowManager : public QObject {
    Q_OBJECT
public:
    explicit X11WindowManager(X11Connection &connection, QObject *parent = nullptr);

    [[nodiscard]] bool isPresent() const { return m_checkWindow != XCB_NONE; }

    /// Brings \a window to the front with the keyboard, whoever has it now, minimised or not.
    /// Without a window manager it is raised and focused directly. Costs one round trip, for the server's time.
    void activate(xcb_connection_t *sender, xcb_window_t window);
    /// Shows the workspace that \a window of another program is on. Costs one round trip.
    void switchToWorkspaceOf(xcb_window_t window);
    /// The three below want a window that was mapped: window managers overrule what is set before.
    /// \a position of the upper left corner is in device pixels and may be off the screen.
    void move(xcb_connection_t *sender, xcb_window_t window, QPoint position);
    void showOnEveryWorkspace(xcb_connection_t *sender, xcb_window_t window);
    void keepAbove(xcb_connection_t *sender, xcb_window_t window);

Q_SIGNALS:
    void presentChanged(bool present);

private:
    void look();
    void setCheckWindow(xcb_window_t window);
    void tell(xcb_connection_t *sender, xcb_window_t window, X11Atom message, const std::array<quint32, 5> &data);

    X11Connection &m_connection;
    xcb_window_t m_checkWindow = XCB_NONE; ///< lives as long as the window manager
};

} // namespace Orbita
