#include "companion/service/WindowOwners.h"

#include <xcb/res.h>

namespace Orbita {

WindowOwners::WindowOwners(X11Connection &connection) : m_connection(connection)
{
    const auto *extension = xcb_get_extension_data(connection.xcb(), &xcb_res_id);
    if (!extension || !extension->present)
        return;
    // The version of X-Resource that came with the question for processes.
    const auto version = connection.reply(xcb_res_query_version_reply, xcb_res_query_version(connection.xcb(), 1, 2));
    m_canTell
        = version && std::pair(version->server_major, version->server_minor) >= std::pair<uint16_t, uint16_t>(1, 2);
}

qint64 WindowOwners::processOf(xcb_window_t window)
{
    if (!m_canTell)
        return 0;
    const xcb_res_client_id_spec_t question{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto reply = m_connection.reply(xcb_res_query_client_ids_reply,
                                          xcb_res_query_client_ids(m_connection.xcb(), 1, &question));
    if (!reply)
        return 0;
    for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem > 0; xcb_res_client_id_value_next(&id)) {
        if (id.data->spec.mask == XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID
            && xcb_res_client_id_value_value_length(id.data) == 1)
            return *xcb_res_client_id_value_value(id.data);
    }
    return 0;
}

} // namespace Orbita
