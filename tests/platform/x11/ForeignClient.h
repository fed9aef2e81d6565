#pragma once

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Property.h"

#include <QRect>
#include <QTimer>

#include <optional>

namespace Orbita {

/// How a window of another program presents itself. What is empty or 0 is not said.
struct ForeignWindow {
    QByteArray windowClass{};
    QByteArray title{};
    qint64 process = 0;
    QByteArray machine{};
    std::optional<X11Atom> type{};
    std::optional<X11Atom> state{};
    xcb_window_t parent = XCB_NONE; ///< that it is transient for
};

/// Another program on the display: makes windows, moves the pointer, looks at properties.
class ForeignClient {
public:
    explicit ForeignClient(const QByteArray &display) : m_connection(display) {}

    xcb_window_t show(const ForeignWindow &window);
    void destroy(xcb_window_t window);
    void withdraw(xcb_window_t window);
    void minimise(xcb_window_t window);
    void sendToWorkspace(xcb_window_t window, quint32 workspace);

    void setText(xcb_window_t window, xcb_atom_t property, const QByteArray &value);
    void setCardinals(xcb_window_t window, xcb_atom_t property, const std::vector<quint32> &value);
    void setAtom(xcb_window_t window, X11Atom property, X11Atom value);
    void removeProperty(xcb_window_t window, X11Atom property);
    /// The first cardinal of a property, 0 when it is not there.
    [[nodiscard]] quint32 value(xcb_window_t window, X11Atom property);
    [[nodiscard]] std::vector<quint32> values(xcb_window_t window, X11Atom property);

    void movePointer(int x, int y);
    void pressButton(quint8 button, bool down);
    /// The pointer for itself alone, as a menu takes it.
    [[nodiscard]] bool grabPointer();
    /// Takes the selection that stands for a compositor and returns the window that holds it.
    xcb_window_t claimCompositing();
    /// Where \a window is on the screen.
    [[nodiscard]] QRect frameOf(xcb_window_t window);
    /// Whether the pointer is in \a window, as far as that takes input, or in what it contains.
    [[nodiscard]] bool isPointerIn(xcb_window_t window);
    /// The window that has the keyboard.
    [[nodiscard]] xcb_window_t focus();
    [[nodiscard]] X11Connection &connection() { return m_connection; }

private:
    void tell(xcb_window_t window, xcb_atom_t message, const std::array<quint32, 5> &data);

    X11Connection m_connection;
};

/// Keeps openbox awake: now and then it leaves a request lying until the next event comes.
class Nudge {
public:
    explicit Nudge(ForeignClient &client);

private:
    QTimer m_timer;
};

} // namespace Orbita
