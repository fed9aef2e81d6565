#include "platform/x11/X11MouseUpEventTap.h"

#include "platform/x11/X11Connection.h"

#include <xcb/xinput.h>

namespace Orbita {

X11MouseUpEventTap::X11MouseUpEventTap(X11Connection &connection, QObject *parent)
    : MouseUpEventTap(parent), m_connection(connection)
{
    connect(&connection, &X11Connection::rawButtonReleased, this, [this](quint32 button) {
        if (m_enabled && logicalButton(button) == XCB_BUTTON_INDEX_1)
            Q_EMIT mouseUp();
    });
    connect(&connection, &X11Connection::pointerMappingChanged, this, [this] { m_logicalButtons.clear(); });
    connect(&connection, &X11Connection::lost, this, [this] { m_enabled = false; });
}

X11MouseUpEventTap::~X11MouseUpEventTap()
{
    setEnabled(false);
}

bool X11MouseUpEventTap::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return true;
    // What cannot be reached sends nothing either, so that disabling always succeeds.
    m_enabled = select(enabled) && enabled;
    return m_enabled == enabled;
}

quint32 X11MouseUpEventTap::logicalButton(quint32 physical)
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

bool X11MouseUpEventTap::select(bool releases)
{
    if (!m_connection.isAlive() || !m_connection.hasInputExtension())
        return false;
    struct {
        xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        uint32_t mask = 0;
    } selection;
    if (releases)
        selection.mask = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    return m_connection.succeeded(
        xcb_input_xi_select_events_checked(m_connection.xcb(), m_connection.root(), 1, &selection.header));
}

} // namespace Orbita
