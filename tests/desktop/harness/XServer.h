#pragma once

#include "desktop/harness/Processes.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QRect>
#include <QSize>

#include <xcb/xcb.h>

#include <array>
#include <cstdlib>
#include <memory>

namespace Orbita {

struct FreeReply {
    void operator()(void *reply) const { std::free(reply); }
};
/// The answer to a request; empty when the request failed, as with a window that has just gone.
template <typename T>
using XReply = std::unique_ptr<T, FreeReply>;

/// A connection of the harness's own to an X server. Selects no events except where it says so.
class XConnection {
public:
    /// Throws DesktopFailure when there is no such display.
    explicit XConnection(const QByteArray &display);

    [[nodiscard]] const QByteArray &display() const { return m_display; }
    operator xcb_connection_t *() const { return m_connection.get(); }
    [[nodiscard]] const xcb_screen_t &screen() const { return *m_screen; }
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }
    [[nodiscard]] xcb_atom_t atom(const QByteArray &name) const;

    /// Returns when the server has carried out everything sent so far.
    void sync() const;

    /// The property's 32-bit values, of whichever type; none if it is missing.
    [[nodiscard]] QList<quint32> values(xcb_window_t window, const QByteArray &property) const;
    /// The property's bytes, of whichever type; none if it is missing.
    [[nodiscard]] QByteArray bytes(xcb_window_t window, const QByteArray &property) const;
    /// Sets the property to 32-bit values of \a type, or to a Latin-1 text. The server may not have done so yet.
    void setValues(xcb_window_t window, const QByteArray &property, xcb_atom_t type,
                   const QList<quint32> &values) const;
    void setText(xcb_window_t window, const QByteArray &property, const QByteArray &text) const;
    /// Sends a request of a pager or task bar about \a window to the window manager.
    void askWindowManager(xcb_window_t window, const QByteArray &message, const std::array<quint32, 5> &data) const;
    /// Sends a message of a protocol listed in WM_PROTOCOLS straight to \a window.
    void sendProtocol(xcb_window_t window, const QByteArray &protocol, quint32 third = 0, quint32 fourth = 0) const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };

    void send(xcb_window_t destination, quint32 mask, xcb_client_message_event_t event) const;

    QByteArray m_display;
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    xcb_screen_t *m_screen = nullptr;
    mutable QHash<QByteArray, xcb_atom_t> m_atoms;
};

/// A virtual X server on a display number that was free.
class XServer {
public:
    /// Throws DesktopFailure when it cannot be started.
    XServer(QSize screen, const QProcessEnvironment &environment);

    /// For instance ":3".
    [[nodiscard]] const QByteArray &display() const { return m_display; }
    [[nodiscard]] Program &program() { return m_program; }

private:
    Program m_program;
    QByteArray m_display;
};

} // namespace Orbita
