#include "WindowWatch.h"

#include "desktop/harness/Wait.h"

#include <xcb/damage.h>
#include <xcb/shm.h>

#include <algorithm>

#include <poll.h>
#include <sys/shm.h>

namespace Orbita {

namespace {

XReply<xcb_query_tree_reply_t> childrenOf(xcb_connection_t *connection, xcb_window_t window)
{
    return XReply<xcb_query_tree_reply_t>(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
}

} // namespace

SharedPixels::SharedPixels(const XConnection &connection, QSize largest)
    : m_connection(connection), m_segment(xcb_generate_id(connection))
{
    const int id = shmget(IPC_PRIVATE, size_t(largest.width()) * size_t(largest.height()) * sizeof(quint32), 0600);
    if (id < 0)
        throw DesktopFailure(QStringLiteral("no shared memory"));
    m_pixels = static_cast<quint32 *>(shmat(id, nullptr, 0));
    xcb_shm_attach(connection, m_segment, static_cast<quint32>(id), 0);
    connection.sync();
    shmctl(id, IPC_RMID, nullptr);
}

SharedPixels::~SharedPixels()
{
    shmdt(m_pixels);
}

const quint32 *SharedPixels::read(xcb_drawable_t drawable, QRect rect) const
{
    const auto cookie
        = xcb_shm_get_image(m_connection, drawable, static_cast<qint16>(rect.x()), static_cast<qint16>(rect.y()),
                            static_cast<quint16>(rect.width()), static_cast<quint16>(rect.height()), ~0U,
                            XCB_IMAGE_FORMAT_Z_PIXMAP, m_segment, 0);
    const XReply<xcb_shm_get_image_reply_t> reply(xcb_shm_get_image_reply(m_connection, cookie, nullptr));
    return reply ? m_pixels : nullptr;
}

WindowWatch::WindowWatch(const QByteArray &display, const QString &className)
    : m_connection(display),
      m_className(className),
      m_screen(0, 0, m_connection.screen().width_in_pixels, m_connection.screen().height_in_pixels),
      m_pixels(std::make_unique<SharedPixels>(m_connection, m_screen.size()))
{
    m_damageEvent = xcb_get_extension_data(m_connection, &xcb_damage_id)->first_event + XCB_DAMAGE_NOTIFY;
    const auto version = xcb_damage_query_version(m_connection, 1, 1);
    XReply<xcb_damage_query_version_reply_t>(xcb_damage_query_version_reply(m_connection, version, nullptr));
    const quint32 mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, m_connection.root(), XCB_CW_EVENT_MASK, &mask);
    xcb_damage_create(m_connection, xcb_generate_id(m_connection), m_connection.root(),
                      XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    const auto tree = childrenOf(m_connection, m_connection.root());
    const xcb_window_t *first = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i)
        follow(first[i]);
}

bool WindowWatch::isWanted(xcb_window_t window) const
{
    for (const QByteArray &part : m_connection.bytes(window, "WM_CLASS").split('\0')) {
        if (m_className.compare(QString::fromUtf8(part), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

/// Asks to be told of what happens to \a window, wherever a window manager puts it.
void WindowWatch::follow(xcb_window_t window)
{
    const quint32 mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, window, XCB_CW_EVENT_MASK, &mask);
    // Made beforehand where possible, so that nothing is asked of the server between the trigger and the paint.
    if (isWanted(window) && !m_damageWatched.contains(window)) {
        xcb_damage_create(m_connection, xcb_generate_id(m_connection), window, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
        m_damageWatched.insert(window);
    }
}

void WindowWatch::adopt(xcb_window_t window)
{
    m_target = window;
    if (!m_damageWatched.contains(window))
        follow(window);
    look();
}

/// A window that was mapped before it could be followed is found in the frame that is mapped for it.
void WindowWatch::adoptWithin(xcb_window_t window, int depth)
{
    if (m_damageWatched.contains(window) || isWanted(window)) {
        adopt(window);
        return;
    }
    const auto tree = childrenOf(m_connection, window);
    const int count = tree ? xcb_query_tree_children_length(tree.get()) : 0;
    for (int i = count - 1; i >= 0 && depth > 0 && m_target == XCB_WINDOW_NONE; --i)
        adoptWithin(xcb_query_tree_children(tree.get())[i], depth - 1);
}

XReply<xcb_generic_event_t> WindowWatch::nextEvent(Clock::time_point until)
{
    for (;;) {
        if (auto *event = xcb_poll_for_event(m_connection))
            return XReply<xcb_generic_event_t>(event);
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
        if (left.count() <= 0)
            return nullptr;
        xcb_flush(m_connection);
        pollfd descriptor{xcb_get_file_descriptor(m_connection), POLLIN, 0};
        poll(&descriptor, 1, static_cast<int>(left.count()));
    }
}

void WindowWatch::handle(const xcb_generic_event_t &event)
{
    const int type = event.response_type & 0x7f;
    if (type == m_damageEvent) {
        const auto &damage = reinterpret_cast<const xcb_damage_notify_event_t &>(event);
        xcb_damage_subtract(m_connection, damage.damage, XCB_NONE, XCB_NONE);
        look();
    } else if (type == XCB_CREATE_NOTIFY) {
        follow(reinterpret_cast<const xcb_create_notify_event_t &>(event).window);
    } else if (type == XCB_MAP_NOTIFY && m_target == XCB_WINDOW_NONE) {
        const Milliseconds now = Clock::now() - m_start;
        constexpr int deepestFrame = 2;
        adoptWithin(reinterpret_cast<const xcb_map_notify_event_t &>(event).window, deepestFrame);
        if (m_target != XCB_WINDOW_NONE)
            m_times.mapped = now;
    } else if (type == XCB_UNMAP_NOTIFY) {
        m_gone |= reinterpret_cast<const xcb_unmap_notify_event_t &>(event).window == m_target;
    } else if (type == XCB_DESTROY_NOTIFY) {
        const xcb_window_t window = reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window;
        m_gone |= window == m_target;
        m_damageWatched.remove(window);
    }
}

QRect WindowWatch::targetOnScreen() const
{
    const auto geometryCookie = xcb_get_geometry(m_connection, m_target);
    const auto originCookie = xcb_translate_coordinates(m_connection, m_target, m_connection.root(), 0, 0);
    const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(m_connection, geometryCookie, nullptr));
    const XReply<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(m_connection, originCookie, nullptr));
    return geometry && origin ? QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height) : QRect();
}

bool WindowWatch::isPainted(QRect target) const
{
    // Only what is on the screen of a window can be read.
    const QRect visible = target.intersected(m_screen);
    const quint32 *pixels = m_pixels->read(m_target, visible.translated(-target.topLeft()));
    const auto count = qsizetype(visible.width()) * visible.height();
    return pixels && std::any_of(pixels, pixels + count, [pixels](quint32 pixel) { return pixel != pixels[0]; });
}

bool WindowWatch::isSeen(QRect target) const
{
    const QRect visible = target.intersected(m_screen);
    const quint32 *pixels = m_pixels->read(m_connection.root(), visible);
    for (int y = 0; pixels && y < visible.height(); ++y) {
        const quint32 *row = pixels + qsizetype(y) * visible.width();
        const quint32 *before = &m_before[size_t(visible.y() + y) * size_t(m_screen.width()) + size_t(visible.x())];
        if (!std::equal(row, row + visible.width(), before))
            return true;
    }
    return false;
}

/// What a look shows was there when it began, within the time that reading the pixels takes.
void WindowWatch::look()
{
    if (m_target == XCB_WINDOW_NONE || (m_times.painted && m_times.seen))
        return;
    const QRect target = targetOnScreen();
    if (!target.intersects(m_screen))
        return;
    const Milliseconds first = Clock::now() - m_start;
    if (!m_times.painted && isPainted(target))
        m_times.painted = first;
    const Milliseconds second = Clock::now() - m_start;
    if (m_times.painted && !m_times.seen && isSeen(target))
        m_times.seen = second;
}

void WindowWatch::arm()
{
    m_target = XCB_WINDOW_NONE;
    m_gone = false;
    m_connection.sync();
    // A map among these belongs to nobody's round.
    while (const auto event = nextEvent(Clock::now())) {
        if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY)
            handle(*event);
    }
    m_times = {};
    if (const quint32 *pixels = m_pixels->read(m_connection.root(), m_screen))
        m_before.assign(pixels, pixels + qsizetype(m_screen.width()) * m_screen.height());
}

WindowWatch::Times WindowWatch::watch(Clock::time_point start, std::chrono::milliseconds bound)
{
    m_start = start;
    while (!m_times.seen) {
        const auto event = nextEvent(start + bound);
        if (!event)
            break;
        handle(*event);
    }
    m_pid = m_target == XCB_WINDOW_NONE ? 0 : m_connection.values(m_target, "_NET_WM_PID").value(0);
    return m_times;
}

std::optional<Milliseconds> WindowWatch::watchUntilGone(Clock::time_point start, std::chrono::milliseconds bound)
{
    while (!m_gone) {
        const auto event = nextEvent(start + bound);
        if (!event)
            return std::nullopt;
        handle(*event);
    }
    return Clock::now() - start;
}

} // namespace Orbita
