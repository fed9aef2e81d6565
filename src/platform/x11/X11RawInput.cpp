#include "platform/x11/X11RawInput.h"

#include "platform/x11/X11Connection.h"

#include <xcb/xinput.h>

namespace Orbita {

namespace {

xcb_void_cookie_t select(X11Connection &connection, quint32 mask)
{
    const struct {
        xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        quint32 mask;
    } selection{.mask = mask};
    return xcb_input_xi_select_events_checked(connection.xcb(), connection.root(), 1, &selection.header);
}

} // namespace

X11RawInput::X11RawInput(X11Connection &connection, QObject *parent) : QObject(parent), m_connection(connection)
{
    connect(&connection, &X11Connection::rawButtonPressed, this,
            [this](quint32 button) { Q_EMIT buttonPressed(logicalButton(button)); });
    connect(&connection, &X11Connection::rawButtonReleased, this,
            [this](quint32 button) { Q_EMIT buttonReleased(logicalButton(button)); });
    connect(&connection, &X11Connection::rawMotion, this, &X11RawInput::moved);
    connect(&connection, &X11Connection::pointerMappingChanged, this, [this] { m_logicalButtons.clear(); });
    connect(&connection, &X11Connection::lost, this, &X11RawInput::lost);
}

bool X11RawInput::listen(quint32 mask)
{
    if (!m_connection.isAlive() || !m_connection.hasInputExtension()
        || !m_connection.succeeded(select(m_connection, m_mask | mask)))
        return false;
    m_mask |= mask;
    return true;
}

void X11RawInput::ignore(quint32 mask)
{
    m_mask &= ~mask;
    send();
}

void X11RawInput::resume(quint32 mask)
{
    m_mask |= mask;
    send();
}

void X11RawInput::send()
{
    if (!m_connection.isAlive() || !m_connection.hasInputExtension())
        return; // who cannot be reached sends nothing either
    xcb_discard_reply(m_connection.xcb(), select(m_connection, m_mask).sequence);
    m_connection.flush();
}

quint32 X11RawInput::logicalButton(quint32 physical)
{
    if (m_logicalButtons.isEmpty()) {
        const auto reply
            = m_connection.reply(xcb_get_pointer_mapping_reply, xcb_get_pointer_mapping(m_connection.xcb()));
        if (!reply)
            return physical;
        m_logicalButtons = QByteArray(reinterpret_cast<const char *>(xcb_get_pointer_mapping_map(reply.get())),
                                      xcb_get_pointer_mapping_map_length(reply.get()));
    }
    return physical >= 1 && physical <= quint32(m_logicalButtons.size()) ? quint8(m_logicalButtons[physical - 1])
                                                                         : physical;
}

} // namespace Orbita
