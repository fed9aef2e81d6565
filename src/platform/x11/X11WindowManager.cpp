#include "platform/x11/X11WindowManager.h"

#include "platform/x11/X11Property.h"

#include <algorithm>

namespace Orbita {

namespace {

/// "From a pager": window managers obey such a request even when the user is busy in another window.
constexpr quint32 SourcePager = 2;
constexpr quint32 EveryWorkspace = 0xffffffff;
constexpr quint32 AddState = 1;

} // namespace

X11WindowManager::X11WindowManager(X11Connection &connection, QObject *parent)
    : QObject(parent), m_connection(connection)
{
    connect(&connection, &X11Connection::propertyChanged, this, [this](xcb_window_t window, xcb_atom_t property) {
        if (window == m_connection.root() && property == m_connection.atom(X11Atom::NetSupportingWmCheck))
            look();
    });
    connect(&connection, &X11Connection::windowDestroyed, this, [this](xcb_window_t window) {
        if (window == m_checkWindow)
            setCheckWindow(XCB_NONE);
    });
    connect(&connection, &X11Connection::lost, this, [this] { setCheckWindow(XCB_NONE); });
    look();
}

void X11WindowManager::look()
{
    const auto ask = [this](xcb_window_t window) {
        const auto cookie = requestProperty(m_connection, window, m_connection.atom(X11Atom::NetSupportingWmCheck));
        return cardinal(propertyReply(m_connection, cookie).get());
    };
    const xcb_window_t window = ask(m_connection.root());
    if (window != XCB_NONE)
        m_connection.watchWindow(window);
    // What a window manager that was killed left on the root names a window that is gone.
    const bool exists = window != XCB_NONE && ask(window) == window;
    setCheckWindow(exists ? window : xcb_window_t(XCB_NONE));
}

void X11WindowManager::setCheckWindow(xcb_window_t window)
{
    const bool wasPresent = isPresent();
    m_checkWindow = window;
    if (isPresent() != wasPresent)
        Q_EMIT presentChanged(isPresent());
}

void X11WindowManager::activate(xcb_connection_t *sender, xcb_window_t window)
{
    if (isPresent()) {
        tell(sender, window, X11Atom::NetActiveWindow, {SourcePager, m_connection.serverTime(), XCB_NONE});
        return;
    }
    const uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(sender, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_set_input_focus(sender, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
}

void X11WindowManager::switchToWorkspaceOf(xcb_window_t window)
{
    const xcb_window_t root = m_connection.root();
    const auto wanted = requestProperty(m_connection, window, m_connection.atom(X11Atom::NetWmDesktop));
    const auto current = requestProperty(m_connection, root, m_connection.atom(X11Atom::NetCurrentDesktop));
    const quint32 workspace = cardinal(propertyReply(m_connection, wanted).get(), EveryWorkspace);
    if (workspace != cardinal(propertyReply(m_connection, current).get(), workspace) && workspace != EveryWorkspace)
        tell(m_connection.xcb(), root, X11Atom::NetCurrentDesktop, {workspace, m_connection.serverTime()});
}

void X11WindowManager::move(xcb_connection_t *sender, xcb_window_t window, QPoint position)
{
    constexpr quint32 withX = 1 << 8;
    constexpr quint32 withY = 1 << 9;
    tell(sender, window, X11Atom::NetMoveresizeWindow,
         {XCB_GRAVITY_STATIC | withX | withY | SourcePager << 12, quint32(position.x()), quint32(position.y())});
}

void X11WindowManager::showOnEveryWorkspace(xcb_connection_t *sender, xcb_window_t window)
{
    tell(sender, window, X11Atom::NetWmDesktop, {EveryWorkspace, SourcePager});
}

void X11WindowManager::keepAbove(xcb_connection_t *sender, xcb_window_t window)
{
    tell(sender, window, X11Atom::NetWmState,
         {AddState, m_connection.atom(X11Atom::NetWmStateAbove), XCB_NONE, SourcePager});
}

void X11WindowManager::tell(xcb_connection_t *sender, xcb_window_t window, X11Atom message,
                            const std::array<quint32, 5> &data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = m_connection.atom(message);
    std::copy(data.begin(), data.end(), event.data.data32);
    xcb_send_event(sender, 0, m_connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
}

} // namespace Orbita
