#pragma once

#include "platform/x11/X11Atoms.h"

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

#include <xcb/xcb.h>

#include <cstdlib>
#include <deque>
#include <memory>

namespace Orbita {

/// Releases what xcb allocated.
struct FreeDeleter {
    void operator()(void *memory) const { std::free(memory); }
};
template <typename T>
using XcbPointer = std::unique_ptr<T, FreeDeleter>;

/// A connection to the X server beside that of the toolkit, so that what is selected on it disturbs nobody.
///
/// Making one costs the connection's own handshake and one further round trip. When the server cannot be reached or
/// goes away, one line is logged, every reply is absent, and nothing else happens.
class X11Connection : public QObject {
    Q_OBJECT
public:
    /// Connects to \a display, or to $DISPLAY when it is empty.
    explicit X11Connection(const QByteArray &display = {}, QObject *parent = nullptr);
    ~X11Connection() override;

    [[nodiscard]] bool isAlive() const { return m_alive; }
    /// For requests; never null. What has to reach the server soon needs a flush() after it.
    [[nodiscard]] xcb_connection_t *xcb() const { return m_xcb; }
    [[nodiscard]] xcb_window_t root() const { return m_root; }
    /// The number of the root's screen on the display.
    [[nodiscard]] int screenNumber() const { return m_screenNumber; }
    [[nodiscard]] xcb_atom_t atom(X11Atom name) const { return m_atoms[static_cast<std::size_t>(name)]; }
    /// Whether the server offers XInput 2.
    [[nodiscard]] bool hasInputExtension() const { return m_inputOpcode != 0; }

    void flush() { xcb_flush(m_xcb); }
    /// Waits for what \a function fetches for \a cookie; null on an error. Events that come with the reply are
    /// delivered from the event loop.
    template <typename Reply, typename Cookie>
    [[nodiscard]] XcbPointer<Reply> reply(Reply *(*function)(xcb_connection_t *, Cookie, xcb_generic_error_t **),
                                          Cookie cookie)
    {
        xcb_generic_error_t *error = nullptr;
        XcbPointer<Reply> reply(function(m_xcb, cookie, &error));
        std::free(error);
        deliverLater();
        return reply;
    }
    /// Waits until the server has handled the request of \a cookie. Whether it did so without an error.
    [[nodiscard]] bool succeeded(xcb_void_cookie_t cookie);

    /// The server's time now, for requests that must carry a real one; XCB_CURRENT_TIME without a server.
    /// Costs one round trip.
    [[nodiscard]] xcb_timestamp_t serverTime();

    /// Delivers from the event loop what came in with replies that somebody else waited for on this connection.
    void deliverLater();
    /// Hears of the groups and of all changes of the keyboard from now on, for what reads it with XKB; core notices
    /// of it may stay away then. Costs two round trips, once. False when the server does not offer that.
    [[nodiscard]] bool watchKeyboard();

    /// Hears of the properties, the unmapping and the end of \a window from now on.
    void watchWindow(xcb_window_t window);
    /// Hears of the unmapping and the end of \a window only.
    void watchPresence(xcb_window_t window);

Q_SIGNALS:
    /// A property of the root or of a watched window was set or removed.
    void propertyChanged(xcb_window_t window, xcb_atom_t property);
    void windowUnmapped(xcb_window_t window);
    void windowDestroyed(xcb_window_t window);
    void compositorOwnerChanged(bool owned);
    /// A mouse button, by its physical number, was pressed or released somewhere, or the pointer was moved; only while
    /// these raw events are selected.
    void rawButtonPressed(quint32 button);
    void rawButtonReleased(quint32 button);
    void rawMotion();
    /// A key went down or up somewhere, whoever holds a grab; only while these raw events are selected. A key that is
    /// held may repeat going down.
    void rawKeyPressed(quint8 key);
    void rawKeyReleased(quint8 key);
    /// The logical numbers of the mouse buttons were changed.
    void pointerMappingChanged();
    /// A key went down or up while a passive grab of this connection held it. \a state is that before the event.
    void keyPressed(quint8 key, quint16 state, xcb_timestamp_t time);
    void keyReleased(quint8 key, quint16 state, xcb_timestamp_t time);
    /// Keys may type something else now, or modifiers be elsewhere. Several of these come for one change.
    void keyboardChanged();
    /// The keyboard types in another group of its layout now; only while the keyboard is watched.
    void keyboardGroupChanged();
    /// All events that had arrived were delivered: the time to act on what they changed.
    void eventsDelivered();
    /// The server has gone away.
    void lost();

private:
    void setUp();
    void select(xcb_window_t window, uint32_t events);
    void requestNotices();
    void deliver();
    void dispatch(const xcb_generic_event_t &event);
    void dispatchRaw(const xcb_ge_generic_event_t &event);
    void dispatchKeyboard(const xcb_generic_event_t &event);
    [[nodiscard]] XcbPointer<xcb_generic_event_t> nextEvent();
    void noticeLoss();

    xcb_connection_t *m_xcb = nullptr;
    bool m_alive = false;
    bool m_deliveryPosted = false;
    int m_screenNumber = 0;
    xcb_window_t m_root = XCB_NONE;
    xcb_window_t m_window = XCB_NONE; ///< never mapped; carries the property behind serverTime()
    std::array<xcb_atom_t, X11AtomCount> m_atoms{};
    quint8 m_inputOpcode = 0;
    quint8 m_fixesFirstEvent = 0;
    quint8 m_keyboardEvent = 0;                            ///< all events of XKB; 0 while the keyboard is not watched
    std::deque<XcbPointer<xcb_generic_event_t>> m_pending; ///< taken off the wire, not yet delivered
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace Orbita
