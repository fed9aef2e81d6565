#include "platform/x11/X11Compositor.h"

#include "platform/x11/X11Connection.h"

#include <utility>

namespace Orbita {

X11Compositor::X11Compositor(X11Connection &connection, QObject *parent) : QObject(parent)
{
    connect(&connection, &X11Connection::compositorOwnerChanged, this, &X11Compositor::setPresent);
    connect(&connection, &X11Connection::lost, this, [this] { setPresent(false); });
    const auto cookie = xcb_get_selection_owner(connection.xcb(), connection.atom(X11Atom::CompositorSelection));
    const auto owner = connection.reply(xcb_get_selection_owner_reply, cookie);
    m_present = owner && owner->owner != XCB_NONE;
}

void X11Compositor::setPresent(bool present)
{
    // Every change is reported twice: the owner's end and the selection's.
    if (std::exchange(m_present, present) != present)
        Q_EMIT presentChanged(present);
}

} // namespace Orbita
