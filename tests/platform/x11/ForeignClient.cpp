#include "ForeignClient.h"

namespace Orbita {

VirtualDisplay::VirtualDisplay()
{
    m_environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(name()));
}

Program VirtualDisplay::start(const QString &program, const QStringList &arguments) const
{
    return {program, arguments, m_environment};
}

void VirtualDisplay::startWindowManager()
{
    m_windowManager = std::make_unique<Program>(QStringLiteral("openbox"), QStringList{QStringLiteral("--sm-disable")},
                                                m_environment);
}

ForeignClient::ForeignClient(const QByteArray &display) : connection(display)
{
    QObject::connect(&m_nudge, &QTimer::timeout, &m_nudge,
                     [this] { connection.setText(connection.root(), "_ORBITA_TEST", "nudge"); });
    m_nudge.start(20);
}

xcb_window_t ForeignClient::show(const ForeignWindow &window) const
{
    const xcb_window_t id = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, id, connection.root(), 100, 100, 200, 150, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    if (!window.windowClass.isEmpty())
        connection.setText(id, "WM_CLASS", window.windowClass.toLower() + '\0' + window.windowClass + '\0');
    if (!window.title.isEmpty())
        connection.setText(id, "WM_NAME", window.title);
    if (!window.machine.isEmpty())
        connection.setText(id, "WM_CLIENT_MACHINE", window.machine);
    if (window.process != 0)
        connection.setValues(id, "_NET_WM_PID", XCB_ATOM_CARDINAL, {quint32(window.process)});
    if (!window.type.isEmpty())
        setAtom(id, "_NET_WM_WINDOW_TYPE", window.type);
    if (!window.state.isEmpty())
        setAtom(id, "_NET_WM_STATE", window.state);
    if (window.parent != XCB_NONE)
        connection.setValues(id, "WM_TRANSIENT_FOR", XCB_ATOM_WINDOW, {window.parent});
    xcb_map_window(connection, id);
    xcb_flush(connection);
    return id;
}

void ForeignClient::withdraw(xcb_window_t window) const
{
    xcb_unmap_window(connection, window);
    xcb_flush(connection);
}

void ForeignClient::destroy(xcb_window_t window) const
{
    xcb_destroy_window(connection, window);
    xcb_flush(connection);
}

void ForeignClient::setAtom(xcb_window_t window, const QByteArray &property, const QByteArray &atom) const
{
    connection.setValues(window, property, XCB_ATOM_ATOM, {connection.atom(atom)});
}

void ForeignClient::swapButtons() const
{
    const XReply<xcb_get_pointer_mapping_reply_t> reply(
        xcb_get_pointer_mapping_reply(connection, xcb_get_pointer_mapping(connection), nullptr));
    uint8_t *map = xcb_get_pointer_mapping_map(reply.get());
    std::swap(map[0], map[2]);
    const auto count = uint8_t(xcb_get_pointer_mapping_map_length(reply.get()));
    xcb_set_pointer_mapping(connection, count, map);
    connection.sync();
}

bool ForeignClient::grabPointer() const
{
    const auto cookie
        = xcb_grab_pointer(connection, 0, connection.root(), XCB_EVENT_MASK_BUTTON_RELEASE, XCB_GRAB_MODE_ASYNC,
                           XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const XReply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(connection, cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

xcb_window_t ForeignClient::claimCompositing() const
{
    const xcb_window_t owner = xcb_generate_id(connection);
    xcb_create_window(connection, 0, owner, connection.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection, owner, connection.atom("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
    xcb_flush(connection);
    return owner;
}

} // namespace Orbita
