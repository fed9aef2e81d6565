#include "platform/x11/X11Connection.h"

#include "platform/Log.h"

#include <xcb/xfixes.h>
#include <xcb/xinput.h>
#define explicit explicit_ // a field's name there
#include <xcb/xkb.h>
#undef explicit

#include <cstring>
#include <utility>

namespace Orbita {

namespace {

/// Without the bit that marks events sent by other clients.
quint8 typeOf(const xcb_generic_event_t &event)
{
    return event.response_type & 0x7f;
}

template <typename Event>
const Event &as(const xcb_generic_event_t &event)
{
    return reinterpret_cast<const Event &>(event);
}

const xcb_screen_t *screenAt(xcb_connection_t *connection, int number)
{
    const xcb_setup_t *setup = xcb_get_setup(connection);
    auto screens = xcb_setup_roots_iterator(setup);
    for (; number > 0 && screens.rem > 1; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

} // namespace

X11Connection::X11Connection(const QByteArray &display, QObject *parent) : QObject(parent)
{
    m_xcb = xcb_connect(display.isEmpty() ? nullptr : display.constData(), &m_screenNumber);
    m_alive = xcb_connection_has_error(m_xcb) == 0;
    if (!m_alive) {
        qCWarning(lcPlatform, "Cannot reach the X server");
        return;
    }
    setUp();
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_xcb), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11Connection::deliver);
    deliverLater();
}

X11Connection::~X11Connection()
{
    m_notifier.reset(); // before its descriptor is closed
    xcb_disconnect(m_xcb);
}

void X11Connection::setUp()
{
    const xcb_screen_t *screen = screenAt(m_xcb, m_screenNumber);
    m_root = screen->root;
    xcb_prefetch_extension_data(m_xcb, &xcb_input_id);
    xcb_prefetch_extension_data(m_xcb, &xcb_xfixes_id);

    const QByteArray compositor = "_NET_WM_CM_S" + QByteArray::number(m_screenNumber);
    std::array<xcb_intern_atom_cookie_t, X11AtomCount> cookies;
    for (std::size_t i = 0; i < X11AtomCount; ++i) {
        const char *name = i < x11AtomNames.size() ? x11AtomNames[i] : compositor.constData();
        cookies[i] = xcb_intern_atom(m_xcb, 0, static_cast<uint16_t>(std::strlen(name)), name);
    }
    m_window = xcb_generate_id(m_xcb);
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_xcb, 0, m_window, m_root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, screen->root_visual,
                      XCB_CW_EVENT_MASK, &mask);
    xcb_change_window_attributes(m_xcb, m_root, XCB_CW_EVENT_MASK, &mask);
    for (std::size_t i = 0; i < X11AtomCount; ++i) {
        if (const auto answer = reply(xcb_intern_atom_reply, cookies[i]))
            m_atoms[i] = answer->atom;
    }
    requestNotices();
    flush();
}

