#include "desktop/harness/Windows.h"
#include "desktop/harness/Wait.h"

namespace Orbita {

namespace {

bool isKept(const XConnection &connection, xcb_window_t window)
{
    const QList<quint32> state = connection.values(window, "WM_STATE");
    constexpr quint32 withdrawn = 0;
    return !state.isEmpty() && state.first() != withdrawn;
}

QString readTitle(const XConnection &connection, xcb_window_t window)
{
    const QByteArray title = connection.bytes(window, "_NET_WM_NAME");
    return QString::fromUtf8(title.isEmpty() ? connection.bytes(window, "WM_NAME") : title);
}

} // namespace

WindowFilter withClass(const QString &name)
{
    return [name](const WindowInfo &window) {
        return window.className.compare(name, Qt::CaseInsensitive) == 0
            || window.instanceName.compare(name, Qt::CaseInsensitive) == 0;
    };
}

WindowFilter withTitle(const QString &title)
{
    return [title](const WindowInfo &window) { return window.title == title; };
}

QList<xcb_window_t> Windows::children(xcb_window_t window) const
{
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
    if (!tree)
        return {};
    const xcb_window_t *first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

/// The window that a window manager keeps in its frame \a window, or \a window if it is no frame.
xcb_window_t Windows::clientIn(xcb_window_t window) const
{
    // Window managers nest frames two deep at most; behind that lie the parts of applications.
    QList<xcb_window_t> level{window};
    for (int depth = 0; depth < 3; ++depth) {
        QList<xcb_window_t> next;
        for (const xcb_window_t candidate : std::as_const(level)) {
            if (isKept(m_connection, candidate))
                return candidate;
            next += children(candidate);
        }
        level = next;
    }
    return window;
}

std::optional<WindowInfo> Windows::info(xcb_window_t window) const
{
    const auto attributesCookie = xcb_get_window_attributes(m_connection, window);
    const auto geometryCookie = xcb_get_geometry(m_connection, window);
    const auto originCookie = xcb_translate_coordinates(m_connection, window, m_connection.root(), 0, 0);
    const XReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(m_connection, attributesCookie, nullptr));
    const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(m_connection, geometryCookie, nullptr));
    const XReply<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(m_connection, originCookie, nullptr));
    if (!attributes || !geometry || !origin || attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY)
        return std::nullopt;

    const QList<QByteArray> classParts = m_connection.bytes(window, "WM_CLASS").split('\0');
    return WindowInfo{.id = window,
                      .instanceName = QString::fromUtf8(classParts.value(0)),
                      .className = QString::fromUtf8(classParts.value(1)),
                      .title = readTitle(m_connection, window),
                      .pid = m_connection.values(window, "_NET_WM_PID").value(0),
                      .geometry = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height),
                      .viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE,
                      .overrideRedirect = attributes->override_redirect != 0,
                      .managed = m_connection.values(m_connection.root(), "_NET_CLIENT_LIST").contains(window)};
}

QList<WindowInfo> Windows::all() const
{
    const QRect screen(0, 0, m_connection.screen().width_in_pixels, m_connection.screen().height_in_pixels);
    QList<WindowInfo> windows;
    for (const xcb_window_t child : children(m_connection.root())) {
        const xcb_window_t client = clientIn(child);
        const auto window = info(client);
        // Window managers keep windows of their own just outside the screen.
        const bool isSeen = window && window->viewable && window->geometry.intersects(screen);
        if (isSeen || (window && isKept(m_connection, client)))
            windows += *window;
    }
    return windows;
}

QList<WindowInfo> Windows::matching(const WindowFilter &filter) const
{
    QList<WindowInfo> windows = all();
    windows.removeIf([&filter](const WindowInfo &window) { return !filter(window); });
    return windows;
}

std::optional<WindowInfo> Windows::find(const WindowFilter &filter) const
{
    QList<WindowInfo> windows = matching(filter);
    windows.removeIf([](const WindowInfo &window) { return !window.viewable; });
    return windows.isEmpty() ? std::nullopt : std::optional(windows.last());
}

WindowInfo Windows::waitFor(const WindowFilter &filter, const QString &description) const
{
    std::optional<WindowInfo> window;
    const auto stands = [&] {
        window = find(filter);
        return window && (window->managed || window->overrideRedirect || !hasManager());
    };
    waitUntil(stands, description);
    return *window;
}

WindowInfo Windows::waitForWindow(const QString &className) const
{
    return waitFor(withClass(className), QStringLiteral("a window of class %1 stood there").arg(className));
}

