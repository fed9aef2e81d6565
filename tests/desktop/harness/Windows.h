#pragma once

#include "desktop/harness/XServer.h"

#include <QRect>
#include <QString>

#include <functional>
#include <optional>

namespace Orbita {

/// What was known of a top-level window when it was looked at.
struct WindowInfo {
    xcb_window_t id = XCB_WINDOW_NONE;
    QString instanceName; ///< first part of WM_CLASS
    QString className;    ///< second part of WM_CLASS
    QString title;
    qint64 pid = 0; ///< 0 if the window does not tell
    QRect geometry; ///< without the frame, in pixels of the whole screen
    bool viewable = false;
    bool overrideRedirect = false;
    bool managed = false; ///< listed in _NET_CLIENT_LIST
};

using WindowFilter = std::function<bool(const WindowInfo &)>;

/// Either part of WM_CLASS is \a name, whatever its case.
[[nodiscard]] WindowFilter withClass(const QString &name);
[[nodiscard]] WindowFilter withTitle(const QString &title);

/// The windows of the session, looked at and handled as a pager would. Works with and without a window manager.
class Windows {
public:
    explicit Windows(const XConnection &connection) : m_connection(connection) {}

    /// All top-level windows, lowest first: those the window manager keeps (iconified ones too) and those that are
    /// on the screen without it, menus and the like.
    [[nodiscard]] QList<WindowInfo> all() const;
    [[nodiscard]] QList<WindowInfo> matching(const WindowFilter &filter) const;
    /// The highest viewable window that passes \a filter.
    [[nodiscard]] std::optional<WindowInfo> find(const WindowFilter &filter) const;
    /// Nothing if there is no such window (any more).
    [[nodiscard]] std::optional<WindowInfo> info(xcb_window_t window) const;

    /// Waits for a viewable window that passes \a filter and is in the hands of the window manager, if there is one
    /// and the window does not evade it.
    WindowInfo waitFor(const WindowFilter &filter, const QString &description) const;
    /// Waits for a viewable window whose WM_CLASS has \a className.
    WindowInfo waitForWindow(const QString &className) const;
    /// Waits until the program has dealt with all events sent to it before. The window must follow
    /// _NET_WM_PING, as those of Qt and GTK do.
    void waitUntilHandled(xcb_window_t window) const;

    /// Whether a window manager answers, not merely one that has left its mark.
    [[nodiscard]] bool hasManager() const;
    /// Waits until a window manager that follows _NET_REQUEST_FRAME_EXTENTS (openbox, not kwin_x11) works.
    void waitForManager() const;
    /// What the window manager says has the focus; none if nothing has.
    [[nodiscard]] xcb_window_t activeWindow() const;
    /// Where the server sends keys.
    [[nodiscard]] xcb_window_t inputFocus() const;
    /// \a state is a name such as "_NET_WM_STATE_ABOVE".
    [[nodiscard]] bool hasState(xcb_window_t window, const QByteArray &state) const;
    /// The virtual desktop, 0xFFFFFFFF for all of them.
    [[nodiscard]] std::optional<quint32> desktop(xcb_window_t window) const;

    void activate(xcb_window_t window) const;
    void moveTo(xcb_window_t window, QPoint position) const;
    void resize(xcb_window_t window, QSize size) const;
    void iconify(xcb_window_t window) const;
    /// Asks the window to close, as its title bar's button does.
    void close(xcb_window_t window) const;

private:
    void ping(xcb_window_t window) const;
    void configure(xcb_window_t window, quint16 what, std::array<quint32, 2> values) const;
    [[nodiscard]] QList<xcb_window_t> children(xcb_window_t window) const;
    [[nodiscard]] xcb_window_t clientIn(xcb_window_t window) const;

    const XConnection &m_connection;
};

} // namespace Orbita
