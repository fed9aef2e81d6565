#include "platform/x11/X11BlurBehind.h"

#include "platform/x11/X11Compositor.h"
#include "platform/x11/X11OwnWindow.h"
#include "platform/x11/X11Property.h"

#include <QWindow>

#include <utility>

namespace Orbita {

X11BlurBehind::X11BlurBehind(X11Connection &connection, X11Compositor &compositor, QObject *parent)
    : BlurBehind(parent), m_connection(connection), m_compositor(compositor)
{
    connect(&compositor, &X11Compositor::presentChanged, this, &X11BlurBehind::update);
    connect(&connection, &X11Connection::propertyChanged, this, [this](xcb_window_t window, xcb_atom_t property) {
        if (window == m_connection.root() && property == m_connection.atom(X11Atom::KdeBlurBehindRegion))
            update();
    });
    m_available = compositor.isPresent() && isOffered();
}

bool X11BlurBehind::isOffered() const
{
    const auto cookie
        = requestProperty(m_connection, m_connection.root(), m_connection.atom(X11Atom::KdeBlurBehindRegion));
    const auto reply = propertyReply(m_connection, cookie);
    return reply && reply->type != XCB_ATOM_NONE; // the mere presence says it, the value is empty
}

void X11BlurBehind::update()
{
    // The property may outlive the compositor that set it.
    const bool available = m_compositor.isPresent() && isOffered();
    if (std::exchange(m_available, available) != available)
        Q_EMIT availableChanged(available);
}

void X11BlurBehind::setRegion(QWindow &window, const QRegion &region)
{
    xcb_connection_t *sender = toolkitConnection();
    if (sender == nullptr)
        return;
    const xcb_window_t target = xWindow(window);
    const xcb_atom_t property = m_connection.atom(X11Atom::KdeBlurBehindRegion);
    if (region.isEmpty()) {
        // An empty property would blur behind the whole window.
        xcb_delete_property(sender, target, property);
    } else {
        std::vector<quint32> data;
        for (const xcb_rectangle_t &r : deviceRectangles(region, window.devicePixelRatio()))
            data.insert(data.end(), {quint32(r.x), quint32(r.y), r.width, r.height});
        xcb_change_property(sender, XCB_PROP_MODE_REPLACE, target, property, XCB_ATOM_CARDINAL, 32,
                            uint32_t(data.size()), data.data());
    }
    xcb_flush(sender);
}

} // namespace Orbita