void Windows::waitUntilHandled(xcb_window_t window) const
{
    // Qt answers before it acts on what it received together with the first ping; the second one it
    // receives afterwards.
    ping(window);
    ping(window);
}

void Windows::ping(xcb_window_t window) const
{
    if (!m_connection.values(window, "WM_PROTOCOLS").contains(m_connection.atom("_NET_WM_PING")))
        throw DesktopFailure(QStringLiteral("the window does not follow _NET_WM_PING"));
    // The answer comes to the root, on a connection of its own: nobody else has to sort its events.
    static quint32 lastPing = 0;
    const quint32 number = ++lastPing;
    const XConnection listener(m_connection.display());
    // The second is what the standard demands of the answer, the first what Qt 6 does.
    const quint32 mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(listener, listener.root(), XCB_CW_EVENT_MASK, &mask);
    listener.sync();
    m_connection.sendProtocol(window, "_NET_WM_PING", window, number);
    const auto answered = [&] {
        while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(listener)}) {
            const auto *message = reinterpret_cast<const xcb_client_message_event_t *>(event.get());
            if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE && message->type == listener.atom("WM_PROTOCOLS")
                && message->data.data32[2] == window && message->data.data32[3] == number)
                return true;
        }
        return false;
    };
    waitUntil(answered, QStringLiteral("the window answered"));
}

bool Windows::hasManager() const
{
    const auto supporter = [this](xcb_window_t window) {
        return m_connection.values(window, "_NET_SUPPORTING_WM_CHECK").value(0, XCB_WINDOW_NONE);
    };
    // The property on the root outlives a manager that was killed; its window does not.
    const xcb_window_t window = supporter(m_connection.root());
    return window != XCB_WINDOW_NONE && supporter(window) == window;
}

void Windows::waitForManager() const
{
    // A window manager that is starting may swallow requests, a window's to be mapped for instance. So it is asked,
    // over and over, for what it can answer without consequences.
    const xcb_window_t probe = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, probe, m_connection.root(), -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    const auto answers = [&] {
        m_connection.askWindowManager(probe, "_NET_REQUEST_FRAME_EXTENTS", {});
        return hasManager() && !m_connection.values(probe, "_NET_FRAME_EXTENTS").isEmpty();
    };
    waitUntil(answers, QStringLiteral("the window manager was ready"));
    xcb_destroy_window(m_connection, probe);
    m_connection.sync();
}

xcb_window_t Windows::activeWindow() const
{
    return m_connection.values(m_connection.root(), "_NET_ACTIVE_WINDOW").value(0, XCB_WINDOW_NONE);
}

xcb_window_t Windows::inputFocus() const
{
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return reply ? reply->focus : xcb_window_t(XCB_WINDOW_NONE);
}

bool Windows::hasState(xcb_window_t window, const QByteArray &state) const
{
    return m_connection.values(window, "_NET_WM_STATE").contains(m_connection.atom(state));
}

std::optional<quint32> Windows::desktop(xcb_window_t window) const
{
    const QList<quint32> values = m_connection.values(window, "_NET_WM_DESKTOP");
    return values.isEmpty() ? std::nullopt : std::optional(values.first());
}

void Windows::activate(xcb_window_t window) const
{
    constexpr quint32 asPager = 2;
    if (hasManager()) {
        m_connection.askWindowManager(window, "_NET_ACTIVE_WINDOW", {asPager, XCB_CURRENT_TIME, 0, 0, 0});
        return;
    }
    configure(window, XCB_CONFIG_WINDOW_STACK_MODE, {XCB_STACK_MODE_ABOVE});
    xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    m_connection.sync();
}

void Windows::configure(xcb_window_t window, quint16 what, std::array<quint32, 2> values) const
{
    xcb_configure_window(m_connection, window, what, values.data());
    m_connection.sync();
}

void Windows::moveTo(xcb_window_t window, QPoint position) const
{
    configure(window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, {quint32(position.x()), quint32(position.y())});
}

void Windows::resize(xcb_window_t window, QSize size) const
{
    configure(window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
              {quint32(size.width()), quint32(size.height())});
}

void Windows::iconify(xcb_window_t window) const
{
    constexpr quint32 iconic = 3;
    m_connection.askWindowManager(window, "WM_CHANGE_STATE", {iconic, 0, 0, 0, 0});
}

void Windows::close(xcb_window_t window) const
{
    m_connection.sendProtocol(window, "WM_DELETE_WINDOW");
}

} // namespace Orbita
