#include "desktop/harness/XServer.h"
#include "desktop/harness/Wait.h"

#include <algorithm>

namespace Orbita {

namespace {

// In 32-bit units; longer properties than this are of no interest to a test.
constexpr quint32 longestProperty = 1 << 16;

XReply<xcb_get_property_reply_t> readProperty(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property)
{
    const auto cookie
        = xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
    return XReply<xcb_get_property_reply_t>(xcb_get_property_reply(connection, cookie, nullptr));
}

QStringList serverArguments(QSize screen)
{
    // Without -noreset the server forgets everything as soon as its last client leaves.
    return QStringLiteral("-displayfd 1 -screen 0 %1x%2x24 -noreset -nolisten tcp")
        .arg(screen.width())
        .arg(screen.height())
        .split(u' ');
}

} // namespace

XConnection::XConnection(const QByteArray &display)
    : m_display(display), m_connection(xcb_connect(display.constData(), nullptr))
{
    if (xcb_connection_has_error(m_connection.get()))
        throw DesktopFailure(QStringLiteral("no connection to display ") + QString::fromUtf8(display));
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
}

xcb_atom_t XConnection::atom(const QByteArray &name) const
{
    xcb_atom_t &atom = m_atoms[name];
    if (atom == XCB_ATOM_NONE) {
        const auto cookie = xcb_intern_atom(*this, 0, static_cast<quint16>(name.size()), name.constData());
        const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(*this, cookie, nullptr));
        if (reply)
            atom = reply->atom;
    }
    return atom;
}

void XConnection::sync() const
{
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(*this, xcb_get_input_focus(*this), nullptr));
    if (!reply)
        throw DesktopFailure(QStringLiteral("the X server has gone"));
}

QList<quint32> XConnection::values(xcb_window_t window, const QByteArray &property) const
{
    const auto reply = readProperty(*this, window, atom(property));
    if (!reply || reply->format != 32)
        return {};
    const auto *first = static_cast<const quint32 *>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

QByteArray XConnection::bytes(xcb_window_t window, const QByteArray &property) const
{
    const auto reply = readProperty(*this, window, atom(property));
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())), static_cast<qsizetype>(reply->value_len)};
}

void XConnection::setValues(xcb_window_t window, const QByteArray &property, xcb_atom_t type,
                            const QList<quint32> &values) const
{
    xcb_change_property(*this, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                        static_cast<quint32>(values.size()), values.constData());
    xcb_flush(*this);
}

void XConnection::setText(xcb_window_t window, const QByteArray &property, const QByteArray &text) const
{
    xcb_change_property(*this, XCB_PROP_MODE_REPLACE, window, atom(property), XCB_ATOM_STRING, 8,
                        static_cast<quint32>(text.size()), text.constData());
    xcb_flush(*this);
}

void XConnection::send(xcb_window_t destination, quint32 mask, xcb_client_message_event_t event) const
{
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    xcb_send_event(*this, 0, destination, mask, reinterpret_cast<const char *>(&event));
    sync();
}

void XConnection::askWindowManager(xcb_window_t window, const QByteArray &message,
                                   const std::array<quint32, 5> &data) const
{
    xcb_client_message_event_t event{};
    event.window = window;
    event.type = atom(message);
    std::copy(data.begin(), data.end(), event.data.data32);
    send(root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, event);
}

void XConnection::sendProtocol(xcb_window_t window, const QByteArray &protocol, quint32 third, quint32 fourth) const
{
    xcb_client_message_event_t event{};
    event.window = window;
    event.type = atom("WM_PROTOCOLS");
    event.data.data32[0] = atom(protocol);
    event.data.data32[1] = XCB_CURRENT_TIME;
    event.data.data32[2] = third;
    event.data.data32[3] = fourth;
    send(window, XCB_EVENT_MASK_NO_EVENT, event);
}

XServer::XServer(QSize screen, const QProcessEnvironment &environment)
    : m_program(QStringLiteral("Xvfb"), serverArguments(screen), environment),
      m_display(':' + m_program.waitForOutput(QStringLiteral("^\\d+$")).toUtf8())
{
}

} // namespace Orbita
