#include "ForeignClient.h"

#include <xcb/xtest.h>

#include <algorithm>

namespace Orbita {

xcb_window_t ForeignClient::show(const ForeignWindow &window)
{
    xcb_connection_t *xcb = m_connection.xcb();
    const xcb_window_t id = xcb_generate_id(xcb);
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, id, m_connection.root(), 100, 100, 200, 150, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    if (!window.windowClass.isEmpty())
        setText(id, XCB_ATOM_WM_CLASS, window.windowClass.toLower() + '\0' + window.windowClass + '\0');
    if (!window.title.isEmpty())
        setText(id, XCB_ATOM_WM_NAME, window.title);
    if (!window.machine.isEmpty())
        setText(id, XCB_ATOM_WM_CLIENT_MACHINE, window.machine);
    if (window.process != 0)
        setCardinals(id, m_connection.atom(X11Atom::NetWmPid), {quint32(window.process)});
    if (window.type)
        setAtom(id, X11Atom::NetWmWindowType, *window.type);
    if (window.state)
        setAtom(id, X11Atom::NetWmState, *window.state);
    if (window.parent != XCB_NONE)
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 32, 1,
                            &window.parent);
    xcb_map_window(xcb, id);
    m_connection.flush();
    return id;
}

void ForeignClient::destroy(xcb_window_t window)
{
    xcb_destroy_window(m_connection.xcb(), window);
    m_connection.flush();
}

void ForeignClient::withdraw(xcb_window_t window)
{
    xcb_unmap_window(m_connection.xcb(), window);
    m_connection.flush();
}

void ForeignClient::minimise(xcb_window_t window)
{
    constexpr quint32 iconic = 3;
    const auto cookie = xcb_intern_atom(m_connection.xcb(), 0, 15, "WM_CHANGE_STATE");
    tell(window, m_connection.reply(xcb_intern_atom_reply, cookie)->atom, {iconic});
}

void ForeignClient::sendToWorkspace(xcb_window_t window, quint32 workspace)
{
    tell(window, m_connection.atom(X11Atom::NetWmDesktop), {workspace, 2});
}

void ForeignClient::setText(xcb_window_t window, xcb_atom_t property, const QByteArray &value)
{
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                        uint32_t(value.size()), value.constData());
    m_connection.flush();
}

void ForeignClient::setCardinals(xcb_window_t window, xcb_atom_t property, const std::vector<quint32> &value)
{
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_CARDINAL, 32,
                        uint32_t(value.size()), value.data());
    m_connection.flush();
}

void ForeignClient::setAtom(xcb_window_t window, X11Atom property, X11Atom value)
{
    const xcb_atom_t atom = m_connection.atom(value);
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, window, m_connection.atom(property), XCB_ATOM_ATOM,
                        32, 1, &atom);
    m_connection.flush();
}

void ForeignClient::removeProperty(xcb_window_t window, X11Atom property)
{
    xcb_delete_property(m_connection.xcb(), window, m_connection.atom(property));
    m_connection.flush();
}

quint32 ForeignClient::value(xcb_window_t window, X11Atom property)
{
    const auto all = values(window, property);
    return all.empty() ? 0 : all.front();
}

std::vector<quint32> ForeignClient::values(xcb_window_t window, X11Atom property)
{
    const auto reply = propertyReply(m_connection, requestProperty(m_connection, window, m_connection.atom(property)));
    const auto items = cardinals(reply.get());
    return {items.begin(), items.end()};
}

void ForeignClient::movePointer(int x, int y)
{
    xcb_test_fake_input(m_connection.xcb(), XCB_MOTION_NOTIFY, 0, 0, m_connection.root(), int16_t(x), int16_t(y), 0);
    m_connection.flush();
}

void ForeignClient::pressButton(quint8 button, bool down)
{
    xcb_test_fake_input(m_connection.xcb(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, button, 0,
                        m_connection.root(), 0, 0, 0);
    m_connection.flush();
}

bool ForeignClient::grabPointer()
{
    const auto cookie
        = xcb_grab_pointer(m_connection.xcb(), 0, m_connection.root(), XCB_EVENT_MASK_BUTTON_RELEASE,
                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const auto reply = m_connection.reply(xcb_grab_pointer_reply, cookie);
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

xcb_window_t ForeignClient::claimCompositing()
{
    const xcb_window_t owner = xcb_generate_id(m_connection.xcb());
    xcb_create_window(m_connection.xcb(), 0, owner, m_connection.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(m_connection.xcb(), owner, m_connection.atom(X11Atom::CompositorSelection),
                            XCB_CURRENT_TIME);
    m_connection.flush();
    return owner;
}

QRect ForeignClient::frameOf(xcb_window_t window)
{
    xcb_connection_t *xcb = m_connection.xcb();
    const auto geometry = m_connection.reply(xcb_get_geometry_reply, xcb_get_geometry(xcb, window));
    const auto corner = m_connection.reply(xcb_translate_coordinates_reply,
                                           xcb_translate_coordinates(xcb, window, m_connection.root(), 0, 0));
    if (!geometry || !corner)
        return {};
    return {corner->dst_x, corner->dst_y, geometry->width, geometry->height};
}

bool ForeignClient::isPointerIn(xcb_window_t window)
{
    xcb_window_t at = m_connection.root();
    while (at != XCB_NONE && at != window) {
        const auto reply = m_connection.reply(xcb_query_pointer_reply, xcb_query_pointer(m_connection.xcb(), at));
        at = reply ? reply->child : xcb_window_t(XCB_NONE);
    }
    return at == window;
}

xcb_window_t ForeignClient::focus()
{
    const auto reply = m_connection.reply(xcb_get_input_focus_reply, xcb_get_input_focus(m_connection.xcb()));
    return reply ? reply->focus : xcb_window_t(XCB_NONE);
}

void ForeignClient::tell(xcb_window_t window, xcb_atom_t message, const std::array<quint32, 5> &data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = message;
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(m_connection.xcb(), 0, m_connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    m_connection.flush();
}

Nudge::Nudge(ForeignClient &client)
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [&client] {
        client.setText(client.connection().root(), client.connection().atom(X11Atom::OrbitaTime), "nudge");
    });
    m_timer.start(20);
}

} // namespace Orbita