void X11Connection::requestNotices()
{
    // The versions have to be announced before the extensions serve us; what the server answers changes nothing.
    const auto *fixes = xcb_get_extension_data(m_xcb, &xcb_xfixes_id);
    if (fixes != nullptr && fixes->present) {
        m_fixesFirstEvent = fixes->first_event;
        xcb_discard_reply(m_xcb, xcb_xfixes_query_version(m_xcb, 5, 0).sequence);
        xcb_xfixes_select_selection_input(m_xcb, m_window, atom(X11Atom::CompositorSelection),
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                                              | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                                              | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
    const auto *input = xcb_get_extension_data(m_xcb, &xcb_input_id);
    if (input != nullptr && input->present) {
        m_inputOpcode = input->major_opcode;
        xcb_discard_reply(m_xcb, xcb_input_xi_query_version(m_xcb, 2, 2).sequence);
    }
}

bool X11Connection::succeeded(xcb_void_cookie_t cookie)
{
    const XcbPointer<xcb_generic_error_t> error(xcb_request_check(m_xcb, cookie));
    deliverLater();
    return !error && xcb_connection_has_error(m_xcb) == 0;
}

xcb_timestamp_t X11Connection::serverTime()
{
    // Appending nothing still causes a notice with the time in it, which is here before the reply that follows.
    xcb_change_property(m_xcb, XCB_PROP_MODE_APPEND, m_window, atom(X11Atom::OrbitaTime), XCB_ATOM_CARDINAL, 32, 0,
                        nullptr);
    if (!reply(xcb_get_input_focus_reply, xcb_get_input_focus(m_xcb)))
        return XCB_CURRENT_TIME;
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    while (XcbPointer<xcb_generic_event_t> event{xcb_poll_for_queued_event(m_xcb)}) {
        if (typeOf(*event) == XCB_PROPERTY_NOTIFY && as<xcb_property_notify_event_t>(*event).window == m_window)
            time = as<xcb_property_notify_event_t>(*event).time;
        else
            m_pending.push_back(std::move(event));
    }
    return time;
}

bool X11Connection::watchKeyboard()
{
    if (m_keyboardEvent != 0)
        return m_alive;
    const auto *keyboard = xcb_get_extension_data(m_xcb, &xcb_xkb_id);
    if (keyboard == nullptr || !keyboard->present)
        return false;
    const auto use = reply(xcb_xkb_use_extension_reply,
                           xcb_xkb_use_extension(m_xcb, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION));
    if (!use || !use->supported)
        return false;
    m_keyboardEvent = keyboard->first_event;
    constexpr quint16 everything = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr quint16 allMapParts = 0xff;
    xcb_xkb_select_events_details_t details{};
    details.affectState = XCB_XKB_STATE_PART_GROUP_STATE;
    details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    xcb_xkb_select_events_aux(m_xcb, XCB_XKB_ID_USE_CORE_KBD, everything | XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0,
                              everything, allMapParts, allMapParts, &details);
    return true;
}

void X11Connection::watchWindow(xcb_window_t window)
{
    select(window, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

void X11Connection::watchPresence(xcb_window_t window)
{
    select(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

void X11Connection::select(xcb_window_t window, uint32_t events)
{
    xcb_change_window_attributes(m_xcb, window, XCB_CW_EVENT_MASK, &events);
}

void X11Connection::deliverLater()
{
    if (std::exchange(m_deliveryPosted, true))
        return;
    QMetaObject::invokeMethod(this, &X11Connection::deliver, Qt::QueuedConnection);
}

void X11Connection::deliver()
{
    m_deliveryPosted = false;
    bool any = false;
    while (const auto event = nextEvent()) {
        any = true;
        dispatch(*event);
    }
    if (any)
        Q_EMIT eventsDelivered();
    flush();
    if (xcb_connection_has_error(m_xcb) != 0)
        noticeLoss();
}

XcbPointer<xcb_generic_event_t> X11Connection::nextEvent()
{
    if (m_pending.empty())
        return XcbPointer<xcb_generic_event_t>(xcb_poll_for_event(m_xcb));
    auto event = std::move(m_pending.front());
    m_pending.pop_front();
    return event;
}

void X11Connection::dispatch(const xcb_generic_event_t &event)
{
    const quint8 type = typeOf(event);
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto &notice = as<xcb_property_notify_event_t>(event);
        Q_EMIT propertyChanged(notice.window, notice.atom);
    } else if (type == XCB_UNMAP_NOTIFY) {
        Q_EMIT windowUnmapped(as<xcb_unmap_notify_event_t>(event).window);
    } else if (type == XCB_DESTROY_NOTIFY) {
        Q_EMIT windowDestroyed(as<xcb_destroy_notify_event_t>(event).window);
    } else if (type == XCB_MAPPING_NOTIFY) {
        if (as<xcb_mapping_notify_event_t>(event).request == XCB_MAPPING_POINTER)
            Q_EMIT pointerMappingChanged();
        else
            Q_EMIT keyboardChanged();
    } else if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE || (m_keyboardEvent != 0 && type == m_keyboardEvent)) {
        dispatchKeyboard(event);
    } else if (m_fixesFirstEvent != 0 && type == m_fixesFirstEvent + XCB_XFIXES_SELECTION_NOTIFY) {
        Q_EMIT compositorOwnerChanged(as<xcb_xfixes_selection_notify_event_t>(event).owner != XCB_NONE);
    } else if (type == XCB_GE_GENERIC && as<xcb_ge_generic_event_t>(event).extension == m_inputOpcode) {
        dispatchRaw(as<xcb_ge_generic_event_t>(event));
    }
    // Errors of requests about windows that have vanished meanwhile arrive here too and are expected.
}

void X11Connection::dispatchRaw(const xcb_ge_generic_event_t &event)
{
    // All raw events are laid out alike.
    const auto &raw = reinterpret_cast<const xcb_input_raw_button_press_event_t &>(event);
    switch (event.event_type) {
    case XCB_INPUT_RAW_BUTTON_PRESS:
        Q_EMIT rawButtonPressed(raw.detail);
        break;
    case XCB_INPUT_RAW_BUTTON_RELEASE:
        Q_EMIT rawButtonReleased(raw.detail);
        break;
    case XCB_INPUT_RAW_MOTION:
        Q_EMIT rawMotion();
        break;
    case XCB_INPUT_RAW_KEY_PRESS:
        Q_EMIT rawKeyPressed(quint8(raw.detail));
        break;
    case XCB_INPUT_RAW_KEY_RELEASE:
        Q_EMIT rawKeyReleased(quint8(raw.detail));
        break;
    default:
        break;
    }
}

void X11Connection::dispatchKeyboard(const xcb_generic_event_t &event)
{
    const quint8 type = event.response_type;            // keys that another client made up are none
    const auto &key = as<xcb_key_press_event_t>(event); // a release is laid out alike
    if (type == XCB_KEY_PRESS)
        Q_EMIT keyPressed(key.detail, key.state, key.time);
    else if (type == XCB_KEY_RELEASE)
        Q_EMIT keyReleased(key.detail, key.state, key.time);
    else if (type == m_keyboardEvent && as<xcb_xkb_state_notify_event_t>(event).xkbType == XCB_XKB_STATE_NOTIFY)
        Q_EMIT keyboardGroupChanged();
    else if (type == m_keyboardEvent)
        Q_EMIT keyboardChanged();
}

void X11Connection::noticeLoss()
{
    if (!std::exchange(m_alive, false))
        return;
    m_notifier->setEnabled(false);
    qCWarning(lcPlatform, "Lost the connection to the X server");
    Q_EMIT lost();
}

} // namespace Orbita
