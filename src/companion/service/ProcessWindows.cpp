#include "companion/service/ProcessWindows.h"

#include "platform/x11/X11Property.h"
#include "platform/x11/X11WindowReader.h"

#include <algorithm>
#include <tuple>

namespace Orbita {

namespace {

/// "From a pager": the user has asked for it, not the program.
constexpr quint32 SourcePager = 2;
/// More windows than any session has.
constexpr quint32 MaxListBytes = 256 * 1024;
/// How deep in the frames of window managers their clients' windows are at most.
constexpr int FrameDepth = 3;

PropertyReply read(X11Connection &connection, xcb_window_t window, xcb_atom_t property, quint32 maxBytes = 4096)
{
    return propertyReply(connection, requestProperty(connection, window, property, maxBytes));
}

void send(X11Connection &connection, xcb_window_t destination, uint32_t mask, xcb_client_message_event_t event)
{
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    xcb_send_event(connection.xcb(), 0, destination, mask, reinterpret_cast<const char *>(&event));
}

} // namespace

ProcessWindows::ProcessWindows(qint64 processIdentifier)
{
    if (!m_connection.isAlive())
        return;
    findWindowManager();
    sort(processIdentifier);
}

void ProcessWindows::findWindowManager()
{
    const xcb_atom_t check = m_connection.atom(X11Atom::NetSupportingWmCheck);
    const xcb_window_t named = cardinal(read(m_connection, m_connection.root(), check).get());
    // What a window manager that was killed left on the root names a window that is gone.
    if (named == XCB_NONE || cardinal(read(m_connection, named, check).get()) != named)
        return;
    m_managerWindow = named;
    m_windowManager = m_owners.processOf(named);
    if (m_windowManager == 0)
        m_windowManager = cardinal(read(m_connection, named, m_connection.atom(X11Atom::NetWmPid)).get());
}

void ProcessWindows::sort(qint64 processIdentifier)
{
    const bool isListed = m_managerWindow != XCB_NONE;
    for (const ApplicationWindow &window : readWindows(m_connection, isListed ? listedWindows() : unlistedWindows())) {
        const auto id = xcb_window_t(window.window);
        const bool isNamed = window.process.processIdentifier == processIdentifier;
        const qint64 owner = m_owners.processOf(id);
        if (owner == processIdentifier || (owner == 0 && isNamed)) {
            if (isOfDesktop(id))
                m_hasDesktopWindows = true;
            else if (isListed || takesPartInClosing(id))
                m_closable.push_back(id);
        } else if (isNamed) {
            m_isNamedByOthers = true;
        }
    }
}

std::vector<xcb_window_t> ProcessWindows::listedWindows()
{
    const auto list = read(m_connection, m_connection.root(), m_connection.atom(X11Atom::NetClientList), MaxListBytes);
    const auto windows = cardinals(list.get());
    return {windows.begin(), windows.end()};
}

std::vector<xcb_window_t> ProcessWindows::unlistedWindows()
{
    std::vector<xcb_window_t> found;
    for (const xcb_window_t top : childrenOf(m_connection.root())) {
        const xcb_window_t held = heldWithin(top, FrameDepth);
        if (held != XCB_NONE && held != top) // the frame that a window manager has put around it
            m_windowManager = m_owners.processOf(top);
        if (held != XCB_NONE || isOnScreen(top))
            found.push_back(held != XCB_NONE ? held : top);
    }
    return found;
}

std::vector<xcb_window_t> ProcessWindows::childrenOf(xcb_window_t window)
{
    const auto tree = m_connection.reply(xcb_query_tree_reply, xcb_query_tree(m_connection.xcb(), window));
    if (!tree)
        return {};
    const xcb_window_t *children = xcb_query_tree_children(tree.get());
    return {children, children + xcb_query_tree_children_length(tree.get())};
}

xcb_window_t ProcessWindows::heldWithin(xcb_window_t window, int depth)
{
    if (isHeld(window))
        return window;
    if (depth == 0)
        return XCB_NONE;
    for (const xcb_window_t child : childrenOf(window)) {
        if (const xcb_window_t held = heldWithin(child, depth - 1); held != XCB_NONE)
            return held;
    }
    return XCB_NONE;
}

bool ProcessWindows::isHeld(xcb_window_t window)
{
    constexpr quint32 withdrawn = 0;
    return cardinal(read(m_connection, window, m_connection.atom(X11Atom::WmState)).get(), withdrawn) != withdrawn;
}

bool ProcessWindows::isOfDesktop(xcb_window_t window)
{
    const auto reply = read(m_connection, window, m_connection.atom(X11Atom::NetWmWindowType));
    return std::ranges::any_of(cardinals(reply.get()), [this](quint32 type) {
        return type == m_connection.atom(X11Atom::NetWmWindowTypeDesktop)
            || type == m_connection.atom(X11Atom::NetWmWindowTypeDock);
    });
}

bool ProcessWindows::isOnScreen(xcb_window_t window)
{
    const auto attributes
        = m_connection.reply(xcb_get_window_attributes_reply, xcb_get_window_attributes(m_connection.xcb(), window));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool ProcessWindows::takesPartInClosing(xcb_window_t window)
{
    const auto protocols = read(m_connection, window, m_connection.atom(X11Atom::WmProtocols));
    return std::ranges::count(cardinals(protocols.get()), m_connection.atom(X11Atom::WmDeleteWindow)) > 0;
}

QuitFacts::Windows ProcessWindows::kind() const
{
    if (!m_closable.empty())
        return QuitFacts::Windows::Closable;
    if (m_hasDesktopWindows)
        return QuitFacts::Windows::OfDesktopOnly;
    return m_isNamedByOthers ? QuitFacts::Windows::OfAnother : QuitFacts::Windows::None;
}

void ProcessWindows::close()
{
    const xcb_timestamp_t time = m_connection.serverTime();
    for (const xcb_window_t window : m_closable) {
        if (m_managerWindow != XCB_NONE)
            askWindowManager(window, time);
        else
            askDirectly(window, time);
    }
    // A connection that ends takes along what it has not sent.
    std::ignore = m_connection.succeeded(xcb_no_operation_checked(m_connection.xcb()));
}

void ProcessWindows::askWindowManager(xcb_window_t window, xcb_timestamp_t time)
{
    xcb_client_message_event_t event{};
    event.window = window;
    event.type = m_connection.atom(X11Atom::NetCloseWindow);
    event.data.data32[0] = time;
    event.data.data32[1] = SourcePager;
    send(m_connection, m_connection.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
         event);
}

void ProcessWindows::askDirectly(xcb_window_t window, xcb_timestamp_t time)
{
    xcb_client_message_event_t event{};
    event.window = window;
    event.type = m_connection.atom(X11Atom::WmProtocols);
    event.data.data32[0] = m_connection.atom(X11Atom::WmDeleteWindow);
    event.data.data32[1] = time;
    send(m_connection, window, XCB_EVENT_MASK_NO_EVENT, event);
}

} // namespace Orbita
